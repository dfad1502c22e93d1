#!/usr/bin/env bash
# Tries the Debian package where nothing else is: a bare Debian 12 in a folder of its own, as root. Installs it there, walks
# through the installed program with real keys, connected to the installed practice server, asks the server by molvark-cli,
# removes the package and compares the files with those from before. Pictures of the walk come to build/deb/walk/.
set -euo pipefail
cd "$(dirname "$0")/../.."
. scripts/lib/packages.sh

fail() {
    echo "$1" >&2
    exit 1
}
[ "$(id -u)" -eq 0 ] || fail "A bare Debian can only be entered by root: run this script with sudo."
packages=(build/deb/molvark_*.deb)
[ -f "${packages[0]}" ] || fail "There is no package in build/deb: packaging/deb/build.sh makes it."
[ ${#packages[@]} -eq 1 ] || fail "There are several packages in build/deb: leave one."

install_packages mmdebstrap
bare=$(mktemp -d)
trap 'rm -rf --one-file-system "$bare"' EXIT
mkdir "$bare/root"
# What the package needs and what presses the keys is there before, so that what differs afterwards is the package's doing.
needed=$(dpkg-deb -f "${packages[0]}" Depends | tr ',' '\n' | sed 's/ *(.*//; s/|.*//; s/^ *//' | paste -sd,)
mmdebstrap --mode=root --variant=apt --quiet --include="$needed,xvfb,xauth,openbox,xdotool,imagemagick,fonts-dejavu-core" \
    bookworm "$bare/root"
cp "${packages[0]}" "$bare/root/tmp/molvark.deb"
cp packaging/deb/walk.sh "$bare/root/tmp/walk.sh"

# files: all that is there and what is in it, but for what dpkg keeps of every package that has ever come and gone.
files() {
    (cd "$bare/root" && find . -xdev \( -path ./proc -o -path ./tmp -o -path ./var/log -o -path ./var/cache \) -prune -o \
        ! -path './var/lib/dpkg/*-old' ! -path ./var/lib/dpkg/triggers/Lock \
        \( -type f ! -path ./var/lib/dpkg/status -exec md5sum {} + -o -printf '%y %l %p\n' \) | sort)
}
files >"$bare/before"
chroot "$bare/root" dpkg -i /tmp/molvark.deb >/dev/null
files >"$bare/installed"
chroot "$bare/root" env -i PATH=/usr/bin:/bin HOME=/tmp LC_ALL=C.UTF-8 bash /tmp/walk.sh
mkdir -p build/deb/walk
cp "$bare"/root/tmp/walk/*.png build/deb/walk/
chroot "$bare/root" dpkg --purge molvark >/dev/null
files >"$bare/after"
diff "$bare/before" "$bare/after" || fail "Removing the package has left these files."
echo "Installed $(comm -13 "$bare/before" "$bare/installed" | wc -l) files and folders, walked through, removed without a trace."
