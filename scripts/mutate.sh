#!/usr/bin/env bash
# Mutation check of the core: plants one small fault at a time in src/data,
# src/map, src/analysis and src/interact (a floor for a round, < for <=, + 1
# for - 1, a constant off by one, a dropped clamp), rebuilds and runs the
# tests, and prints the share of mutants the tests kill and the survivors.
#
#   scripts/mutate.sh                    # 150 mutants, seed 1
#   scripts/mutate.sh --count 40 --seed 7
#   scripts/mutate.sh --list             # the sample, without running it
#   scripts/mutate.sh --only Influence   # mutants of one file
#
# The build in build-mutate/build has the core as a shared library and no
# benchmarks, so that a mutant costs one compile and one link; the window tests
# run too, since they drive the core the way a player does. Its
# bounds checks (libstdc++ and Qt assertions) stand in for the sanitizer build
# of scripts/test.sh: a mutant that reads one past the end fails there too.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
export QT_QPA_PLATFORM=offscreen
# The mutants are planted in a copy of the tree (build-mutate/tree), so that
# the working tree is never touched and work can go on beside a run. tar keeps
# the files' times, so an unchanged file is not compiled again.
tree=build-mutate/tree
rm -rf "$tree" && mkdir -p "$tree"
tar -c --exclude='./build*' --exclude=./.git . | tar -x -C "$tree"
cmake -S "$tree" -B build-mutate/build -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVELTRO_SHARED_CORE=ON \
  -DCMAKE_CXX_FLAGS="-D_GLIBCXX_ASSERTIONS -DQT_FORCE_ASSERTS" \
  -DCMAKE_LINK_DEPENDS_NO_SHARED=ON -DVELTRO_BENCHMARKS=OFF >/dev/null
cmake --build build-mutate/build -j"$(nproc)" >/dev/null
exec python3 scripts/mutants.py --root "$tree" --build build-mutate/build "$@"
