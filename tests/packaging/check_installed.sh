#!/usr/bin/env bash
# Installs what BUILD_FOLDER holds and compares the names of the files with those that belong to the programs, one a line in
# installed_files.txt; the pictures of the manual are those of SOURCE_FOLDER.
# Usage: check_installed.sh BUILD_FOLDER SOURCE_FOLDER MODULE_FOLDER
set -euo pipefail
into=$(mktemp -d)
trap 'rm -rf "$into"' EXIT
cmake --install "$1" --prefix "$into" >/dev/null
diff <({
    sed "s#^MODULES/#$3/#" "$(dirname "$0")/installed_files.txt"
    cd "$2/docs/pictures" && printf 'share/doc/molvark/pictures/%s\n' *
} | sort) <(cd "$into" && find . -type f -printf '%P\n' | sort)
