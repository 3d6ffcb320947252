#!/usr/bin/env bash
# The main job on the bundled examples: the feature type properties dialog on
# the example workspace (a window to edit it in when there is a display; a
# screenshot of the dialog, offscreen, when there is none), then the codecs,
# a schema feature under its format, and the about dialog.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/deps.sh"
"$root/scripts/build.sh" release >/dev/null
stage="$root/build/release/stage"
out="$root/build/example"

# The workspace is copied, so that edits never touch the bundled files.
workspace="$out/workspace"
rm -rf "$workspace"
mkdir -p "$out"
cp -r "$root/examples" "$workspace"
if [[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]]; then
    echo "== the example workspace: pick a feature type and press Properties... (close the window to go on)"
    "$stage/vyr-ftprops" "$workspace/workspace.json" || true
else
    echo "== the feature type properties dialog on ROADS of the example workspace (no display: offscreen)"
    "$stage/vyr-ftprops" "$workspace/workspace.json" --edit ROADS --screenshot "$out/ftprops-ROADS.png" --accept
    echo "   picture: $out/ftprops-ROADS.png"
    # A picture without --accept ends as Cancel does (exit 1); anything else
    # is a failure.
    for page in 2:attributes 3:format-attributes 4:parameters; do
        status=0
        "$stage/vyr-ftprops" "$workspace/workspace.json" --edit ROADS --page "${page%%:*}" \
            --screenshot "$out/ftprops-ROADS-${page#*:}.png" >/dev/null || status=$?
        [[ $status -le 1 ]] || exit "$status"
        echo "   its ${page#*:} page: $out/ftprops-ROADS-${page#*:}.png"
    done
fi
echo "   to edit it: $stage/vyr-ftprops $workspace/workspace.json"

tool="$stage/vyrtool"
sample="$root/examples/texts/feature-names.txt"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for codec in wwjd user; do
    "$tool" codec "encode-$codec" --codepage UTF-8 <"$sample" >"$work/encoded.$codec"
    "$tool" codec "decode-$codec" --codepage UTF-8 <"$work/encoded.$codec" >"$work/decoded.$codec"
    echo "== $codec encoding of $(basename "$sample")"
    cat "$work/encoded.$codec"; echo
done
cmp "$sample" "$work/decoded.wwjd"
echo "== round trip: the WWJD decoding gives back the original text byte for byte"

# A bundled schema feature as the feature type properties dialog reads it
# under its format, and a name made legal by the format's Tcl script.
echo "== the schema of examples/schemas/postgres-parcels.json under the POSTGRES format"
"$tool" schema show "$root/examples/schemas/postgres-parcels.json" --format "$stage/formats/postgres.fmt"
echo "== the worksheet name XLSX makes of \"Sales: 2026/Q1\" (by its validation script)"
"$tool" name resolve "Sales: 2026/Q1" --format "$stage/formats/xlsx.fmt"

# The about dialog, built from a template of the resource library, in both
# languages. Without a display it is drawn offscreen into PNG files.
echo "== the about dialog (template 130 of the resource library)"
for lang in C.UTF-8 de_DE.UTF-8; do
    png="$out/about-${lang%%.*}.png"
    LC_ALL= LC_MESSAGES= LANG="$lang" "$tool" about --screenshot "$png" 2>/dev/null
    echo "   $lang: $png"
done
echo "   to use it: $tool about   (F1 or Help opens its help page)"
