#!/usr/bin/env bash
# Installs what is missing, builds the benchmarks optimised and runs them.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh

install_packages "${build_packages[@]}" libbenchmark-dev
build bench bench_status_table
build/bench/bench/bench_status_table "$@"
