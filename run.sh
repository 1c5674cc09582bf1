#!/usr/bin/env bash
# Builds the workbench and opens it on FILE, or on the sample folder. Without a display it does the same work
# headless and says where the results lie.
set -euo pipefail
start_folder=$PWD
cd "$(dirname "$0")"

scripts/setup.sh run
[ -f build/release/build.ninja ] || cmake --preset release >/dev/null
cmake --build --preset release
bin=$PWD/build/release/bin
[ -e samples/game/Данные.pkg ] || samples/make-samples.sh samples "$bin"

target=$PWD/samples/game/
if [ $# -gt 0 ]; then
  target=$(cd "$start_folder" && realpath -- "$1")
fi

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec "$bin/workbench" "$target"
fi
exec scripts/headless.sh "$bin" "$target"
