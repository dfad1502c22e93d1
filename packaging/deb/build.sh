#!/usr/bin/env bash
# Makes the Debian package of the programs, build/deb/molvark_VERSION_ARCHITECTURE.deb, and has lintian look at it.
# Environment: SOURCE_DATE_EPOCH, the time of the files in it, that of the last commit when not set.
set -euo pipefail
cd "$(dirname "$0")/../.."
. scripts/lib/packages.sh
umask 022

install_packages "${build_packages[@]}" dpkg-dev lintian
version=$(sed -n 's/^project(Molvark VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
architecture=$(dpkg --print-architecture)
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --pretty=%ct)}
export SOURCE_DATE_EPOCH

out=$PWD/build/deb
package=$out/molvark_${version}_$architecture.deb
root=$out/root
rm -rf "$root" "$package"
mkdir -p "$root"

# The distribution's own flags, and no path of this machine in the programs.
flag() { dpkg-buildflags --get "$1"; }
cmake -S . -B "$out/build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=OFF -DCMAKE_INSTALL_PREFIX=/usr \
    -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=0 \
    -DCMAKE_CXX_FLAGS="$(flag CXXFLAGS) $(flag CPPFLAGS) -ffile-prefix-map=$PWD=." \
    -DCMAKE_EXE_LINKER_FLAGS="$(flag LDFLAGS) -Wl,-z,now" \
    -DCMAKE_MODULE_LINKER_FLAGS="$(flag LDFLAGS) -Wl,-z,now" >/dev/null
cmake --build "$out/build"
DESTDIR=$root cmake --install "$out/build" --strip >/dev/null

doc=$root/usr/share/doc/molvark
install -m 644 packaging/deb/copyright "$doc/copyright"
{
    printf 'molvark (%s) unstable; urgency=medium\n\n  * %s\n\n' "$version" "The changes stand in CHANGELOG.md.gz beside this file."
    printf ' -- The Molvark developers <molvark@molvark.example>  %s\n' "$(date -u -R -d "@$SOURCE_DATE_EPOCH")"
} >"$doc/changelog"
install -m 644 CHANGELOG.md "$doc/CHANGELOG.md"
gzip -9n "$doc/changelog" "$doc/CHANGELOG.md" "$root"/usr/share/man/man1/*.1
find "$root" -type d -exec chmod 755 {} +

# What the programs are linked with is found by itself. The database driver is loaded by name.
mkdir -p "$out/debian"
: >"$out/debian/control"
libraries=$(cd "$out" && dpkg-shlibdeps -O "$root"/usr/bin/* "$root"/usr/lib/*/molvark/*.so | sed -n 's/^shlibs:Depends=//p')
mkdir "$root/DEBIAN"
sed -e "s/@VERSION@/$version/" -e "s/@ARCHITECTURE@/$architecture/" \
    -e "s/@SIZE@/$(du -sk --exclude=DEBIAN "$root" | cut -f1)/" \
    -e "s/@DEPENDS@/$libraries, libqt6sql6-sqlite/" packaging/deb/control.in >"$root/DEBIAN/control"
(cd "$root" && find usr -type f -print0 | sort -z | xargs -0 md5sum) >"$root/DEBIAN/md5sums"
find "$root" -newermt "@$SOURCE_DATE_EPOCH" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +
dpkg-deb --root-owner-group -Zxz --build "$root" "$package" >/dev/null

lintian --fail-on error,warning --allow-root "$package"
echo "$package, $(stat -c %s "$package") bytes, without a complaint of lintian's"
