#!/usr/bin/env bash
# F5 on a laptop with a projector: the audience screen opens on the projector
# and the host's window keeps the keyboard, so F11 still reaches it. Under a
# window manager (openbox), on one X screen with two monitors (Xorg's dummy
# driver, with the monitors a laptop's RandR reports) and on two X screens.
#   focus.sh PROGRAM_DIR
set -euo pipefail
program_dir=$1
work=$(mktemp -d)
pids=()
cleanup() {
  kill "${pids[@]}" 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT
cp "$program_dir/Tandrel" "$work/"
printf 'Christmas Blank\r\nBlank Pole\r\n' > "$work/TandrelLines.txt"
export QT_QPA_PLATFORM=xcb
# The game is kept in the user's data folder: this run's own.
export XDG_DATA_HOME="$work/data"
where=""

fail() {
  echo "FAIL ($where): $*" >&2
  cat "$work/out.txt" >&2 2>/dev/null || true
  exit 1
}
window() {  # the id of the first visible window so named, waiting up to 10 s
  for _ in $(seq 100); do
    id=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | head -n1 || true)
    [ -n "$id" ] && { echo "$id"; return; }
    sleep 0.1
  done
}
server() {  # waits for the display in DISPLAY, then starts the window manager on it
  local up=""
  for _ in $(seq 100); do xrandr --listmonitors > /dev/null 2>&1 && { up=yes; break; }; sleep 0.1; done
  [ -n "$up" ] || return 1
  openbox > /dev/null 2>&1 &
  pids+=($!)
  sleep 0.5
}
play() {  # the host's laptop is the 1280 x 800 display at 0,0
  "$work/Tandrel" > "$work/out.txt" 2>&1 &
  local pid=$!
  pids+=($pid)
  host=$(window '^Tandrel$')
  [ -n "$host" ] || fail "no main window"
  xdotool windowactivate --sync "$host"
  xdotool key F5
  [ -n "$(window 'Audience Screen')" ] || fail "no audience screen"
  sleep 0.5
  [ "$(xdotool getwindowfocus)" = "$host" ] || fail "the audience screen took the keyboard"
  xdotool key F11
  for _ in $(seq 50); do
    [ "$(xdotool getwindowgeometry "$host" | awk '/Geometry/ { print $2 }')" = 1280x800 ] && break
    sleep 0.1
  done
  [ "$(xdotool getwindowgeometry "$host" | awk '/Geometry/ { print $2 }')" = 1280x800 ] || fail "F11 did not reach the host's window"
  kill "$pid"
  echo "focus: $where, the host's window kept the keyboard"
}
free_display() {
  local n
  while :; do
    n=$((100 + RANDOM % 800))
    [ -e "/tmp/.X$n-lock" ] || { echo ":$n"; return; }
  done
}

# One X screen, two monitors: Xorg runs the dummy driver as root only.
if [ "$(id -u)" -eq 0 ] && [ -x /usr/lib/xorg/Xorg ]; then
  where="one X screen, two monitors"
  cat > "$work/xorg.conf" << 'CONF'
Section "Device"
  Identifier "dummy"
  Driver "dummy"
  VideoRam 256000
EndSection
Section "Screen"
  Identifier "screen"
  Device "dummy"
  DefaultDepth 24
  SubSection "Display"
    Depth 24
    Virtual 3200 1080
  EndSubSection
EndSection
CONF
  export DISPLAY=$(free_display)
  /usr/lib/xorg/Xorg "$DISPLAY" -config "$work/xorg.conf" -noreset -nolisten tcp -logfile "$work/xorg.log" > /dev/null 2>&1 &
  pids+=($!)
  if server; then
    xrandr --fb 3200x1080
    xrandr --setmonitor projector 1920/508x1080/286+1280+0 none
    xrandr --setmonitor laptop 1280/338x800/211+0+0 DUMMY0 > /dev/null
    play
  else
    echo "focus: Xorg did not start here (see its log below); one X screen with two monitors left out"
    tail -5 "$work/xorg.log" 2>/dev/null || true
  fi
else
  echo "focus: one X screen with two monitors needs Xorg as root; left out"
fi

where="two X screens"
export DISPLAY=$(free_display)
Xvfb "$DISPLAY" -screen 0 1280x800x24 -screen 1 1920x1080x24 -noreset > /dev/null 2>&1 &
pids+=($!)
server || fail "Xvfb did not start"
play
