#!/usr/bin/env bash
# The game read by a screen reader's means: the real program in a folder of
# its own, under a private X server and D-Bus session with the accessibility
# bus, read and driven by atspi.py through AT-SPI alone.
#   atspi.sh PROGRAM_DIR
set -euo pipefail
program_dir=$1
here=$(cd "$(dirname "$0")" && pwd)

if [ -z "${TANDREL_ATSPI_INNER:-}" ]; then
  work=$(mktemp -d)
  trap 'rm -rf "$work"' EXIT
  cp "$program_dir/Tandrel" "$work/"
  printf 'Christmas Blank\r\nBlank Pole\r\nShoe Blank\r\n' > "$work/TandrelLines.txt"
  # A display as the end-to-end run takes one (see run.sh).
  TANDREL_ATSPI_INNER=1 TANDREL_ATSPI_WORK="$work" \
    xvfb-run -n $((100 + RANDOM % 800)) -a -s "-screen 0 1280x800x24 -noreset" dbus-run-session -- bash "$0" "$program_dir" 2>&1 |
    grep -v -e 'fd limit' -e '^dbus-daemon' -e 'SpiRegistry' -e 'qt.multimedia' -e 'PulseAudio' -e 'XDG_RUNTIME_DIR'
  exit "${PIPESTATUS[0]}"
fi

work=$TANDREL_ATSPI_WORK
"$(command -v at-spi-bus-launcher || echo /usr/libexec/at-spi-bus-launcher)" --launch-immediately &
bus=$!
export QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
# The game is kept in the user's data folder: this run's own.
export XDG_DATA_HOME="$work/data"
"$work/Tandrel" > "$work/out.txt" 2>&1 &
game=$!
status=0
timeout 60 /usr/bin/python3 "$here/atspi.py" || status=$?
kill "$game" "$bus" 2>/dev/null || true
wait "$game" 2>/dev/null || true
exit "$status"
