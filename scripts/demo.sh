#!/usr/bin/env bash
# Shows the program connected to a practice server. Without a display the program walks through its window by itself,
# and the pictures of the walk lie in build/tour/.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh

port=28960
password=practice
top=$PWD
scratch=$(mktemp -d)
server=

cleanup() {
    if [ -n "$server" ]; then
        kill "$server" 2>/dev/null || true
        wait "$server" 2>/dev/null || true
    fi
    rm -rf "$scratch"
}
trap cleanup EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

has_display() { [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; }

start_practice_server() {
    build/release/practice/molvark-practice --port "$port" --password "$password" >"$scratch/server.log" 2>&1 &
    server=$!
    until [ -s "$scratch/server.log" ]; do
        kill -0 "$server" 2>/dev/null || break
        sleep 0.1
    done
    if ! kill -0 "$server" 2>/dev/null; then
        cat "$scratch/server.log" >&2
        echo "The practice server could not be started on port $port." >&2
        exit 1
    fi
    head -n 1 "$scratch/server.log"
}

write_settings() {
    printf '[options]\r\nautoconnect=1\r\nautoconnectserv=127.0.0.1\r\nautoconnectport=%s\r\nautoconnectrcon=%s\r\n' \
        "$port" "$password" >"$1/molvark.ini"
}

install_packages "${build_packages[@]}" "${font_packages[@]}"
has_display || install_packages "${display_packages[@]}"
build release
start_practice_server
mkdir "$scratch/program"
write_settings "$scratch/program"
cd "$scratch/program"
if has_display; then
    "$top/build/release/src/app/molvark"
else
    mkdir -p "$top/build/tour"
    rm -f "$top"/build/tour/*.png
    xvfb-run --auto-servernum --server-args='-screen 0 1280x900x24' \
        "$top/build/release/demo/molvark-tour" "$top/build/tour"
fi
