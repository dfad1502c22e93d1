# Where the static Qt for Windows is kept, and how to build with it. To be sourced.
# shellcheck shell=bash disable=SC2034

windows_packages=(g++-mingw-w64-x86-64-posix cmake ninja-build perl python3 tcl dpkg-dev qt6-base-dev qt6-base-dev-tools lowdown)

# The folder that packaging/windows/build-qt.sh fills, once; another one can be named in the environment, from the top of
# the sources. The tilde stands for the home folder even where HOME is not set.
home=~
qt_windows=$(realpath -m -- "${MOLVARK_QT_WINDOWS:-${XDG_CACHE_HOME:-$home/.cache}/molvark/qt-windows}")

# windows_qt_is_there: build-qt.sh has come to its end in that folder, and with the driver for the player book; one that was
# built before there was a book has none.
windows_qt_is_there() {
    [ -f "$qt_windows/complete" ] && [ -f "$qt_windows/plugins/sqldrivers/libqsqlite.a" ]
}

# build_for_windows DIRECTORY TARGET... [-- CMAKE_OPTION...]: configures and builds the targets with that Qt, in
# build/windows/DIRECTORY. No path of this machine gets into them.
build_for_windows() {
    local directory=build/windows/$1 targets=()
    shift
    while [ $# -gt 0 ] && [ "$1" != -- ]; do
        targets+=("$1")
        shift
    done
    [ $# -eq 0 ] || shift
    cmake -S . -B "$directory" -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=OFF \
        -DCMAKE_TOOLCHAIN_FILE="$PWD/packaging/windows/toolchain.cmake" \
        -DCMAKE_PREFIX_PATH="$qt_windows" -DCMAKE_FIND_ROOT_PATH="/usr/x86_64-w64-mingw32;$qt_windows" \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
        -DCMAKE_CXX_FLAGS="-ffile-prefix-map=$PWD=. -ffile-prefix-map=$qt_windows=qt" "$@" >/dev/null
    cmake --build "$directory" ${JOBS:+--parallel "$JOBS"} --target "${targets[@]}"
}
