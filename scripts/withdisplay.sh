#!/usr/bin/env bash
# Runs a command on a virtual X display of its own with a small window manager.
set -euo pipefail
number=$(mktemp)
Xvfb -displayfd 3 -screen 0 1920x1080x24 -nolisten tcp 3>"$number" 2>/dev/null &
server=$!
manager=
finish() {
  [ -z "$manager" ] || kill "$manager" 2>/dev/null || true
  kill "$server" 2>/dev/null || true
  rm -f "$number"
}
trap finish EXIT
for _ in $(seq 100); do
  [ -s "$number" ] && break
  sleep 0.1
done
DISPLAY=:$(tr -d '\n' <"$number")
export DISPLAY
openbox --sm-disable >/dev/null 2>&1 &
manager=$!
for _ in $(seq 50); do
  xdotool get_desktop >/dev/null 2>&1 && break
  sleep 0.1
done
QT_QPA_PLATFORM=xcb "$@"
