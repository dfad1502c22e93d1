#!/usr/bin/env bash
# Makes the manual's pictures anew: the demo's walk, without a display of one's own.
set -euo pipefail
cd "$(dirname "$0")/.."
env -u DISPLAY scripts/demo.sh
cp build/tour/*.png docs/pictures/
