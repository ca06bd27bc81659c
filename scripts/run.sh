#!/usr/bin/env bash
# Builds the programs and opens the bundled sample game in the desktop
# program (the file selection opens on it: press "Load && Generate Data").
# Without a display, exports the sample game with veltro-cli instead.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh

cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"$(nproc)"

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec build/src/app/veltro samples/MARCHES.map
fi
echo "No display: exporting and drawing the sample game instead." >&2
build/src/cli/veltro-cli export samples/MARCHES.map --year 2431 -o build/MARCHES.json
build/src/cli/veltro-cli render samples/MARCHES.map --year 2431 --layers borders,universe,owned -o build/MARCHES.png
build/src/cli/veltro-cli planet samples/MARCHES.map --year 2431 --at 102,194 -o build/MARCHES-planet.json
echo "Wrote build/MARCHES.json, build/MARCHES.png and build/MARCHES-planet.json" >&2
