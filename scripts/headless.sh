#!/usr/bin/env bash
# What run.sh does on a machine without a display: converts a picture to GI and back, unpacks an archive, and takes a
# screenshot of the main window. Usage: scripts/headless.sh BIN_FOLDER FILE_OR_FOLDER
set -euo pipefail
bin=$1
target=$2
samples=$(cd "$(dirname "$0")/.." && pwd)/samples/game
out=$(dirname "$bin")/headless
rm -rf "$out"
mkdir -m 700 "$out" # as Qt wants its runtime folder

# first_of FOLDER PATTERN: its first file of that name that is no tiny one, if any.
first_of() {
  find "$1" -iname "$2" -size +4k 2>/dev/null | sort | sed -n 1p || true
}

picture=$(first_of "$samples" '*.png')
"$bin/workbench-cli" gi "$picture" "$out/picture.gi" --type 0
"$bin/workbench-cli" export "$out/picture.gi" "$out/picture.png"
"$bin/workbench-cli" info "$out/picture.gi" > "$out/picture.txt"
"$bin/workbench-cli" list --recursive "$samples/Данные.pkg" > "$out/archive.txt"
"$bin/workbench-cli" unpack --quiet "$samples/Данные.pkg" "$out/archive" >/dev/null

shown=$target
if [ -d "$target" ]; then
  shown=$(first_of "$target" '*.gi')
  shown=${shown:-$target}
fi
XDG_RUNTIME_DIR=$out QT_QPA_PLATFORM=offscreen "$bin/workbench-screenshot" "$out/window.png" 1024x736 0 "$shown"

cat <<TEXT
No display: the work was done headless.
  samples      $samples
  converted    $picture
               to $out/picture.gi and back to $out/picture.png
  described    $out/picture.txt
  archive      listed in $out/archive.txt, unpacked into $out/archive
  screenshot   $out/window.png (showing $shown)
TEXT
