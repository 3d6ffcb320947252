#!/usr/bin/env bash
# Makes the Debian packages of a build tree that is built already (and,
# preferably, tested): libvyrguimfc0, libvyrguimfc-dev and vyr-tools.
#   scripts/package.sh [BUILD_DIR [OUTPUT_DIR]]
# BUILD_DIR defaults to build/release, OUTPUT_DIR to BUILD_DIR/packages. The
# packaging runs on a copy of debian/ in OUTPUT_DIR/source, so the source
# tree stays as it is; the .deb files, with the .changes and .buildinfo
# files, land in OUTPUT_DIR. Needs what scripts/deps.sh installs.
# OUTPUT_DIR is emptied first only when this script made it (it leaves a
# marker there) or it is the default one; any other folder with files in it
# is refused untouched.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "${1:-$root/build/release}" && pwd)
output=${2:-$build/packages}
marker=.made-by-vyr-package
if [[ -e $output && ! -d $output ]]; then
    echo "package.sh: $output is not a folder; give a new or empty one" >&2
    exit 2
fi
if [[ -d $output && -n $(ls -A "$output") ]]; then
    if [[ -n ${2:-} && ( ! -f $output/$marker || -L $output ) ]]; then
        echo "package.sh: $output holds files this script did not make, so it is left as it is;" \
            "give a new or empty folder" >&2
        exit 2
    fi
    rm -rf "$output"
fi
mkdir -p "$output/source"
: >"$output/$marker"
output=$(cd "$output" && pwd)
cp -R "$root/debian" "$output/source/"
cd "$output/source"
VYR_BUILD_DIR=$build dpkg-buildpackage --build=binary --no-sign --no-pre-clean
ls "$output"/*.deb
