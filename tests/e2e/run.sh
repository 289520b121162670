#!/usr/bin/env bash
# The whole program as a host starts it: from a folder of its own with
# question files, under a private X server. It waits for the main window,
# pages once with PageDown, quits with Ctrl+Q answering the exit question
# with Yes (the default button), and reads the log the run left behind.
#   run.sh PROGRAM_DIR
set -euo pipefail
program_dir=$1

if [ -z "${TANDREL_E2E_INNER:-}" ]; then
  work=$(mktemp -d)
  trap 'rm -rf "$work"' EXIT
  cp "$program_dir/Tandrel" "$work/"
  printf '# Lines written by the end-to-end test\r\nChristmas Blank\r\nBlank Pole\r\nShoe Blank\r\n' \
    > "$work/TandrelLines.txt"
  printf 'Paul wore a Blank suit to the wedding.\r\nHis Blank makes me laugh.\r\n' > "$work/TandrelPhrases.txt"
  # The first free display from a random start: two suites started together
  # would otherwise race for the same one. -noreset: a server whose last
  # client leaves starts over and, meanwhile, refuses the next one (the game
  # failed to connect now and then with two suites at once).
  TANDREL_E2E_INNER=1 TANDREL_E2E_WORK="$work" \
    xvfb-run -n $((100 + RANDOM % 800)) -a -s "-screen 0 1280x800x24 -noreset" bash "$0" "$program_dir"
  exit $?
fi

work=$TANDREL_E2E_WORK
export QT_QPA_PLATFORM=xcb
# The game is kept in the user's data folder: this run's own.
export XDG_DATA_HOME="$work/data"
"$work/Tandrel" > "$work/out.txt" 2>&1 &
pid=$!

fail() {
  echo "FAIL: $*" >&2
  echo "--- log ---" >&2; tr -d '\r' < "$work/LogInfo.txt" >&2 || true
  echo "--- output ---" >&2; cat "$work/out.txt" >&2 || true
  kill "$pid" 2>/dev/null || true
  exit 1
}

# The main window carries the program's name; the splash is "About Tandrel".
wid=""
for _ in $(seq 100); do
  wid=$(xdotool search --onlyvisible --name '^Tandrel$' 2>/dev/null | head -n1 || true)
  [ -n "$wid" ] && break
  kill -0 "$pid" 2>/dev/null || fail "the program ended before its main window came up"
  sleep 0.1
done
[ -n "$wid" ] || fail "no main window within 10 s"

xdotool windowfocus --sync "$wid"
xdotool key --clearmodifiers Next
sleep 0.3
xdotool key --clearmodifiers ctrl+q
# The exit question: Yes is its default button.
for _ in $(seq 50); do
  box=$(xdotool search --onlyvisible --name '^Exit Program\?$' 2>/dev/null | head -n1 || true)
  [ -n "$box" ] && break
  sleep 0.1
done
[ -n "$box" ] || fail "the exit question did not come"
xdotool windowfocus --sync "$box"
xdotool key --clearmodifiers Return

for _ in $(seq 100); do
  kill -0 "$pid" 2>/dev/null || break
  sleep 0.1
done
kill -0 "$pid" 2>/dev/null && fail "the program did not end after Yes"
wait "$pid" || fail "the program ended with status $?"

log=$(tr -d '\r' < "$work/LogInfo.txt" | sed -E 's/^.*[0-9]{2}  //')
expect_in_order=(
  "Application Name Tandrel Software Version"
  "Loading frmSplash"
  "Checking For Needed Registry Files"
  "File wmp.dll is registered..."
  "Loading Skinner..."
  "Loading Form frmTandrel"
  "Unloading Form frmSplash"
  "Unloading All Forms..."
)
from=0
for record in "${expect_in_order[@]}"; do
  line=$(printf '%s\n' "$log" | grep -n -F -- "$record" | cut -d: -f1 | awk -v f="$from" '$1 > f' | head -n1)
  [ -n "$line" ] || fail "the log lacks '$record' after line $from"
  from=$line
done
if printf '%s\n' "$log" | grep -q "Current SubRoutine"; then fail "the log holds a failure report"; fi
# With GStreamer's good plugins (installed by tandrel.sh) the music plays, so no advice.
if printf '%s\n' "$log" | grep -q "NOT registered"; then fail "the log gives sound advice on a machine that plays sound"; fi
# The game as it was at the exit, kept in the data folder (the match deck at its
# second line), and nothing new in the program folder.
kept=$(ls "$work"/data/Tandrel/games/game-*.txt 2>/dev/null | head -n1 || true)
[ -n "$kept" ] || fail "the game was not kept"
grep -m1 '^deck ' "$kept" | grep -q '^deck 2 ' || fail "the kept game is not the one played: $(grep -m1 '^deck ' "$kept")"
ls -A "$work" | grep -qv -e '^Tandrel$' -e '^Tandrel.*\.txt$' -e '^LogInfo.txt$' -e '^out.txt$' -e '^data$' \
  && fail "a file in the program folder: $(ls -A "$work")"
echo "end-to-end: main window, PageDown, Ctrl+Q and Yes; log in order; the game kept"
