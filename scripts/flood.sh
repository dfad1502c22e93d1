#!/usr/bin/env bash
# Floods the program with 50,000 datagrams a second; the window must go on answering, and the memory come back.
# Usage: flood.sh [SECONDS]
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh

install_packages "${build_packages[@]}" "${font_packages[@]}"
cmake --preset release -B build/soak -DBUILD_TESTING=ON >/dev/null
cmake --build build/soak --target flood
build/soak/tests/flood "$@"
