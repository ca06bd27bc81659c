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
echo "No display: exporting the sample game instead (samples/MARCHES.json)." >&2
build/src/cli/veltro-cli export samples/MARCHES.map --year 2431 -o samples/MARCHES.json
build/src/cli/veltro-cli render samples/MARCHES.map --year 2431 --layers borders,universe,owned -o samples/MARCHES.png
echo "Wrote samples/MARCHES.json and samples/MARCHES.png" >&2
