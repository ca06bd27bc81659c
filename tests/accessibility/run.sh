#!/usr/bin/env bash
# Runs drive_sample.py against the desktop program on a display and an
# accessibility bus of its own: Xvfb, a D-Bus session and the AT-SPI bus.
# usage: run.sh VELTRO VELTRO_CLI SAMPLE_MAP
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_QPA_PLATFORM=xcb
exec xvfb-run -a -s "-screen 0 1600x1000x24" dbus-run-session -- bash -c '
  /usr/libexec/at-spi-bus-launcher --launch-immediately &
  sleep 1
  /usr/bin/python3 "$0" "$@"' "$here/drive_sample.py" "$@"
