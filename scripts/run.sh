#!/usr/bin/env bash
# Builds the program if needed and starts it in the current directory, whose molvark.ini holds its settings.
set -euo pipefail
here=$PWD
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh

install_packages "${build_packages[@]}" "${font_packages[@]}"
build release molvark
program=$PWD/build/release/src/app/molvark
cd "$here"
exec "$program" "$@"
