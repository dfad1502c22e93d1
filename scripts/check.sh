#!/usr/bin/env bash
# Checks the sources: formatting of all, cppcheck (not over the tests), clang-tidy (not over tests and benchmarks), and
# which lines of src/ the tests run.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh

install_packages "${build_packages[@]}" "${font_packages[@]}" clang-14 clang-format-14 clang-tidy-14 cppcheck gcovr
git ls-files '*.cpp' '*.h' | xargs clang-format-14 --dry-run --Werror
echo "Formatting is clean."

cppcheck --quiet --std=c++20 --library=qt --enable=warning,performance,portability --inline-suppr --error-exitcode=1 \
    "-DQ_DISABLE_COPY_MOVE(x)=" "-DQ_INIT_RESOURCE(x)=" "-DQ_COREAPP_STARTUP_FUNCTION(x)=" -DQ_OBJECT= \
    -Isrc src cli practice demo bench fuzz
echo "cppcheck is clean."

build dev molvark molvark-cli molvark-practice molvark-tour # their generated headers are read
run-clang-tidy-14 -quiet -p build/dev "$PWD/(src|cli|practice|demo|fuzz)/.*\.cpp$" >build/clang-tidy.log 2>&1 || {
    grep -E 'warning:|error:' build/clang-tidy.log | sort -u >&2
    exit 1
}
echo "clang-tidy is clean."

build coverage
ctest --preset coverage --parallel "$(nproc)" --output-on-failure >build/coverage.log || {
    cat build/coverage.log >&2
    exit 1
}
gcovr --root . --filter src/ --exclude-unreachable-branches --object-directory build/coverage --gcov-ignore-parse-errors \
    --print-summary --sort-uncovered
