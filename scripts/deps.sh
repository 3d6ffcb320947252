#!/usr/bin/env bash
# Installs the Debian 12 packages the build needs, when any is missing.
# Run as root (or with sudo available); does nothing when all are present.
# help2man writes the programs' manual pages; pkg-config serves the tests
# that build a host against an installation; debhelper (with dpkg-dev)
# makes the Debian packages, and lintian, hardening-check (in devscripts),
# desktop-file-validate and appstreamcli check them; the AT-SPI bus,
# pyatspi, a session bus and xdotool serve the accessibility test.
set -euo pipefail

packages=(
    cmake ninja-build g++ clang libclang-rt-14-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    qt6-base-dev libqt6opengl6-dev qt6-tools-dev gettext locales xvfb xauth tcl8.6-dev nlohmann-json3-dev
    libsimdjson-dev
    help2man pkg-config dpkg-dev debhelper lintian devscripts desktop-file-utils appstream
    at-spi2-core python3-pyatspi gir1.2-atspi-2.0 python3-gi dbus xdotool
)

# The German dialogs and catalogs are tested under a real German locale.
ensure_locale() {
    locale -a 2>/dev/null | grep -qix 'de_DE.utf8' && return 0
    echo "Generating the de_DE.UTF-8 locale"
    "${sudo[@]}" localedef -i de_DE -c -f UTF-8 de_DE.UTF-8
}

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed'; then
        missing+=("$package")
    fi
done
if [ "$(id -u)" -eq 0 ]; then
    sudo=()
elif command -v sudo >/dev/null; then
    sudo=(sudo)
else
    sudo=(false)
fi

if [ ${#missing[@]} -gt 0 ]; then
    if [ "${sudo[*]}" = false ]; then
        echo "error: missing packages (${missing[*]}) and not root; run this script as root" >&2
        exit 1
    fi
    echo "Installing: ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    "${sudo[@]}" apt-get update -qq
    "${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
ensure_locale
