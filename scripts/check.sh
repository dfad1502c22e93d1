#!/usr/bin/env bash
# Checks the sources: formatting of all, and clang-tidy over the programs (not the tests).
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh

install_packages "${build_packages[@]}" clang-14 clang-format-14 clang-tidy-14
git ls-files '*.cpp' '*.h' | xargs clang-format-14 --dry-run --Werror
cmake --preset dev >/dev/null
cmake --build --preset dev
run-clang-tidy-14 -quiet -p build/dev "$PWD/(src|practice|demo|fuzz)/.*\.cpp$" >build/clang-tidy.log 2>&1 || {
    grep -E 'warning:|error:' build/clang-tidy.log | sort -u >&2
    exit 1
}
echo "Formatting and clang-tidy are clean."
