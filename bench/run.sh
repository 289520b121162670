#!/usr/bin/env bash
# Runs Tandrel's benchmarks and prints their figures.
#   bench/run.sh [--literal]   (--literal also times the plain quadratic reader: slow)
#   bench/run.sh --no-drift    skips the two-minute countdown
# Window figures use the display in DISPLAY, else a private Xvfb when it is
# installed, else Qt's offscreen platform.
set -euo pipefail
cd "$(dirname "$0")/.."
drift=yes
deck_args=()
for a in "$@"; do
  case "$a" in
    --no-drift) drift=no ;;
    *) deck_args+=("$a") ;;
  esac
done
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo > /dev/null
cmake --build build -j"$(nproc)" --target bench_decks bench_startup bench_screens program_files > /dev/null
out=bench/out
mkdir -p "$out"
bin=build/bin/bench_decks
"$bin" generate "$out"
echo "== Question files: load + shuffle against read + split (best of 11, taken in turn)"
"$bin" time "$out" "${deck_args[@]}"
echo "== Peak memory and the time of one run in a fresh process"
for f in TandrelLines.txt TandrelPhrases.txt; do
  "$bin" peak read "$out/$f"
  "$bin" peak load "$out/$f"
done
echo "== Files built against the repeat check (6 MB each): load + shuffle against read + split (best of 3)"
"$bin" families "$out"
echo "== Large files: a 50 MB and a 200 MB match file of plain lines, and 50 MB of long two-letter phrases"
awk 'BEGIN { for (i = 0; i < 2100000; i++) printf "Question %d has a Blank\r\n", i }' > "$out/big50-Lines.txt"
awk 'BEGIN { for (i = 0; i < 8400000; i++) printf "Question %d has a Blank\r\n", i }' > "$out/big200-Lines.txt"
awk 'BEGIN { srand(3); for (i = 0; i < 175000; i++) { s = ""; for (k = 0; k < 290; k++) s = s (rand() < 0.5 ? "a" : "b"); printf "%s Blank\r\n", s } }' > "$out/big50-long-Phrases.txt"
for f in big50-Lines.txt big200-Lines.txt big50-long-Phrases.txt; do
  /usr/bin/time -f "  %e s" "$bin" peak load "$out/$f"
done

if [ -z "${DISPLAY:-}" ]; then
  if command -v Xvfb > /dev/null; then
    # Two screens, so the audience screen has a display of its own.
    Xvfb :93 -screen 0 1280x800x24 -screen 1 1920x1080x24 > /dev/null 2>&1 &
    xvfb=$!
    trap 'kill $xvfb 2> /dev/null' EXIT
    export DISPLAY=:93
    sleep 1
  else
    export QT_QPA_PLATFORM=offscreen
  fi
fi
echo "== Start-up: process start to splash and game window shown, against a bare Qt window"
build/bin/bench_startup compare 9
if [ "$drift" = yes ]; then
  echo "== Countdown drift (two minutes)"
  build/bin/bench_startup drift 120
fi
echo "== Next to the new question painted on the host's window and the audience screen"
next="$out/next"
rm -rf "$next" && mkdir -p "$next"
cp build/bin/bench_screens "$next/"
# Phrases of 280 characters or so, each its own (a number at both ends).
awk 'BEGIN { for (i = 0; i < 2000; i++) { s = "Phrase " i " asks:"; while (length(s) < 220) s = s " the quick brown fox jumps over the lazy dog"; printf "%s and Blank ends %d.\r\n", s, i } }' > "$next/TandrelPhrases.txt"
# In turn, so the machine's state weighs on both alike.
for run in 1 2; do
  (cd "$next" && XDG_DATA_HOME="$PWD/data" ./bench_screens 1000)
  (cd "$next" && ./bench_screens 1000 --no-journal)
done
echo "== Undo: the heap of 1,000 steps"
build/bin/bench_screens undo
echo "== Legibility of the audience screen at 1920x1080 (capitals over the screen's height)"
legible="$out/legible"
rm -rf "$legible" && mkdir -p "$legible"
cp build/bin/bench_screens assets/TandrelLines.txt "$legible/"
# Phrases of 300 characters once shown (the word Blank becomes a longer line).
awk 'BEGIN { for (i = 0; i < 50; i++) { s = "Phrase " i " asks:"; while (length(s) < 280) s = s " the quick brown fox jumps over the lazy dog"; printf "%s and Blank ends.\r\n", substr(s, 1, 280) } }' > "$legible/TandrelPhrases.txt"
(cd "$legible" && ./bench_screens legibility)
