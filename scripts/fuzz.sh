#!/usr/bin/env bash
# Fuzzes the readers of the game's files with libFuzzer under AddressSanitizer
# and UBSan: builds the harnesses of fuzz/ with clang in build-fuzz, makes the
# seed corpora from the real maps and the sample game, and runs each harness
# named (map, report, annotation, settings; default all, one after another)
# until it has done --runs executions or --time seconds, whichever comes first.
#
#   scripts/fuzz.sh [--runs N] [--time SECONDS] [--build-only] [HARNESS...]
#
# New coverage is kept in build-fuzz/corpus/HARNESS/work, so a second run goes
# on where the first stopped; crashes, timeouts and out-of-memory inputs land
# in build-fuzz/artifacts/HARNESS/, the log in build-fuzz/logs/HARNESS.log.
# A fixed crash's minimised input belongs in tests/data/regression/HARNESS/,
# which the test suite replays on every run.
set -euo pipefail
cd "$(dirname "$0")/.."

runs=10000000
seconds=7200
build_only=0
harnesses=()
while [ $# -gt 0 ]; do
  case "$1" in
    --runs) runs="$2"; shift 2 ;;
    --time) seconds="$2"; shift 2 ;;
    --build-only) build_only=1; shift ;;
    map|report|annotation|settings) harnesses+=("$1"); shift ;;
    all) harnesses+=(map report annotation settings); shift ;;
    *) echo "usage: scripts/fuzz.sh [--runs N] [--time SECONDS] [--build-only] [map|report|annotation|settings|all]..." >&2
       exit 2 ;;
  esac
done
[ ${#harnesses[@]} -eq 0 ] && harnesses=(map report annotation settings)

# clang and libFuzzer (in compiler-rt) from Debian, beside the usual build deps.
scripts/install-deps.sh
missing=()
for p in clang-14 libclang-rt-14-dev; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  sudo=""
  [ "$(id -u)" -ne 0 ] && sudo="sudo"
  echo "Installing: ${missing[*]}"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi

out=build-fuzz
CC=clang-14 CXX=clang++-14 cmake -S . -B "$out" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVELTRO_FUZZ=ON \
  -DVELTRO_DESKTOP=OFF -DVELTRO_BENCHMARKS=OFF >/dev/null
cmake --build "$out" -j2 --target veltro-gamegen "${harnesses[@]/#/fuzz-}"
[ "$build_only" -eq 1 ] && exit 0

# A whole game as the report harness takes it: a line of choices, then the
# map and the reports separated by "~~~~" lines.
game_input() { # CHOICES MAP REPORT...
  local choices="$1" first=1 f
  shift
  printf '%s\n' "$choices"
  for f in "$@"; do
    [ $first -eq 1 ] || printf '\n~~~~\n'
    first=0
    if [ "$f" = "-" ]; then printf -- '-'; else cat "$f"; fi
  done
}

make_seeds() { # HARNESS DIR
  local h="$1" dir="$2" games="$out/games/$1"
  mkdir -p "$dir"
  case "$h" in
    map)
      cp tests/data/maps/*.map samples/MARCHES.map "$dir"/ ;;
    report)
      rm -rf "$games" && mkdir -p "$games"
      "$out"/tools/veltro-gamegen --map tests/data/maps/tiny-sparse-00001.map --out "$games" --base sparse \
        --players 3 --seed 5 --year 2410 >/dev/null
      "$out"/tools/veltro-gamegen --map tests/data/maps/tiny-packed-00001.map --out "$games" --base packed \
        --players 6 --seed 7 --year 2420 >/dev/null
      "$out"/tools/veltro-gamegen --map tests/data/maps/tiny-packed-00001.map --out "$games" --base oldpacked \
        --players 4 --seed 9 --year 2425 --old-style >/dev/null
      game_input "year2431 r1=2431 r2=2428 r3=2430 r4=2430 r5=2428" samples/MARCHES.{map,P1,P2,P3,P4,P5} >"$dir/marches"
      game_input "own3 skip2" samples/MARCHES.{map,P1,P2,P3,P4,P5} >"$dir/marches-own3"
      game_input "year2410" "$games"/sparse.{map,P1,P2,P3} >"$dir/sparse"
      game_input "upper year2420 r2=2419" "$games"/packed.{map,P1,P2,P3,P4,P5,P6} >"$dir/packed"
      game_input "old year2425" "$games"/oldpacked.{map,PLA} >"$dir/oldpacked" ;;
    annotation)
      rm -rf "$games" && mkdir -p "$games"
      "$out"/tools/veltro-gamegen --map tests/data/maps/tiny-sparse-00001.map --out "$games" --base sparse \
        --players 3 --seed 5 --year 2410 --annotations >/dev/null
      cp samples/MARCHES.VMK "$dir/marches"
      cp "$games"/sparse.VMK "$dir/sparse" ;;
    settings)
      cp fuzz/corpus/settings/* "$dir"/ ;;
  esac
}

max_len() {
  case "$1" in
    map) echo 24576 ;;
    report) echo 65536 ;;
    *) echo 4096 ;;
  esac
}

for h in "${harnesses[@]}"; do
  seed="$out/corpus/$h/seed" work="$out/corpus/$h/work" artifacts="$out/artifacts/$h"
  rm -rf "$seed"
  make_seeds "$h" "$seed"
  mkdir -p "$work" "$artifacts/" "$out/logs" "tests/data/regression/$h"
  echo "== $h: up to $runs runs or $seconds s, log in $out/logs/$h.log"
  set +e
  ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
  LSAN_OPTIONS=suppressions="$PWD/fuzz/lsan.supp" \
    "$out/fuzz/fuzz-$h" -dict="fuzz/dict/$h.dict" -runs="$runs" -max_total_time="$seconds" \
    -max_len="$(max_len "$h")" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
    -artifact_prefix="$artifacts/" "$work" "$seed" "tests/data/regression/$h" >"$out/logs/$h.log" 2>&1 &
  pid=$!
  wait $pid
  status=$?
  set -e
  # The harness's scratch folder, left behind when it stopped on a finding.
  rm -rf "/dev/shm/veltro-fuzz-$pid"
  grep -E '^(stat::|Done|#[0-9]+ +DONE)' "$out/logs/$h.log" || true
  ls "$artifacts" | sed 's/^/   artefact: /'
  [ $status -eq 0 ] || echo "   $h stopped with status $status: see $out/logs/$h.log"
done
