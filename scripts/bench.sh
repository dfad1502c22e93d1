#!/usr/bin/env bash
# Builds the benchmarks optimised, runs them without a display, and writes their rows into the table of
# docs/performance.md. Fails when a figure is beyond what it may be, and writes nothing when a benchmark breaks off.
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
printf '<fontconfig><include>%s</include><dir>%s</dir><cachedir>%s</cachedir></fontconfig>\n' /etc/fonts/conf.d \
    /usr/share/fonts/truetype/dejavu "$scratch/fonts" >"$FONTCONFIG_FILE"

status=0
# measure PROGRAM...: its rows. It ends with 1 when a figure is beyond what it may be.
measure() {
    local ended=0
    "$@" 2>"$scratch/log" >>"$rows" || ended=$?
    if [ "$ended" -gt 1 ]; then
        tail -n 20 "$scratch/log" >&2
        echo "$(basename "$1") broke off with status $ended; docs/performance.md stays as it was." >&2
        exit 1
    fi
    [ "$ended" -eq 0 ] || status=1
}

printf '| what | measured | at most |\n|---|---|---|\n' >"$rows"
measure "$bin/bench/bench_readers"
measure "$bin/bench/bench_ledger"
measure "$bin/bench/bench_book"
measure "$bin/bench/bench_completion"
measure "$bin/bench/bench_windows"
measure "$bin/bench/bench_process" "$bin/src/app/molvark" "$bin/bench/empty_window" "$bin/bench/libfirst_paint.so" \
    "$network" "$bin/practice/molvark-practice"
measure "$bin/bench/bench_cli" "$bin/cli/molvark-cli" "$bin/bench/empty_core"
cat "$rows"
[ $status -eq 0 ] || echo "A figure is beyond what it may be." >&2
sed -i -e "/<!-- table/r $rows" -e '/<!-- table/,/<!-- end of table/{/<!--/!d}' docs/performance.md
exit $status
