#!/bin/sh
# xvfb-run REAL_XVFB_RUN ARGS...: xvfb-run, tried again when it fails at
# removing its own temporary folder. It then exits 5 and loses the status of
# the program it ran, though that program may have done all it should; no
# program of this project exits 5, so such a run is repeated, twice at most.
real="$1"
shift
attempt=1
while :; do
    "$real" "$@"
    status=$?
    if [ "$status" -ne 5 ] || [ "$attempt" -ge 3 ]; then
        exit "$status"
    fi
    echo "xvfb-run could not clean up after itself; running again" >&2
    attempt=$((attempt + 1))
done
