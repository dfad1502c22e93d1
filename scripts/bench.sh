#!/usr/bin/env bash
# Builds the benchmarks optimised, runs them without a display, and writes their rows into the table of
# docs/performance.md. Fails when a figure is beyond what it may be.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh

install_packages "${build_packages[@]}" "${font_packages[@]}" libbenchmark-dev
build bench
export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
bin=$PWD/build/bench
network=$(ldd "$bin/src/app/molvark" | awk '$1 ~ /^libQt6Network/ { print $3 }')

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
rows=$scratch/rows

# Only the fonts that are installed above: the more a machine has, the more memory goes into their list.
export FONTCONFIG_FILE=$scratch/fonts.conf
printf '<fontconfig><dir>/usr/share/fonts/truetype/dejavu</dir><cachedir>%s</cachedir></fontconfig>\n' "$scratch/fonts" \
    >"$FONTCONFIG_FILE"

status=0
{
    printf '| what | measured | at most |\n|---|---|---|\n'
    "$bin/bench/bench_readers" || status=1
    "$bin/bench/bench_windows" || status=1
    "$bin/bench/bench_process" "$bin/src/app/molvark" "$bin/bench/empty_window" "$bin/bench/libfirst_paint.so" \
        "$network" "$bin/practice/molvark-practice" || status=1
} 2>/dev/null >"$rows"
cat "$rows"
sed -i -e "/<!-- table/r $rows" -e '/<!-- table/,/<!-- end of table/{/<!--/!d}' docs/performance.md
exit $status
