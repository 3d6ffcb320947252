#!/usr/bin/env bash
# Installs the Debian 12 packages the build needs, when any is missing.
# Run as root (or with sudo available); does nothing when all are present.
set -euo pipefail

packages=(
    cmake ninja-build g++ clang libclang-rt-14-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    qt6-base-dev libqt6opengl6-dev qt6-tools-dev gettext xvfb xauth
)

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed'; then
        missing+=("$package")
    fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
if [ "$(id -u)" -eq 0 ]; then
    sudo=()
elif command -v sudo >/dev/null; then
    sudo=(sudo)
else
    echo "error: missing packages (${missing[*]}) and not root; run this script as root" >&2
    exit 1
fi
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update -qq
"${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
