#!/bin/bash
# make-samples.sh OUT BIN_DIR: puts a small made-up game folder into OUT/game, with the programs of BIN_DIR.
# What was there before is replaced only by a complete new one.
set -eu

if [ $# -ne 2 ]; then
    echo "usage: make-samples.sh OUT BIN_DIR" >&2
    exit 2
fi
out=$1
bin=$2

mkdir -p "$out"
work=$(mktemp -d "$out/making.XXXXXX")
trap 'rm -rf "$work"' EXIT

"$bin/sample-drawer" "$work"

# gi TYPE NAME [OPTION...]: the drawn picture of this name, as a GI file at its place in the game.
gi() {
    local type=$1 name=$2
    shift 2
    mkdir -p "$(dirname "$work/game/$name")"
    "$bin/workbench-cli" gi "$work/drawn/$name.png" "$work/game/$name.gi" --type "$type" "$@" --force
}

gi 0 'Звёзды/Фон'
gi 0 'Звёзды/Панорама'
gi 2 'Графика/Планета'
gi 3 'Графика/Красная планета'
gi 0 'Графика/Гигант'
gi 1 'Графика/Астероид1'
gi 1 'Графика/Астероид2' --crop
gi 3 'Графика/Астероид3'
gi 2 'Корабли/Разведчик' --at 40,30
gi 2 'Корабли/Пират' --crop
gi 3 'Корабли/Торговец'
gi 4 'Интерфейс/Капитан'
for state in N H P D; do
    gi 3 "Интерфейс/Button$state"
done
for frame in "$work"/drawn/Разное/Взрыв/*.png; do
    gi 2 "Разное/Взрыв/$(basename "$frame" .png)"
done

# gai NAME FRAME... [OPTION...]: an animation at its place in the game.
gai() {
    local name=$1
    shift
    "$bin/workbench-cli" gai --quiet "$work/game/$name.gai" "$@" --force
}

gai 'Разное/Взрыв' "$work"/drawn/Разное/Взрыв/*.png
gai 'Интерфейс/Button' "$work"/drawn/Интерфейс/Button[NHPD].png --packed

# Ships that arrive one after another, each staying where it is, over the stars.
mkdir "$work/ships"
number=0
while read -r ship place; do
    "$bin/workbench-cli" gi "$work/drawn/Корабли/$ship.png" "$work/ships/$number.gi" --type 2 --at "$place"
    number=$((number + 1))
done <<PLACES
Разведчик 20,30
Разведчик 20,250
Пират 210,80
Пират 210,300
Торговец 400,30
Торговец 400,250
PLACES
gai 'Звёзды/Эскадра' "$work"/ships/*.gi --box 0,0,640,480 --background --crop
cp "$work/game/Звёзды/Фон.gi" "$work/game/Звёзды/Эскадра.gi"

# Full pictures, and the animation that is made of what changes in them; it is drawn over the first one.
"$bin/workbench-cli" animate --quiet "$work/game/Интерфейс/Радар.gai" "$work"/drawn/Интерфейс/Радар/*.png
"$bin/workbench-cli" gi "$work/drawn/Интерфейс/Радар/Радар_000.png" "$work/game/Интерфейс/Радар.gi" --type 0

# The same explosion as small indexed frames.
"$bin/workbench-cli" hai --quiet "$work/game/Разное/Взрыв.hai" "$work"/drawn/Разное/Взрыв/*.png

# The same data compressed, as most of the game's data files are.
"$bin/workbench-cli" dat export "$work/game/Данные/Игра.dat" "$work/data.json"
"$bin/workbench-cli" dat import "$work/data.json" "$work/game/Данные/Игра-ZL.dat" --zl

# An archive of some of these folders: files that are packed, and others that are stored as they are.
mkdir "$work/packed"
cp -r "$work/game/Графика" "$work/game/Корабли" "$work/game/Разное" "$work/game/Звуки" "$work/packed"
"$bin/workbench-cli" pack --quiet "$work/packed" "$work/game/Данные.pkg" >/dev/null

if [ -e "$out/game" ]; then
    mv "$out/game" "$work/old"
fi
mv "$work/game" "$out/game"
