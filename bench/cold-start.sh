#!/usr/bin/env bash
# The whole `veltro-cli export` process, as a host script pays for it once
# per game: start-up, loading, generation, writing and exit. A tiny game and
# the sixteen-race game on the huge real map side by side, ten runs each under
# `perf stat -r 10`, then the peak resident set of one run of each. Last,
# `render` of the huge game with every layer at 1000 x 1000 pixels, the same
# loading and a picture: what the picture costs over the export.
#
#   bench/cold-start.sh [BUILD_DIR] [-- EXTRA EXPORT OPTIONS]   (default: build)
#
# e.g. bench/cold-start.sh build -- --format csv
set -euo pipefail
cd "$(dirname "$0")/.."
build=build
if [ $# -gt 0 ] && [ "$1" != "--" ]; then
  build=$1
  shift
fi
[ "${1:-}" = "--" ] && shift
extra=("$@")
cli=$build/src/cli/veltro-cli
gamegen=$build/tools/veltro-gamegen
for program in "$cli" "$gamegen"; do
  [ -x "$program" ] || { echo "cold-start: $program is missing; build first" >&2; exit 1; }
done

# perf comes with Debian's linux-perf, the peak resident set with GNU time.
missing=()
command -v perf >/dev/null || missing+=(linux-perf)
[ -x /usr/bin/time ] || missing+=(time)
if [ ${#missing[@]} -gt 0 ]; then
  sudo=""
  [ "$(id -u)" -ne 0 ] && sudo="sudo"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
if ! perf stat -e task-clock true >/dev/null 2>&1; then
  echo "cold-start: perf cannot count here; as root, or after" >&2
  echo "  sudo sysctl kernel.perf_event_paranoid=2" >&2
  exit 1
fi

dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT

# Writes a game and prints the export arguments that load it with its
# reports' years, as the generator suggests them.
game() {
  "$gamegen" --map "tests/data/maps/$2" --out "$dir/$1" --base GAME --players "$3" --year 2431 --annotations \
    | sed -n 's/^Load with: veltro-cli export //p'
}
read -r -a tiny <<<"$(game tiny tiny-sparse-00001.map 2)"
read -r -a huge <<<"$(game huge huge-packed-00001.map 16)"

printf '%-5s %8s %15s %22s %12s %12s\n' game planets "task-clock ms" "elapsed ms" "page faults" "max RSS MB"
declare -A clock elapsed
for name in tiny huge; do
  declare -n args=$name
  out=$dir/$name.out
  "$cli" export "${args[@]}" "${extra[@]}" -o "$out"
  planets=$("$cli" export "${args[@]}" | sed -n 's/^    "PlanetCount": \([0-9]*\),$/\1/p')
  stat=$(LC_ALL=C perf stat -r 10 -e task-clock,page-faults -- "$cli" export "${args[@]}" "${extra[@]}" -o "$out" 2>&1)
  clock[$name]=$(awk '/task-clock/ {print $1}' <<<"$stat")
  faults=$(awk '/page-faults/ {print $1}' <<<"$stat")
  read -r secs spread < <(awk '/time elapsed/ {print $1, $3}' <<<"$stat")
  elapsed[$name]=$(awk -v s="$secs" 'BEGIN {printf "%.1f", s * 1000}')
  rss=$(/usr/bin/time -f '%M' "$cli" export "${args[@]}" "${extra[@]}" -o "$out" 2>&1 >/dev/null | tail -n 1)
  printf '%-5s %8s %15s %22s %12s %12s\n' "$name" "$planets" "${clock[$name]}" \
    "$(awk -v e="${elapsed[$name]}" -v s="$spread" 'BEGIN {printf "%s +- %.1f", e, s * 1000}')" \
    "$faults" "$(awk -v k="$rss" 'BEGIN {printf "%.1f", k / 1024}')"
done
awk -v c="${clock[huge]}" -v d="${clock[tiny]}" -v e="${elapsed[huge]}" -v f="${elapsed[tiny]}" \
  'BEGIN {printf "huge - tiny: %.1f ms task-clock, %.1f ms elapsed\n", c - d, e - f}'

layers=scanned,borders,territory,universe,hab,owned,attack,growth,vmk
stat=$(LC_ALL=C perf stat -r 10 -e task-clock -- "$cli" render "${huge[@]}" --layers "$layers" -o "$dir/huge.png" 2>&1)
render_clock=$(awk '/task-clock/ {print $1}' <<<"$stat")
render_elapsed=$(awk '/time elapsed/ {printf "%.1f", $1 * 1000}' <<<"$stat")
awk -v c="$render_clock" -v d="${clock[huge]}" -v e="$render_elapsed" -v f="${elapsed[huge]}" \
  'BEGIN {printf "huge render, every layer at 1000 px: %.2f ms task-clock, %.1f ms elapsed;" \
                 " over export: %.1f ms task-clock, %.1f ms elapsed\n", c, e, c - d, e - f}'
