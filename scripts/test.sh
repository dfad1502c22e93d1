#!/usr/bin/env bash
# Installs what is missing, builds with the sanitizers and runs the whole suite without a display.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh

install_packages "${build_packages[@]}" "${font_packages[@]}"
build asan
ctest --preset asan --parallel 2
