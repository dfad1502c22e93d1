#!/usr/bin/env bash
# Builds the two programs and the practice server for 64-bit Windows, each one file, and packs them with manual and licences.
# With --twice it then does the same with a copy of the sources elsewhere: each file is byte for byte the same.
# Environment: MOLVARK_QT_WINDOWS, the folder of build-qt.sh; JOBS, how many compilers run at once; SOURCE_DATE_EPOCH, the
# time of the files in the archive, that of the last commit when not set.
set -euo pipefail
cd "$(dirname "$0")/../.."
. scripts/lib/packages.sh
. packaging/windows/qt.sh

fail() {
    echo "$1" >&2
    exit 1
}

# DLLs that every Windows 10 has.
system_dlls='advapi32|api-ms-win-core-[a-z0-9-]+|authz|bcrypt|comdlg32|crypt32|d2d1|d3d11|d3d9|dnsapi|dwmapi|dwrite|dxgi|gdi32|imm32|iphlpapi|'
system_dlls+='kernel32|mpr|msvcrt|ncrypt|netapi32|ntdll|ole32|oleaut32|rpcrt4|secur32|setupapi|shcore|shell32|shlwapi|'
system_dlls+='user32|userenv|uxtheme|version|winhttp|winmm|winspool.drv|ws2_32|wtsapi32'

# Folders of this machine.
places=("$PWD" "$qt_windows" /tmp/)
[ -z "${home%/}" ] || places+=("${home%/}/")

# lines_with ARGUMENT...: grep, to which finding nothing is no failure.
lines_with() {
    grep "$@" || [ $? -eq 1 ]
}

# check_program FILE: it needs no foreign DLL and does not tell where it was built.
check_program() {
    local name imported foreign texts told
    name=$(basename "$1")
    imported=$(x86_64-w64-mingw32-objdump -p "$1" | sed -n 's/^.*DLL Name: //p' | tr '[:upper:]' '[:lower:]' | sort -u)
    [ -n "$imported" ] || fail "No list of DLLs could be read from $name."
    echo "$name, $(stat -c %s "$1") bytes, imports ${imported//$'\n'/ }"
    foreign=$(lines_with -vxE "($system_dlls)(\.dll)?" <<<"$imported")
    [ -z "$foreign" ] || fail "$name needs what Windows does not have: $foreign"
    texts=$(strings "$1" && strings -el "$1")
    told=$(lines_with -F "${places[@]/#/-e}" <<<"$texts")
    [ -z "$told" ] || fail "$name tells where it was built: $(head -n 5 <<<"$told")"
}

case $* in
'' | --twice) ;;
*) fail "Usage: $0 [--twice]" ;;
esac
moment=${SOURCE_DATE_EPOCH:-$(git log -1 --pretty=%ct)} ||
    fail "The time of the last commit is not known: name a time in SOURCE_DATE_EPOCH, in seconds since 1970."
install_packages "${windows_packages[@]}" zip
packaging/windows/build-qt.sh

build_for_windows program molvark molvark-cli molvark-practice
programs=(build/windows/program/src/app/molvark.exe build/windows/program/cli/molvark-cli.exe
    build/windows/program/practice/molvark-practice.exe)
for program in "${programs[@]}"; do
    check_program "$program"
done

version=$(sed -n 's/^project(Molvark VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
folder=molvark-$version
archive=build/windows/molvark-$version-windows-x86_64.zip
stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
mkdir -p "$stage/$folder/licences"
cp "${programs[@]}" LICENSE "$stage/$folder/"
mkdir "$stage/$folder/shell"
cp packaging/molvark-cli.1 packaging/molvark-cli.bash-completion "$stage/$folder/shell/"
cp -r build/windows/program/docs/{manual.html,manual.css,pictures} "$stage/$folder/"
cp packaging/windows/licences.txt "$stage/$folder/licences/README.txt"
cp /usr/share/common-licenses/LGPL-3 "$stage/$folder/licences/LGPL-3.txt"
cp /usr/share/common-licenses/GPL-3 "$stage/$folder/licences/GPL-3.txt"
cp /usr/share/doc/qt6-base-dev/copyright "$stage/$folder/licences/Qt.txt"
cp /usr/share/doc/mingw-w64-x86-64-dev/copyright "$stage/$folder/licences/mingw-w64.txt"
cp /usr/share/doc/gcc-mingw-w64-x86-64-posix-runtime/copyright "$stage/$folder/licences/GCC.txt"

# The archive has the time of the last change instead of that of the build.
export TZ=UTC
find "$stage/$folder" -type d -exec chmod 755 {} + -o -exec chmod 644 {} +
find "$stage/$folder" -exec touch -d "@$moment" {} +
rm -f "$archive"
(cd "$stage" && find "$folder" -type f | LC_ALL=C sort | zip -q -9 -X "$OLDPWD/$archive" -@)
echo "$PWD/$archive, $(stat -c %s "$archive") bytes"

if [ "${1:-}" = --twice ]; then
    mkdir "$stage/copy"
    tar -c --exclude=./build --exclude=./.git . | tar -x -C "$stage/copy"
    MOLVARK_QT_WINDOWS=$qt_windows SOURCE_DATE_EPOCH=$moment "$stage/copy/packaging/windows/build.sh"
    for file in "${programs[@]}" "$archive"; do
        cmp "$file" "$stage/copy/$file" || fail "Built twice, $file is not the same."
    done
    echo "Built twice, in $PWD and $stage/copy, the programs and the archive are byte for byte the same."
fi
