#!/usr/bin/env bash
# Installs what is missing, then builds and runs every test twice: a normal
# optimised build with warnings as errors, and a clang build under
# AddressSanitizer and UndefinedBehaviorSanitizer (which also runs each fuzz
# target briefly over its seed corpus).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/deps.sh"
for flavour in release asan; do
    echo "== $flavour build"
    "$root/scripts/build.sh" "$flavour"
    echo "== $flavour tests"
    ctest --test-dir "$root/build/$flavour" --output-on-failure -j "$(nproc)"
done
echo "== all tests passed"
