#!/usr/bin/env bash
# Draws each page of the feature type properties dialog at 200 % in a dark
# palette, as a person with a dark desktop theme and a high-DPI screen sees it,
# into docs/screenshots/dark2x_*.png. The palette is the desktop's own: Qt's GTK
# platform theme reading GTK's dark Adwaita (package qt6-gtk-platformtheme).
#   scripts/dark-screenshots.sh [BUILD_DIR]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build/release}
tool=$build/stage/vyr-ftprops
[ -x "$tool" ] || { echo "dark-screenshots: build first ($tool is missing)" >&2; exit 2; }
if ! dpkg-query -W -f='${Status}' qt6-gtk-platformtheme 2>/dev/null | grep -q 'install ok installed'; then
    echo "dark-screenshots: needs the Debian package qt6-gtk-platformtheme" >&2
    exit 2
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -r "$root/examples/." "$work/"
out=$root/docs/screenshots
shots=(
    "en land_use 1 general" "en land_use 2 attributes" "en waypoints 2 format_attributes"
    "en waypoints 3 parameters" "de land_use 2 attributes_de"
)
export QT_QPA_PLATFORMTHEME=gtk3 GTK_THEME=Adwaita:dark QT_SCALE_FACTOR=2
for shot in "${shots[@]}"; do
    read -r language feature page name <<<"$shot"
    if [ "$language" = de ]; then language_env=(LANG=de_DE.UTF-8 LANGUAGE=de); else language_env=(LANG=C.UTF-8 LANGUAGE=en); fi
    env "${language_env[@]}" xvfb-run -a -s '-screen 0 1600x1200x24' \
        "$tool" "$work/workspace.json" --edit "$feature" --page "$page" --screenshot "$out/dark2x_$name.png" \
        -style Fusion >/dev/null || [ $? -eq 1 ] # 1: the dialog was cancelled after the picture
done
echo "dark-screenshots: ${#shots[@]} pictures in $out"
