#!/usr/bin/env bash
# Sets Tandrel up on Debian 12 and then plays it or tests it.
#   ./tandrel.sh play   install what is missing, build, start the game
#   ./tandrel.sh test   install what is missing, build, run the whole test suite
#   ./tandrel.sh sanitize   the test suite built with AddressSanitizer and
#                           UndefinedBehaviorSanitizer, leak checks on (CI runs it)
#   ./tandrel.sh fuzz [SECONDS]   each fuzz target for SECONDS (default 30; CI runs it)
set -euo pipefail
cd "$(dirname "$0")"

what=${1:-play}
case "$what" in play|test|sanitize|fuzz) ;; *) echo "usage: $0 play|test|sanitize|fuzz [SECONDS]" >&2; exit 2 ;; esac

# Everything the program needs to build and run; the tests need a few more.
packages=(build-essential cmake pkg-config qt6-base-dev qt6-multimedia-dev libqt6svg6 libdivsufsort-dev
          gstreamer1.0-plugins-base gstreamer1.0-plugins-good
          fonts-liberation2 fonts-dejavu-core fonts-leckerli-one)
test_packages=(xvfb xauth xdotool dbus at-spi2-core python3-pyatspi openbox x11-xserver-utils
               xserver-xorg-core xserver-xorg-video-dummy)
fuzz_packages=(clang libclang-rt-14-dev)
case "$what" in
  test|sanitize) packages+=("${test_packages[@]}") ;;
  fuzz) packages+=("${fuzz_packages[@]}") ;;
esac

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

jobs=$(nproc 2>/dev/null || echo 2)
if [ "$what" = fuzz ]; then
  exec fuzz/run.sh "${2:-30}"
fi
if [ "$what" = sanitize ]; then
  cmake -S . -B build-sanitize -DCMAKE_BUILD_TYPE=Debug -DTANDREL_SANITIZE=ON > /dev/null
  cmake --build build-sanitize -j"$jobs"
  cd build-sanitize
  export ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
  export LSAN_OPTIONS=suppressions=$PWD/../.ci/lsan.supp
  QT_QPA_PLATFORM=offscreen exec ctest --output-on-failure -j"$jobs"
fi
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo > /dev/null
cmake --build build -j"$jobs"

if [ "$what" = play ]; then
  exec build/bin/Tandrel
fi
cd build
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j"$jobs"
