# Where the static Qt for Windows is kept. To be sourced.

windows_packages=(g++-mingw-w64-x86-64-posix cmake ninja-build perl python3 dpkg-dev qt6-base-dev qt6-base-dev-tools)

# The folder that packaging/windows/build-qt.sh fills, once; another one can be named in the environment.
qt_windows=${MOLVARK_QT_WINDOWS:-${XDG_CACHE_HOME:-$HOME/.cache}/molvark/qt-windows}

# windows_qt_is_there: build-qt.sh has come to its end in that folder.
windows_qt_is_there() {
    [ -f "$qt_windows/complete" ]
}
