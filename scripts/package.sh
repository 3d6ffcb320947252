#!/usr/bin/env bash
# Makes the Debian packages of a build tree that is built already (and,
# preferably, tested): libvyrguimfc0, libvyrguimfc-dev and vyr-tools.
#   scripts/package.sh [BUILD_DIR [OUTPUT_DIR]]
# BUILD_DIR defaults to build/release, OUTPUT_DIR to BUILD_DIR/packages. The
# packaging runs on a copy of debian/ in OUTPUT_DIR/source, so the source
# tree stays as it is; the .deb files, with the .changes and .buildinfo
# files, land in OUTPUT_DIR. Needs what scripts/deps.sh installs.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "${1:-$root/build/release}" && pwd)
output=${2:-$build/packages}
rm -rf "$output"
mkdir -p "$output/source"
output=$(cd "$output" && pwd)
cp -R "$root/debian" "$output/source/"
cd "$output/source"
VYR_BUILD_DIR=$build dpkg-buildpackage --build=binary --no-sign --no-pre-clean
ls "$output"/*.deb
