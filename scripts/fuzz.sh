#!/usr/bin/env bash
# Installs what is missing, builds the fuzzing programs and runs each in turn for SECONDS (300); ends at a finding.
# What is new goes into build/fuzz/: inputs that reach something new into corpus/, findings into findings/.
# Usage: fuzz.sh [SECONDS], one at least
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh

seconds=${1:-300}
if ! [[ $seconds =~ ^[1-9][0-9]*$ ]]; then # libFuzzer runs for ever when it is told 0
    echo "Usage: fuzz.sh [SECONDS], one at least" >&2
    exit 2
fi
export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 LSAN_OPTIONS=suppressions=$PWD/fuzz/leaks.supp:print_suppressions=0

# options TARGET: how long its inputs may get. Leaks are looked for only at the end where a window takes new memory in
# each run and gives it back late.
options() {
    case $1 in
    arrival | dvar_reply | *_listing | getstatus_reply | server_info | status_table) echo -max_len=70000 ;;
    rotation) echo -max_len=70000 -detect_leaks=0 ;;
    *) echo -max_len=4096 ;;
    esac
}

install_packages "${build_packages[@]}" "${font_packages[@]}" clang-14 libclang-rt-14-dev
build fuzz fuzz
mkdir -p build/fuzz/findings
for source in fuzz/fuzz_*.cpp; do
    target=$(basename "$source" .cpp)
    target=${target#fuzz_}
    mkdir -p "build/fuzz/corpus/$target"
    log=build/fuzz/findings/$target.log
    # shellcheck disable=SC2046 # options are words
    if ! "build/fuzz/fuzz/fuzz_$target" -max_total_time="$seconds" -timeout=10 $(options "$target") \
        -artifact_prefix="build/fuzz/findings/$target-" "build/fuzz/corpus/$target" "fuzz/corpus/$target" \
        >"$log" 2>&1; then
        tail -n 40 "$log" >&2
        echo "$target: a finding, see $log" >&2
        exit 1
    fi
    echo "$target: clean ($(grep -oE 'DONE.*' "$log"))"
done
