#!/usr/bin/env bash
# Lets molvark-cli send a long script to a practice server that hears one command in half a second, and says how long it
# took. Fails when a command was lost, or came twice or out of its turn. Usage: pace.sh [LINES], 500 unless told otherwise.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh

lines=${1:-500}
install_packages "${build_packages[@]}"
build release molvark-cli molvark-practice

scratch=$(mktemp -d)
server=
trap '[ -z "$server" ] || kill "$server"; rm -rf "$scratch"' EXIT
build/release/practice/molvark-practice --port 0 --engine cod2 >"$scratch/log" &
server=$!
until grep -q Listening "$scratch/log"; do
    kill -0 "$server"
    sleep 0.1
done
port=$(sed -n 's/.* port \([0-9]*\),.*/\1/p' "$scratch/log")

for ((line = 1; line <= lines; line++)); do
    echo "say line $line"
done >"$scratch/script"
begun=$(date +%s.%N)
MOLVARK_RCON_PASSWORD=practice build/release/cli/molvark-cli --server "127.0.0.1:$port" --script "$scratch/script"
ended=$(date +%s.%N)

sed -n 's/.*: rcon \(say line .*\)/\1/p' "$scratch/log" >"$scratch/heard"
cmp "$scratch/script" "$scratch/heard" || {
    echo "Of $lines commands the server has heard $(wc -l <"$scratch/heard"), or others." >&2
    exit 1
}
dropped=$(grep -c "not answered" "$scratch/log" || true)
awk -v lines="$lines" -v begun="$begun" -v ended="$ended" -v dropped="$dropped" 'BEGIN {
    took = ended - begun
    printf "%d commands in %.1f s: none lost, %d dropped. ", lines, took, dropped
    printf "The pace of 750 ms allows %.2f s, the limit of the server %.1f s.\n", (lines - 1) * 0.75, (lines - 1) * 0.5
}'
[ "$dropped" -eq 0 ]
