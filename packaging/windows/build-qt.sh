#!/usr/bin/env bash
# Builds Debian's own Qt statically for Windows into a cache folder, once. Takes about half an hour with two processors.
# Environment: MOLVARK_QT_WINDOWS, the folder; JOBS, how many compilers run at once.
set -euo pipefail
cd "$(dirname "$0")/../.."
. scripts/lib/packages.sh
. packaging/windows/qt.sh

if windows_qt_is_there; then
    echo "Qt for Windows is in $qt_windows"
    exit 0
fi
if [ -n "$(ls -A "$qt_windows" 2>/dev/null)" ]; then
    echo "$qt_windows holds something else: remove it, or name another folder in MOLVARK_QT_WINDOWS." >&2
    exit 1
fi
install_packages "${windows_packages[@]}"

# The finished Qt is moved to its place at once, so that what lies there is whole.
mkdir -p "$(dirname "$qt_windows")"
stage=$(mktemp -d "$qt_windows.XXXXXX")
work=$(mktemp -d)
trap 'rm -rf "$stage" "$work"' EXIT
toolchain=$PWD/packaging/windows/toolchain.cmake

# The machine's own package sources, with Debian's source packages added, for these calls only.
mkdir -p "$work/apt/sources.list.d" "$work/apt/lists/partial"
for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ -f "$list" ] && sed -n -e p -e 's/^deb /deb-src /p' "$list" >"$work/apt/sources.list.d/$(basename "$list" .list).list"
done
for list in /etc/apt/sources.list.d/*.sources; do
    [ -f "$list" ] && sed 's/^Types:.*/Types: deb deb-src/' "$list" >"$work/apt/sources.list.d/$(basename "$list")"
done
apt_sources=(-o "Dir::Etc::SourceList=/dev/null" -o "Dir::Etc::SourceParts=$work/apt/sources.list.d"
    -o "Dir::State::Lists=$work/apt/lists" -o "APT::Sandbox::User=root")

off=(system_zlib system_png system_jpeg system_freetype system_harfbuzz system_pcre2 system_doubleconversion
    system_textmarkdownreader system_libb2 system_sqlite direct2d1_1 dbus xml printsupport opengl vulkan tabletevent glib icu zstd
    brotli openssl cpp_winrt concurrent sql_db2 sql_ibase sql_mimer sql_mysql sql_oci sql_odbc sql_psql)
off=("${off[@]/#/-DFEATURE_}")

# The tools of this machine's Qt, with which the other one is built and used, are of the same version.
package=qt6-base=$(dpkg-query -W -f='${source:Version}' qt6-base-dev)
mkdir "$work/source"
if ! (apt-get "${apt_sources[@]}" update && cd "$work/source" && apt-get "${apt_sources[@]}" source "$package" sqlite3) \
    >"$work/apt.log" 2>&1; then
    tail -n 5 "$work/apt.log" >&2
    echo "The source packages $package and sqlite3 could not be had with apt-get." >&2
    exit 1
fi

# Debian takes Qt's copy of SQLite out of its source; its own stands there instead, as the one file that Qt compiles.
(cd "$work/source"/sqlite3-*/ && ./configure --disable-tcl && make sqlite3.c) >"$work/sqlite.log" 2>&1 || {
    tail -n 5 "$work/sqlite.log" >&2
    echo "The one file of SQLite could not be made." >&2
    exit 1
}
qt_source=$(echo "$work/source"/qt6-base-*/)
install -Dm 644 -t "$qt_source/src/3rdparty/sqlite" "$work/source"/sqlite3-*/sqlite3.{c,h}

# The prefix compiled into the libraries is "/qt" on every machine, and no source path is kept either, so that programs do
# not tell where they were built. With direct2d off the libraries lack the DirectWrite font database and nothing links.
cmake -S "$qt_source" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_INSTALL_PREFIX=/qt \
    -DCMAKE_CXX_FLAGS="-ffile-prefix-map=$work=." -DCMAKE_C_FLAGS="-ffile-prefix-map=$work=." \
    -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake -DQT_QMAKE_TARGET_MKSPEC=win32-g++ \
    -DBUILD_SHARED_LIBS=OFF -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DINPUT_opengl=no -DFEATURE_direct2d=ON \
    "${off[@]/%/=OFF}"
cmake --build "$work/build" ${JOBS:+--parallel "$JOBS"}
DESTDIR="$stage" cmake --install "$work/build"
touch "$stage/qt/complete"
mv -T "$stage/qt" "$qt_windows"
echo "Qt for Windows is in $qt_windows ($(du -sh "$qt_windows" | cut -f1))"
