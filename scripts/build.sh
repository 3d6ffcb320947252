#!/usr/bin/env bash
# Configures and builds one flavour of the project.
#   scripts/build.sh release   optimised, warnings as errors  -> build/release
#   scripts/build.sh asan      clang, AddressSanitizer + UBSan, fuzz targets -> build/asan
#   scripts/build.sh fuzz      clang, libFuzzer targets        -> build/fuzz
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
flavour=${1:-release}
dir="$root/build/$flavour"
common=(-G Ninja -DVYR_WERROR=ON)
case "$flavour" in
    release) options=(-DCMAKE_BUILD_TYPE=RelWithDebInfo) ;;
    asan) options=(-DCMAKE_BUILD_TYPE=Debug -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++
                   -DVYR_SANITIZE=ON -DVYR_BUILD_FUZZERS=ON -DVYR_BUILD_BENCHMARKS=OFF) ;;
    fuzz) options=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++
                   -DVYR_SANITIZE=ON -DVYR_BUILD_FUZZERS=ON -DVYR_BUILD_BENCHMARKS=OFF -DBUILD_TESTING=OFF) ;;
    *) echo "usage: $0 release|asan|fuzz" >&2; exit 2 ;;
esac
cmake -S "$root" -B "$dir" "${common[@]}" "${options[@]}" >/dev/null
cmake --build "$dir" -j "$(nproc)"
