#!/usr/bin/env bash
# Reads a full server's list of players ten thousand times over a bad line; the memory must stay what it was.
# Usage: soak.sh [POPULATES], which are ten at least
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh

install_packages "${build_packages[@]}" "${font_packages[@]}"
cmake --preset release -B build/soak -DBUILD_TESTING=ON >/dev/null
cmake --build build/soak --target soak
build/soak/tests/soak "$@"
