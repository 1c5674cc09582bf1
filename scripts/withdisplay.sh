#!/usr/bin/env bash
# Runs a command on a virtual X display of its own with a small window manager.
set -euo pipefail
number=$(mktemp)
# Without -noreset the server drops whoever is just connecting when its last client leaves, as xdotool does below.
Xvfb -displayfd 3 -noreset -screen 0 1920x1080x24 -nolisten tcp 3>"$number" 2>/dev/null &
server=$!
manager=
finish() {
  [ -z "$manager" ] || kill "$manager" 2>/dev/null || true
  kill "$server" 2>/dev/null || true
  rm -f "$number"
}
trap finish EXIT
# await WHAT COMMAND...: until the command succeeds.
await() {
  local what=$1
  shift
  for _ in $(seq 300); do
    if "$@" >/dev/null 2>&1; then return; fi
    sleep 0.1
  done
  echo "withdisplay: no $what came" >&2
  exit 1
}
await "X server" test -s "$number"
DISPLAY=:$(tr -d '\n' <"$number")
export DISPLAY
openbox --sm-disable >/dev/null 2>&1 &
manager=$!
await "window manager" xdotool get_desktop
QT_QPA_PLATFORM=xcb "$@"
