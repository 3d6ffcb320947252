#!/bin/sh
# run_a11y.sh VYR_FTPROPS EXAMPLES_DIR WORK_DIR: the accessibility check on a
# private X server, D-Bus session and AT-SPI bus. Ending the X server ends
# every program left on it, and the session bus takes the AT-SPI bus with it,
# so nothing outlives a run, even one killed by the time limit. No window
# manager: the check gives the dialog the focus itself.
set -u
here=$(dirname "$0")
tool=$1 examples=$2
mkdir -p "$3" && rm -rf "$3"/run.* && work=$(mktemp -d "$3/run.XXXXXX") || exit 1
launcher=
for candidate in /usr/libexec/at-spi-bus-launcher /usr/lib/at-spi2-core/at-spi-bus-launcher; do
    [ -x "$candidate" ] && launcher=$candidate && break
done
[ -n "$launcher" ] || { echo "no at-spi-bus-launcher (package at-spi2-core)" >&2; exit 1; }
xpid=
cleanup() {
    [ -n "$xpid" ] && kill "$xpid" 2>/dev/null && wait "$xpid" 2>/dev/null
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
# A program started before the AT-SPI bus answers stays unseen by it, so the
# check starts only once the bus gives its address.
timeout -k 5 200 dbus-run-session -- sh -c '
    "$1" --launch-immediately >/dev/null 2>&1 &
    bus=$!
    trap "kill $bus 2>/dev/null" EXIT
    tries=0
    until dbus-send --session --print-reply --dest=org.a11y.Bus /org/a11y/bus org.a11y.Bus.GetAddress \
            >/dev/null 2>&1; do
        tries=$((tries + 1))
        [ $tries -lt 100 ] || { echo "the AT-SPI bus did not start" >&2; exit 1; }
        sleep 0.1
    done
    shift
    PYTHONIOENCODING=utf-8 /usr/bin/python3 "$@"' sh "$launcher" "$here/a11y_check.py" "$tool" "$examples" "$work"
