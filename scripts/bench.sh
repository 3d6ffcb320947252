#!/usr/bin/env bash
# Builds the optimised flavour and runs every benchmark; each prints its
# throughput and, at the end, its ratio against the peer it is measured with.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/deps.sh"
"$root/scripts/build.sh" release >/dev/null
for bench in codecs lists pattern numbers dialogs attrtypes formatinfo schema grid listgrid; do
    echo "== bench_$bench"
    "$root/build/release/bench/bench_$bench" --benchmark_color=false "$@"
done
# Opening the feature type properties dialog: times to first paint and
# through OK, and peak memory, printed directly.
echo "== bench_ftprops"
"$root/build/release/bench/bench_ftprops"
echo "== bench_attrpages"; "$root/build/release/bench/bench_attrpages"
echo "== bench_parmspage"; "$root/build/release/bench/bench_parmspage"
