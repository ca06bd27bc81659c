#!/usr/bin/env bash
# Runs drive_sample.py against the desktop program on its own Xvfb, D-Bus
# session and AT-SPI bus; anything that cannot be set up fails the run.
# usage: run.sh VELTRO VELTRO_CLI SAMPLE_MAP
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
scratch=$(mktemp -d)

# Xvfb names a free display on descriptor 3 once it accepts connections. The
# trap waits for its socket to go, or the next run's server may lose it.
Xvfb -displayfd 3 -screen 0 1600x1000x24 -nolisten tcp 3>"$scratch/display" 2>"$scratch/xvfb.log" &
xvfb=$!
trap 'kill $xvfb 2>/dev/null; wait $xvfb 2>/dev/null; rm -rf "$scratch"' EXIT
for _ in $(seq 200); do
  [ -s "$scratch/display" ] || ! kill -0 $xvfb 2>/dev/null && break
  sleep 0.05
done
[ -s "$scratch/display" ] || { cat "$scratch/xvfb.log" >&2; echo "Xvfb did not start" >&2; exit 1; }

# Saved settings start empty, away from the user's.
export DISPLAY=":$(cat "$scratch/display")" QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_QPA_PLATFORM=xcb \
  XDG_CONFIG_HOME="$scratch/config"
# The program joins the accessibility bus only if the bus answers when it starts.
dbus-run-session -- bash -c '
  set -euo pipefail
  /usr/libexec/at-spi-bus-launcher --launch-immediately &
  bus() { dbus-send --session --print-reply --dest=org.a11y.Bus /org/a11y/bus org.a11y.Bus.GetAddress >/dev/null 2>&1; }
  for _ in $(seq 200); do bus && break; sleep 0.05; done
  bus || { echo "no accessibility bus" >&2; exit 1; }
  /usr/bin/python3 "$0" "$@"' "$here/drive_sample.py" "$@"
