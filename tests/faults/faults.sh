#!/usr/bin/env bash
# Shows that nobody loses a file to a write that fails. faults.sh BIN-FOLDER SAMPLE-DRAWER
#
# Each command of the command line that writes, and each page of the window that saves, is run over older files, while
# the first, second, … call of a kind that writing is made of fails, until there is no further one; then it is killed at
# each instead; then with a disk that is full sooner or later; then in a folder that may not be written. Each time every
# file must be the old or the new one, whole; what failed must have said so and left no other file behind.
set -uo pipefail
bin=$1 drawer=$2
work=$(mktemp -d /tmp/workbench-faults-XXXXXX)
trap 'umount "$work/out" 2>/dev/null; rm -rf "$work"' EXIT
strace=$(command -v strace)
export QT_QPA_PLATFORM=offscreen QT_NO_GLIB=1 # without GLib Qt writes to itself less often
export XDG_DATA_HOME=$work/out/data XDG_CONFIG_HOME=$work/out/config
calls=(write pwrite64 fsync linkat rename close)
runs=0 faults=0 failures=0
# The loader closes files before the program begins.
closed=$(strace -f -qq -e trace=close "$bin/workbench-cli" --version 2>&1 >/dev/null | grep -c '^close')

fail() { echo "FAILED: $*"; failures=$((failures + 1)); }

"$drawer" "$work"
mkdir "$work/in" "$work/tree"
i=0
for picture in "$work"/drawn/Корабли/*.png; do cp "$picture" "$work/in/$((i++)).png"; done
cd "$work/in" || exit
head -c 70000 /dev/urandom >"$work/tree/noise"
cp 0.png 1.png "$work/tree"
"$bin/workbench-cli" gi 0.png a.gi --type 2 --quiet
"$bin/workbench-cli" gai a.gai 0.png 1.png --quiet
cp 0.png same.png
printf '{"zl":false,"root":{"kind":"pairs","children":[{"type":1,"name":"a","value":"b"}]}}' >a.json
"$bin/workbench-cli" dat import a.json a.dat
"$bin/workbench-cli" pack "$work/tree" a.pkg >/dev/null

# What one writes lies in `out`; it is started in `in`.
declare -A commands=(
  [gi]="workbench-cli gi 0.png ../out/a.gi --type 2 --force"
  [gai]="workbench-cli gai ../out/a.gai 0.png 1.png --packed --force"
  [hai]="workbench-cli hai ../out/a.hai 0.png 1.png --force"
  [animate]="workbench-cli animate ../out/a.gai same.png 0.png --force"
  [dat]="workbench-cli dat import a.json ../out/a.dat --zl --force"
  [json]="workbench-cli dat export a.dat ../out/a.json --force"
  [png]="workbench-cli export a.gai ../out/a.png --all --force"
  [jpeg]="workbench-cli export a.gai ../out/a.jpg --force"
  [pack]="workbench-cli pack ../tree ../out/a.pkg --force"
  [unpack]="workbench-cli unpack a.pkg ../out"
  [extract]="workbench-cli extract a.pkg 0.png -o ../out/a.png --force"
  [viewer-png]="savingpage 0 0.png cmdSavePNG ../out/a.png"
  [viewer-jpeg]="savingpage 0 0.png cmdSaveJPG ../out/a.jpg"
  [viewer-all]="savingpage 0 a.gai cmdSaveAllPNG ../out/a.png"
  [gi-made]="savingpage 1 0.png cmdGICR_OpenPNG,cmdGICR_CreateGI ../out/a.gi"
  [gi-moved]="savingpage 1 a.gi cmdGICR_OpenGI,cmdGICR_CreateGI ../out/a.gi"
  [gai-editor]="savingpage 2 0.png,1.png cmdGAICR_Add,cmdGAICR_SaveGAI ../out/a.gai"
  [hai-editor]="savingpage 3 0.png,1.png cmdHAICR_Add(0),cmdHAICR_SaveHAI ../out/a.hai"
  [creator]="savingpage 4 same.png,0.png cmdAnimCR_Add,cmdAnimCR_Gen,cmdAnimCR_SavePNG ../out/a.png"
  [dat-editor]="savingpage 5 a.dat cmdDAT_Open,cmdDAT_SaveAs ../out/a.dat"
  [options]="savingpage 8 0.png chkPKG ../out/Options.ini"
)
# What makes the older files, where they can't be anything.
declare -A older=([options]="savingpage 8 0.png chkGI ../out/Options.ini")
# What the box says, where it is not "Error: File access denied."
declare -A boxes=([gi-made]="a.gi: File access denied." [gi-moved]="a.gi: File access denied.")

make() { (cd "$work/in" && "$bin"/$1 >/dev/null 2>&1) || fail "$1: does not run"; }

# Makes the older files, those of the command itself with other bytes in them as a rule, and the new ones.
prepare() {
  rm -rf "$work/new" "$work/old" "$work/out"
  mkdir "$work/out"
  make "${older[$1]-${commands[$1]}}"
  [ -n "${older[$1]-}" ] || find "$work/out" -type f -exec sh -c 'echo old >"$1"' - {} \;
  cp -r "$work/out" "$work/old"
  make "${commands[$1]}"
  [ -n "$(ls "$work/out")" ] || fail "$1: writes nothing"
  mv "$work/out" "$work/new"
  mkdir "$work/out"
}

# Runs it with the given command in front; `status` and the file `said` tell how it ended.
run() {
  local name=$1 command
  shift
  command=("$bin"/${commands[$name]})
  # A page is traced from where it saves.
  case ${commands[$name]},$1 in
    savingpage*,"$strace") set -- "${command[@]}" "$@" ;;
    *) set -- "$@" "${command[@]}" ;;
  esac
  find "$work/out" -mindepth 1 -delete && cp -r "$work/old/." "$work/out"
  # Through a pipe: a full disk would not take what the command says. `|| exit` keeps the shell from telling of
  # those that are killed.
  (cd "$work/in" && "$@" || exit $?) 2>&1 | cat >"$work/said"
  status=${PIPESTATUS[0]}
  runs=$((runs + 1))
}

# Fills the disk of the folder but for so many KB meanwhile.
fill() {
  local room=$1 result
  shift
  head -c 1G /dev/zero >"$work/out/filler" 2>/dev/null
  truncate -s "-${room}K" "$work/out/filler"
  "$@"
  result=$?
  rm "$work/out/filler"
  return $result
}

# The superuser may write anywhere, but for this.
read_only() {
  chmod 555 "$work/out"
  if [ "$(id -u)" -eq 0 ]; then setpriv --bounding-set -dac_override "$@"; else "$@"; fi
}

# check NAME WHAT MAY-LEAVE: what is in `out` now.
check() {
  local file
  while read -r file; do
    if [ ! -e "$work/new/$file" ]; then
      [ -n "$3" ] || fail "$1, $2: leaves $file"
    elif ! cmp -s "$work/out/$file" "$work/new/$file"; then
      cmp -s "$work/out/$file" "$work/old/$file" || fail "$1, $2: $file is neither old nor new"
      [ "$status" -ne 0 ] || [ "$1" = options ] || fail "$1, $2: says nothing of $file"
    fi
  done < <(cd "$work/out" && find . -type f)
  [ "$(find "$work/out" -type f | wc -l)" -ge "$(find "$work/old" -type f | wc -l)" ] || fail "$1, $2: loses a file"
}

check_said() {
  [ "$status" -eq 0 ] && return
  case ${commands[$1]} in
    savingpage*) grep -qxF "${boxes[$1]-Error: File access denied.}" "$work/said" ;;
    *) grep -q -e '^workbench-cli: .*: .' -e '^ERR: ' "$work/said" ;;
  esac || fail "$1, $2: ends with $status and says: $(cat "$work/said")"
}

for name in "${!commands[@]}"; do
  prepare "$name"
  case ${commands[$name]} in
    workbench-cli*) errors=(error=EIO error=ENOSPC signal=KILL) rooms=(0 1 2 4 8 16 64) first=$closed ;;
    *) errors=(error=ENOSPC signal=KILL) rooms=(0 4) first=0 ;; # it takes several times as long
  esac
  for call in "${calls[@]}"; do
    for fault in "${errors[@]}"; do
      [ "$call" = close ] && n=$first || n=0
      while [ $((++n)) -lt 400 ]; do
        run "$name" "$strace" -f -qq -o "$work/trace" -e "trace=$call" -e "inject=$call:$fault:when=$n"
        grep -q INJECTED "$work/trace" || grep -q 'killed by SIGKILL' "$work/trace" || break
        faults=$((faults + 1))
        if [ "$fault" = signal=KILL ]; then
          check "$name" "killed at $call $n" may-leave
        else
          check "$name" "$call $n $fault" ""
          check_said "$name" "$call $n $fault"
        fi
      done
    done
  done
  for room in "${rooms[@]}"; do
    run "$name" bash -c 'trap "" XFSZ; ulimit -f "$0"; exec "$@"' "$room"
    check "$name" "room for $room KB" ""
    check_said "$name" "room for $room KB"
  done
  if mount -t tmpfs -o size=4m small "$work/out" 2>/dev/null; then
    for room in 0 4 64; do
      run "$name" fill "$room"
      check "$name" "a disk with $room KB left" ""
      check_said "$name" "a disk with $room KB left"
    done
    umount "$work/out"
  else
    unmounted="; skipped: small disks, which this user can't mount"
  fi
  run "$name" read_only
  chmod 755 "$work/out"
  check "$name" "a folder that may not be written" ""
  [ "$status" -ne 0 ] || [ "$name" = options ] || fail "$name: writes into a folder that may not be written"
  check_said "$name" "a folder that may not be written"
done
echo "$runs runs, $faults calls failed, $failures failures${unmounted-}"
[ "$failures" -eq 0 ] && [ "$faults" -gt 0 ]
