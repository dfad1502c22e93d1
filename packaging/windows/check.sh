#!/usr/bin/env bash
# Tries the programs for Windows under Wine: the test programs, then the program itself and its tour against the practice
# server, with pictures in build/windows/pictures/. Arguments: the names of tests; all when none is named.
# Environment: as for build.sh.
# shellcheck disable=SC2317 # cleanup and what is waited for are called by name
set -euo pipefail
cd "$(dirname "$0")/../.."
. scripts/lib/packages.sh
. packaging/windows/qt.sh

top=$PWD
built=$top/build/windows
pictures=$built/pictures
scratch=$(mktemp -d)
export WINEPREFIX=$scratch/wine WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
children=()

cleanup() {
    trap - EXIT HUP INT TERM
    [ ! -d "$WINEPREFIX" ] || wineserver -k -w 2>/dev/null || true
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

fail() {
    echo "$1" >&2
    exit 1
}

# wait_until SECONDS WHAT COMMAND...: until the command succeeds.
wait_until() {
    local deadline=$((SECONDS + $1)) what=$2
    shift 2
    until "$@"; do
        [ "$SECONDS" -lt "$deadline" ] || fail "Waited in vain: $what."
        sleep 0.2
    done
}

start_display() {
    Xvfb -displayfd 1 -screen 0 1280x900x24 -nolisten tcp >"$scratch/display" 2>/dev/null &
    children+=($!)
    wait_until 10 "a virtual display" test -s "$scratch/display"
    DISPLAY=:$(cat "$scratch/display")
    export DISPLAY
}

set_value() {
    wine reg add "HKCU\\$1" /v "$2" /d "$3" /f >/dev/null || fail "Wine could not be told its $2."
}

# A throw-away Windows 10 with a desktop that gives its windows title bars. Line edits stay blank without Wine's fonts,
# and Wine lacks the typewriter font of Windows.
start_wine() {
    timeout 300 wine wineboot -i >/dev/null 2>&1 || fail "Wine could not be set up."
    cp /usr/share/wine/fonts/* "$WINEPREFIX/drive_c/windows/Fonts/"
    timeout 60 wine winecfg -v win10 || fail "Wine could not be made a Windows 10."
    set_value Software\\Wine\\Fonts\\Replacements "Courier New" "DejaVu Sans Mono"
    set_value Software\\Wine\\Explorer Desktop Default
    set_value Software\\Wine\\Explorer\\Desktops Default 1280x900
    wineserver -k -w
}

run_tests() {
    local log=$built/check/Testing/Temporary/LastTest.log status=0 names
    names=$(IFS='|' && echo "$*")
    # The displayless platform looks for fonts in one folder.
    QT_QPA_FONTDIR=Z:/usr/share/fonts/truetype/dejavu ctest --test-dir "$built/check" --no-tests=error --parallel 2 \
        ${names:+-R "^($names)$"} || status=$?
    echo "Test functions under Wine: $(grep -E '^ok ' "$log" | grep -cvE '(init|cleanup)TestCase|# SKIP') passed," \
        "$(grep -cE '^ok .*# SKIP' "$log" || true) skipped, $(grep -cE '^not ok ' "$log" || true) failed"
    return $status
}

# A folder with a program and the settings with which it connects to the practice server by itself.
prepare() {
    mkdir "$scratch/$1"
    cp "$built/check/$2" "$scratch/$1/"
    cd "$scratch/$1"
    printf '%s\r\n' '[options]' autoconnect=1 autoconnectserv=127.0.0.1 autoconnectport=28960 autoconnectrcon=practice \
        savercon=1 savemessages=1 >molvark.ini
}

start_practice_server() {
    wine "$built/check/practice/molvark-practice.exe" --port 28960 --players 20 >"$scratch/server.log" 2>&1 &
    children+=($!)
    (wait_until 30 "the practice server" grep -q Listening "$scratch/server.log") || fail "$(cat "$scratch/server.log")"
}

shoot() {
    import -window root "$pictures/desktop-$1.png" || fail "No picture of the desktop could be taken."
}

# shows_else PICTURE OLDER: takes a picture that differs from the older one by more than a blinking cursor.
shows_else() {
    shoot "$1"
    local pixels status=0
    pixels=$(compare -metric AE "$pictures/desktop-$2.png" "$pictures/desktop-$1.png" null: 2>&1) || status=$?
    [ "$status" -le 1 ] || fail "Two pictures could not be compared: $pixels"
    awk -v pixels="$pixels" 'BEGIN { exit !(pixels > 1000) }'
}

# The progress window is closed about two seconds after the last answer: nothing has changed on the desktop for three.
settled() {
    if shows_else 0 before; then
        cp "$pictures/desktop-0.png" "$pictures/desktop-before.png"
        unchanged_since=$SECONDS
    fi
    [ $((SECONDS - unchanged_since)) -gt 3 ]
}

# Each tab must look different from the one before.
walk_tabs() {
    local tab
    xdotool mousemove 360 175 click 1 # a box of the first tab; the window is in the corner of the desktop
    wait_until 10 "the focus" shows_else 0 before
    for tab in 1 2 3 4 5 6 7 8; do
        xdotool key ctrl+Tab
        wait_until 10 "tab $tab" shows_else "$tab" $((tab - 1))
    done
}

# "Save current server Info" is the first item of the first menu.
save_server() {
    xdotool mousemove 20 33 click 1
    wait_until 10 "the menu" shows_else 9 8
    xdotool key Down Return
    wait_until 10 "the end of the menu" shows_else 10 9
}

run_program() {
    prepare program src/app/molvark.exe
    wine ./molvark.exe &
    local program=$! status=0
    children+=("$program")
    wait_until 60 "the last question of connecting" grep -qF "rcon fdir *.cfg" "$scratch/server.log"
    shoot before
    unchanged_since=$SECONDS
    wait_until 30 "the end of connecting" settled
    walk_tabs
    save_server
    rm "$pictures/desktop-before.png"
    wine taskkill /im molvark.exe >/dev/null # asks the window to close
    wait "$program" || status=$?
    [ "$status" -eq 0 ] || fail "molvark.exe ended with status $status."
    grep -qF "Server running game mode" molvark_rcon_*.log || fail "The RCON log is not there."
    grep -qF "Connected to server 127.0.0.1:28960" molvar_messages_*.log || fail "The message log is not there."
    grep -qF "server1=127.0.0.1" molvark.ini || fail "The saved server is not in the settings."
    echo "molvark.exe connected, walked its tabs, wrote its logs and its settings and ended with status 0."
    cd "$top"
}

run_tour() {
    prepare tour demo/molvark-tour.exe
    timeout 300 wine ./molvark-tour.exe "Z:${pictures//\//\\}" >"$scratch/tour.log" 2>&1 || {
        cat "$scratch/tour.log" >&2
        fail "The tour failed."
    }
    cd "$top"
}

install_packages "${windows_packages[@]}" "${font_packages[@]}" "${display_packages[@]}" wine wine64 fonts-wine xdotool \
    imagemagick
packaging/windows/build-qt.sh
build_for_windows check all -- -DBUILD_TESTING=ON \
    -DCMAKE_CROSSCOMPILING_EMULATOR="$top/packaging/windows/under-wine.sh"
rm -rf "$pictures"
mkdir -p "$pictures"
start_display
start_wine
tested=0
run_tests "$@" || tested=$?
start_practice_server
run_program
run_tour
echo "Pictures: $pictures"
exit "$tested"
