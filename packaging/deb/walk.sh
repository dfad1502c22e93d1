#!/usr/bin/env bash
# Walks through the installed programs with real keys; run by try.sh where the package is installed.
set -euo pipefail

fail() {
    echo "$1" >&2
    exit 1
}
walk=/tmp/walk
mkdir -p "$walk/program"
cd "$walk/program"
trap 'kill $(jobs -p) 2>/dev/null || true; wait' EXIT

# eventually COMMAND...: until it succeeds, a minute at most.
eventually() {
    local try
    for try in {1..600}; do
        "$@" >/dev/null 2>&1 && return 0
        sleep 0.1
    done
    fail "This never came true: $*"
}

molvark-practice --port 28960 --password practice --players 20 >"$walk/server.log" &
eventually grep -q . "$walk/server.log"
MOLVARK_RCON_PASSWORD=practice molvark-cli --server 127.0.0.1:28960 status >"$walk/status"
grep -q '^map: ' "$walk/status" || fail "molvark-cli has shown no status."

Xvfb :7 -screen 0 1280x1024x24 -nolisten tcp 2>/dev/null &
export DISPLAY=:7
eventually xdotool getmouselocation
openbox &
eventually xdotool get_num_desktops # the window manager is there
sleep 2
printf '[options]\r\nautoconnect=1\r\nautoconnectserv=127.0.0.1\r\nautoconnectport=28960\r\nautoconnectrcon=practice\r\n[book]\r\nkeep=true\r\n' \
    >molvark.ini
molvark &
program=$!
sleep 5
kill -0 "$program" || fail "The program has ended at once."
eventually xdotool search --onlyvisible --name Molvark
window=$(xdotool search --onlyvisible --name Molvark | head -n 1)
xdotool windowactivate --sync "$window"
sleep 5 # connecting takes its seconds
for tab in 1 2 3 4 5 6 7 8 9; do
    xdotool key --window "$window" "ctrl+$tab"
    sleep 0.5
    xdotool key F5
    sleep 4
    import -window root "$walk/tab-$tab.png"
done
xdotool key ctrl+q
for try in {1..100}; do
    kill -0 "$program" 2>/dev/null || break
    sleep 0.1
done
! kill -0 "$program" 2>/dev/null || fail "The program did not end when it was asked to."
wait "$program" || fail "The program ended with $?."
for asked in 'rcon fdir \*\.cfg' 'rcon dvarlist sv_\*'; do # when it connects, and when F5 reads a page
    grep -q "$asked" "$walk/server.log" || fail "The practice server was never asked \"$asked\"."
done
[ -s molvark-players.db ] || fail "No player book was begun."
for file in /usr/share/man/man1/molvark{,-cli,-practice}.1.gz /usr/share/applications/molvark.desktop /usr/share/doc/molvark/manual.html \
    /usr/share/metainfo/example.molvark.Molvark.metainfo.xml /usr/share/icons/hicolor/scalable/apps/molvark.svg \
    /usr/share/bash-completion/completions/molvark-cli; do
    [ -s "$file" ] || fail "$file is not installed."
done
