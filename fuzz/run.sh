#!/usr/bin/env bash
# Builds the fuzz targets with clang and libFuzzer and runs each in turn.
#   fuzz/run.sh [SECONDS] [RUNS] [TARGET...]
# Each target runs until SECONDS pass (default 30) or, when RUNS is given and
# not 0, until that many inputs have been tried. The corpus each run grows is
# kept in build-fuzz/corpus and seeds the next run; it starts from the shipped
# files, fuzz/seeds and every input in fuzz/regressions. A crasher lands in
# build-fuzz/findings/TARGET: copy it to fuzz/regressions/TARGET so the test
# suite keeps checking it. Prints one summary line per target; exits non-zero
# when any target found something.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
top=$(dirname "$here")
out=$top/build-fuzz
seconds=${1:-30}
runs=${2:-0}
shift $(( $# > 2 ? 2 : $# ))
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(questions config rules kept)

CC=clang CXX=clang++ cmake -S "$here" -B "$out" -DCMAKE_BUILD_TYPE=RelWithDebInfo > /dev/null
cmake --build "$out" -j"$(nproc 2>/dev/null || echo 2)" > /dev/null

# Seeds: the shipped files the readers meet in real use, the test suite's
# damaged files, and our own.
seed() {  # seed TARGET FILE [PREFIX]
  local dir=$out/corpus/$1 name
  name=$(basename "$2")
  mkdir -p "$dir"
  if [ -n "${3:-}" ]; then printf "$3" | cat - "$2" > "$dir/$3-$name"; else cp "$2" "$dir/$name"; fi
}
# The shipped question files in pieces of 20 lines: small inputs mutate faster.
pieces=$out/pieces
rm -rf "$pieces" && mkdir -p "$pieces"
split -l 20 "$top/assets/TandrelLines.txt" "$pieces/lines-"
split -l 20 "$top/assets/TandrelPhrases.txt" "$pieces/phrases-"
for f in "$pieces"/lines-*; do seed questions "$f" '\x00'; done
for f in "$pieces"/phrases-*; do seed questions "$f" '\x01'; done
seed rules "$top/assets/HowToPlayTandrel.rtf"
# The damaged and foreign files of the test suite's catalogue.
for f in "$top"/tests/badinput/*.txt; do
  seed questions "$f" '\x00'; seed questions "$f" '\x01'; seed config "$f"; seed rules "$f"
done
for t in questions config rules kept; do
  for f in "$here/seeds/$t"/* "$here/regressions/$t"/*; do [ -f "$f" ] && seed "$t" "$f"; done
done

declare -A max_len=([questions]=2048 [config]=4096 [rules]=65536 [kept]=4096)
status=0
printf '%-10s %12s %8s %8s %8s %8s %s\n' target runs seconds cov ft corpus findings
for t in "${targets[@]}"; do
  mkdir -p "$out/findings/$t" "$out/logs"
  log=$out/logs/$t.log
  set +e
  QT_QPA_PLATFORM=offscreen ASAN_OPTIONS=detect_leaks=1 \
    "$out/fuzz_$t" "$out/corpus/$t" -dict="$here/dicts/$t.dict" -max_len="${max_len[$t]}" \
    -timeout=5 -rss_limit_mb=2048 -max_total_time="$seconds" -runs="$([ "$runs" -gt 0 ] && echo "$runs" || echo -1)" \
    -print_final_stats=1 -artifact_prefix="$out/findings/$t/" > "$log" 2>&1
  rc=$?
  set -e
  done_line=$(grep -E '^#[0-9]+\s+DONE' "$log" | tail -1 || true)
  last_line=$(grep -E '^#[0-9]+\s' "$log" | tail -1 || true)
  total_runs=$(grep -E '^stat::number_of_executed_units' "$log" | awk '{print $2}' || true)
  took=$(grep -E '^Done [0-9]+ runs in' "$log" | awk '{print $5}' || true)
  cov=$(sed -nE 's/.* cov: ([0-9]+).*/\1/p' <<<"${done_line:-$last_line}")
  ft=$(sed -nE 's/.* ft: ([0-9]+).*/\1/p' <<<"${done_line:-$last_line}")
  corpus=$(sed -nE 's/.* corp: ([0-9]+).*/\1/p' <<<"${done_line:-$last_line}")
  found=$(find "$out/findings/$t" -type f | wc -l)
  printf '%-10s %12s %8s %8s %8s %8s %s\n' "$t" "${total_runs:-?}" "${took:-?}" "${cov:-?}" "${ft:-?}" "${corpus:-?}" "$found"
  if [ $rc -ne 0 ] || [ "$found" -gt 0 ]; then
    status=1
    echo "  $t stopped with $rc; see $log" >&2
    grep -E 'ERROR|check failed|SUMMARY' "$log" | head -5 >&2 || true
  fi
done
exit $status
