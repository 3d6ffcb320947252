#!/usr/bin/env bash
# Builds the fuzz targets (clang, libFuzzer, ASan + UBSan) and runs each for
# the given number of seconds (default 600), one after the other. Each keeps
# its growing corpus in build/fuzz/corpus/<target>, seeded from fuzz/corpus;
# crashes are written to build/fuzz/findings/<target>.
#   scripts/fuzz.sh [SECONDS] [TARGET...]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
seconds=${1:-600}
shift || true
"$root/scripts/deps.sh"
"$root/scripts/build.sh" fuzz >/dev/null
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    targets=(decode_wwjd decode_user csv_split split_words numbers pattern ini gui_definition attr_types format_info feature_json name_rules edit_mask)
fi
status=0
for target in "${targets[@]}"; do
    corpus="$root/build/fuzz/corpus/$target"
    findings="$root/build/fuzz/findings/$target"
    mkdir -p "$corpus" "$findings"
    echo "== fuzz_$target for ${seconds}s"
    if ! "$root/build/fuzz/fuzz/fuzz_$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
        -print_final_stats=1 -artifact_prefix="$findings/" "$corpus" "$root/fuzz/corpus/$target" \
        2>"$root/build/fuzz/$target.log"; then
        echo "   FOUND A FAULT: see $findings and build/fuzz/$target.log"
        status=1
    fi
    grep -E '^stat::number_of_executed_units|^stat::peak_rss_mb|^stat::new_units_added' "$root/build/fuzz/$target.log" | sed 's/^/   /'
done
exit $status
