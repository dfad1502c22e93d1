#!/usr/bin/env bash
# Installs what is missing, builds with the sanitizers, runs the whole suite without a display and says what that took.
# Usage: test.sh [ROOM | TEST]: of a room (a folder below tests/, or fuzz) or of a test alone nothing else is built.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh

room=
chosen=()
if [ $# -gt 0 ]; then
    chosen=(--tests-regex "^$1$")
    if [ "$1" = fuzz ] || [ -d "tests/$1" ]; then
        room=$1
        chosen=(--label-regex "^$1$")
    elif [[ $1 == fuzz_replay_* ]]; then
        room=fuzz
    else
        file=$(echo tests/*/"tst_${1%_at_200_percent}.cpp")
        room=$(basename "$(dirname "$file")")
    fi
    [ "$room" != "*" ] || {
        echo "There is neither a room nor a test named $1. The rooms: $(cd tests && echo */) fuzz" >&2
        exit 2
    }
fi

begin=0
spent=()
# took WHAT: what the step that has just ended took.
took() {
    spent+=("$1 $((SECONDS - begin)) s")
    begin=$SECONDS
}
trap '[ ${#spent[@]} -eq 0 ] || printf "%s\n" "Took: ${spent[*]}"' EXIT

install_packages "${build_packages[@]}" "${font_packages[@]}"
took installing,
cmake --preset asan -DMOLVARK_TEST_ROOM="$room" >/dev/null
took configuring,
cmake --build --preset asan ${room:+--target molvark-tests}
took building,
ctest --preset asan --parallel "$(($(nproc) * 2))" "${chosen[@]}" # half of them wait most of the time
took testing
