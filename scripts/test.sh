#!/usr/bin/env bash
# Builds everything and runs every test, then runs the tests again in an
# AddressSanitizer + UndefinedBehaviorSanitizer build.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh

jobs=$(nproc)
export QT_QPA_PLATFORM=offscreen

cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"$jobs"
ctest --test-dir build --output-on-failure -j"$jobs"

cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=Debug -DVELTRO_SANITIZE=ON -DVELTRO_BENCHMARKS=OFF >/dev/null
cmake --build build-asan -j"$jobs"
ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=print_stacktrace=1 \
  ctest --test-dir build-asan --output-on-failure -j"$jobs"
