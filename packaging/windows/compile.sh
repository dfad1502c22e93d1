#!/usr/bin/env bash
# Checks that the programs still compile for Windows, if the Qt for it has been built; half an hour is too long to do it
# for this check alone.
set -euo pipefail
cd "$(dirname "$0")/../.."
. scripts/lib/packages.sh
. packaging/windows/qt.sh

if ! windows_qt_is_there; then
    echo "Not compiled for Windows: packaging/windows/build-qt.sh has not put a Qt into $qt_windows."
    exit 0
fi
install_packages "${windows_packages[@]}"
build_for_windows compile molvark molvark-cli molvark-practice molvark-tour -- -DCMAKE_CXX_FLAGS_RELEASE="-O1 -DNDEBUG" \
    -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=0
echo "The programs compile for Windows."
