#!/usr/bin/env bash
# Rules of the house that a compiler does not check. Usage: check_sources.sh SOURCE_DIRECTORY
set -u
cd "$1" || exit 2
status=0

# none WHAT PATTERN PLACE...: complains about every line in PLACE that matches PATTERN.
none() {
    local what=$1 pattern=$2 found
    shift 2
    if found=$(grep -rnE --include='*.cpp' --include='*.h' "$pattern" "$@"); then
        printf '%s:\n%s\n' "$what" "$found"
        status=1
    fi
}

none "A fixed sleep in a test" 'qWait\(|qSleep|sleep_for|QThread::(m|u)?sleep' tests
none "Only src/base may ask which system it runs on" 'Q_OS_|_WIN32|__linux__' \
    cli $(find src -mindepth 1 -maxdepth 1 -type d ! -name base)
none "Only the UDP client includes sockets" '#include <(QUdpSocket|QAbstractSocket|QNetworkDatagram)>' \
    $(find src -name '*.cpp' ! -name udp_client.cpp) $(find src -name '*.h')
none "No module prefix in an include" '#include <Qt(Core|Gui|Widgets|Network)/' src cli practice demo bench fuzz

# Includes run downwards only: each room with what it must not reach.
pages='weapons|players|messages|mods|ledger|book|timetable'
none "src reaches up" '#include "(cli|practice|demo)/' src
none "base reaches up" "#include \"(settings|output|rcon|serverconfig|$pages|app)/" src/base
none "settings or output reaches up" "#include \"(rcon|serverconfig|$pages|app)/" src/settings src/output
none "settings and output are apart" '#include "output/' src/settings
none "output and settings are apart" '#include "settings/' src/output
none "rcon reaches up" "#include \"(serverconfig|$pages|app)/" src/rcon
none "serverconfig reaches up" "#include \"($pages|app)/" src/serverconfig
for room in ${pages//|/ }; do
    others=$(tr '|' '\n' <<<"$pages" | grep -vx "$room" | paste -sd'|')
    none "$room reaches up or sideways" "#include \"($others|app)/" "src/$room"
done

for file in $(find src cli practice demo bench fuzz tests -name '*.cpp' -o -name '*.h'); do
    [ "$(head -n 1 "$file")" = '// SPDX-License-Identifier: MIT' ] || { echo "No licence line: $file"; status=1; }
done
exit $status
