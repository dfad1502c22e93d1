#!/usr/bin/env bash
# Runs a test program for Windows under Wine. Its report goes to standard output in a form that Wine does not lose.
set -euo pipefail

# Wine keeps Qt's variables from its programs unless they are named so.
for name in $(compgen -e QT_ || true); do
    export "WINE$name=${!name}"
done
export MOLVARK_TEST_REGISTRY=1 # the registry is thrown away afterwards
exec wine "$@" -o -,tap
