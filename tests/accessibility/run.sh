#!/usr/bin/env bash
# Runs drive_sample.py against the desktop program on a display and an
# accessibility bus of its own: Xvfb, a D-Bus session and the AT-SPI bus.
# usage: run.sh VELTRO VELTRO_CLI SAMPLE_MAP
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
scratch=$(mktemp -d)

# Xvfb picks a free display itself and names it on the descriptor only once
# it accepts connections, so neither a display taken by another server nor a
# slow start can make the program miss it.
Xvfb -displayfd 3 -screen 0 1600x1000x24 -nolisten tcp 3>"$scratch/display" 2>"$scratch/xvfb.log" &
xvfb=$!
# The server removes its socket as it goes: wait for that, or the next run's
# server, given the same display number, could lose its socket to this one.
trap 'kill $xvfb 2>/dev/null; wait $xvfb 2>/dev/null; rm -rf "$scratch"' EXIT
for _ in $(seq 200); do
  [ -s "$scratch/display" ] && break
  kill -0 $xvfb 2>/dev/null || { cat "$scratch/xvfb.log" >&2; exit 1; }
  sleep 0.05
done
[ -s "$scratch/display" ] || { echo "Xvfb did not start" >&2; exit 1; }

# The program's settings (saved race colours) start empty, away from the user's.
export DISPLAY=":$(cat "$scratch/display")" QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_QPA_PLATFORM=xcb \
  XDG_CONFIG_HOME="$scratch/config"
# The program must find the accessibility bus up when it starts, or it never
# joins it: wait until the bus answers, not for a guessed time.
dbus-run-session -- bash -c '
  set -euo pipefail
  /usr/libexec/at-spi-bus-launcher --launch-immediately &
  for _ in $(seq 200); do
    dbus-send --session --print-reply --dest=org.a11y.Bus /org/a11y/bus \
      org.a11y.Bus.GetAddress >/dev/null 2>&1 && break
    sleep 0.05
  done
  dbus-send --session --print-reply --dest=org.a11y.Bus /org/a11y/bus \
    org.a11y.Bus.GetAddress >/dev/null || { echo "no accessibility bus" >&2; exit 1; }
  /usr/bin/python3 "$0" "$@"' "$here/drive_sample.py" "$@"
