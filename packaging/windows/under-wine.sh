#!/usr/bin/env bash
# Runs a test program for Windows under Wine. What Qt Test reports goes to standard output in a form that Wine keeps.
set -euo pipefail

# Wine keeps Qt's variables from its programs unless they are named so.
for name in $(compgen -e QT_ || true); do
    export "WINE$name=${!name}"
done
export MOLVARK_TEST_REGISTRY=1 # the registry is thrown away afterwards
report=()
[[ $(basename "$1") != @(tst_*|molvark-tests.exe) ]] || report=(-o "-,tap")

# Wine's services, which the first program starts, keep its standard error open: a pipe would not end with the program.
errors=$(mktemp)
trap 'cat "$errors" >&2; rm -f "$errors"' EXIT
wine "$@" "${report[@]}" 2>"$errors"
