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
children=()

cleanup() {
    trap - EXIT HUP INT TERM
    for child in "${children[@]}"; do
        kill "$child" 2>/dev/null || true
    done
    wait
    rm -rf "$scratch"
}
trap cleanup EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

# wait_for CHILD FILE: until FILE has something in it; fails when the child has ended before.
wait_for() {
    until [ -s "$2" ]; do
        kill -0 "$1" 2>/dev/null || return 1
        sleep 0.1
    done
    kill -0 "$1" 2>/dev/null
}

start_practice_server() {
    build/demo/practice/molvark-practice --port "$port" --password "$password" --players 20 >"$scratch/server.log" 2>&1 &
    children+=($!)
    if ! wait_for $! "$scratch/server.log"; then
        cat "$scratch/server.log" >&2
        echo "The practice server could not be started on port $port." >&2
        exit 1
    fi
    head -n 1 "$scratch/server.log"
}

# Takes the first display number that is free.
start_display() {
    Xvfb -displayfd 1 -screen 0 1280x900x24 -nolisten tcp >"$scratch/display" 2>"$scratch/display.log" &
    children+=($!)
    if ! wait_for $! "$scratch/display"; then
        cat "$scratch/display.log" >&2
        echo "No virtual display could be started." >&2
        exit 1
    fi
    DISPLAY=:$(cat "$scratch/display")
    export DISPLAY
}

write_settings() {
    printf '[options]\r\nautoconnect=1\r\nautoconnectserv=127.0.0.1\r\nautoconnectport=%s\r\nautoconnectrcon=%s\r\n' \
        "$port" "$password" >molvark.ini
}

# In the background and waited for, so that a signal to this script is acted on at once.
run() {
    "$@" &
    children+=($!)
    wait $!
}

install_packages "${build_packages[@]}" "${font_packages[@]}"
if [ -n "${DISPLAY:-}" ]; then
    build demo molvark-practice molvark
else
    install_packages "${display_packages[@]}"
    build demo molvark-practice molvark-tour
fi
start_practice_server
mkdir "$scratch/program"
cd "$scratch/program"
write_settings
if [ -n "${DISPLAY:-}" ]; then
    run "$top/build/demo/src/app/molvark"
else
    start_display
    mkdir -p "$top/build/tour"
    rm -f "$top"/build/tour/*.png
    run "$top/build/demo/demo/molvark-tour" "$top/build/tour"
fi
