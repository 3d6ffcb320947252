#!/bin/sh
# run_a11y.sh VYR_FTPROPS EXAMPLES_DIR WORK_DIR: the accessibility check on a
# private X server, D-Bus session and AT-SPI bus, all of them ended on every
# way out. No window manager: the check gives focus itself.
set -u
here=$(dirname "$0")
tool=$1 examples=$2 work=$3
rm -rf "$work"
mkdir -p "$work" || exit 1
xpid=
cleanup() {
    [ -n "$xpid" ] && kill "$xpid" 2>/dev/null && wait "$xpid" 2>/dev/null
    rm -f "$work/displayfd"
}
trap cleanup EXIT
trap 'exit 2' INT TERM
exec 3>"$work/displayfd"
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp >"$work/xvfb.log" 2>&1 &
xpid=$!
exec 3>&-
tries=0
while [ ! -s "$work/displayfd" ] && [ $tries -lt 100 ]; do sleep 0.1; tries=$((tries + 1)); done
[ -s "$work/displayfd" ] || { echo "Xvfb did not start" >&2; cat "$work/xvfb.log" >&2; exit 1; }
DISPLAY=:$(tr -dc '0-9' <"$work/displayfd")
export DISPLAY
# The AT-SPI bus lives as long as the session bus that runs the check.
timeout -k 5 170 dbus-run-session -- sh -c '
    /usr/libexec/at-spi-bus-launcher --launch-immediately >/dev/null 2>&1 &
    bus=$!
    trap "kill $bus 2>/dev/null" EXIT
    sleep 0.5
    /usr/bin/python3 "$0" "$@"' "$here/a11y_check.py" "$tool" "$examples" "$work"
