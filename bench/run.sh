#!/usr/bin/env bash
# Runs Tandrel's benchmarks and prints their figures.
#   bench/run.sh [--literal]   (--literal also times the plain quadratic reader: slow)
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo > /dev/null
cmake --build build -j"$(nproc)" --target bench_decks > /dev/null
out=bench/out
mkdir -p "$out"
bin=build/bin/bench_decks
"$bin" generate "$out"
echo "== Question files: load + shuffle against read + split (best of 5)"
"$bin" time "$out" "$@"
echo "== Peak memory (separate processes)"
for f in TandrelLines.txt TandrelPhrases.txt; do
  "$bin" peak read "$out/$f"
  "$bin" peak load "$out/$f"
done
