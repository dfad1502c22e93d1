#!/usr/bin/env bash
# Renders the drawings (SVG) to what is compiled in (PNG, so that no reader of SVG is needed) and to the icon of the .exe.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/lib/packages.sh

install_packages librsvg2-bin imagemagick
for picture in up down delete; do
    rsvg-convert --width 64 --output "src/messages/pictures/$picture.png" "src/messages/pictures/$picture.svg"
done
rsvg-convert --width 180 --output src/mods/pictures/hob.png src/mods/pictures/hob.svg
rsvg-convert --width 128 --output packaging/molvark.png packaging/molvark.svg

sizes=$(mktemp -d)
trap 'rm -rf "$sizes"' EXIT
for size in 016 032 048 064 128 256; do
    rsvg-convert --width "$((10#$size))" --output "$sizes/$size.png" packaging/molvark.svg
done
convert "$sizes"/*.png packaging/molvark.ico
