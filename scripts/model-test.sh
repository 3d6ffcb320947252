#!/usr/bin/env bash
# A long run of the model-based test of the feature type properties dialog:
# many random seeds, in English and in German, on a build made before.
#   scripts/model-test.sh [RUNS] [FIRST_SEED] [FLAVOUR]
# RUNS seeds per language (default 3000) from FIRST_SEED (default 1) on
# build/FLAVOUR (default release). A failing seed is printed with its steps
# and replays alone with
#   VYR_MODEL_SEED=<seed> build/release/tests/tst_dialogmodel
# (under the same LANG, QT_QPA_PLATFORM=offscreen and VYR_HOME as below);
# VYR_MODEL_STEPS=<k> keeps its first k steps, VYR_MODEL_TRACE=1 prints the
# screen and the model after each.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
runs=${1:-3000}
first=${2:-1}
flavour=${3:-release}
build="$root/build/$flavour"
test="$build/tests/tst_dialogmodel"
if [[ ! -x "$test" ]]; then
    echo "$test is missing: build the target tst_dialogmodel of $build first" >&2
    exit 2
fi
status=0
for locale in C.UTF-8 de_DE.UTF-8; do
    echo "== $runs seeds from $first, LANG=$locale"
    # A seed takes a fraction of a second; Qt Test's own limit of five
    # minutes a test function would end a long run half way.
    env QT_QPA_PLATFORM=offscreen VYR_HOME="$build/stage/" LANG="$locale" LC_ALL= LC_MESSAGES= LANGUAGE= \
        QTEST_FUNCTION_TIMEOUT=$((runs * 2000 + 60000)) \
        VYR_MODEL_RUNS="$runs" VYR_MODEL_FIRST_SEED="$first" \
        "$test" randomSequencesKeepWhatTheScreenShows -maxwarnings 0 || status=1
done
exit $status
