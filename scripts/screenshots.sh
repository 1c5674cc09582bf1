#!/usr/bin/env bash
# Takes the pictures of the README: makes the samples in FOLDER/game and shows every page with some of them.
# Usage: scripts/screenshots.sh FOLDER
set -euo pipefail
cd "$(dirname "$0")/.."
folder=${1:?usage: $0 FOLDER}

scripts/setup.sh run
cmake --preset release >/dev/null
cmake --build --preset release
bin=$PWD/build/release/bin
samples/make-samples.sh "$folder" "$bin"
game=$(realpath "$folder")/game
out=$PWD/docs/images
cd "$bin"

shoot() {
  QT_QPA_PLATFORM=offscreen ./workbench-screenshot "$out/$1.png" 1024x736 "$2" ${3:+"$game/$3"}
}
shoot viewer 0 'Звёзды/Эскадра.gai'
shoot gi-editor 1 'Интерфейс/Капитан.png'
shoot gai-editor 2 'Разное/Взрыв.gai'
shoot hai-editor 3 'Разное/Взрыв.gai'
shoot anim-creator 4 'Разное/Взрыв.gai'
shoot dat-editor 5 'Данные/Игра.dat'
shoot pkg-unpacker 6
shoot pkg-packer 7
shoot options 8
