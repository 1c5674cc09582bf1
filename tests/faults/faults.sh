#!/usr/bin/env bash
# Shows that nobody loses a file to a write that fails. faults.sh BIN-FOLDER SAMPLE-DRAWER
#
# Each command of the command line that writes is run over older files, while the first, second, … call of
# a kind that writing is made of fails, until there is no further one; then it is killed at each instead; then
# with a disk that is full sooner or later; then in a folder that may not be written. Each time every file must
# be the old or the new one, whole; a command that failed must have said so and left no other file behind.
set -uo pipefail
bin=$1 drawer=$2
work=$(mktemp -d /tmp/workbench-faults-XXXXXX)
trap 'rm -rf "$work"' EXIT
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
"$bin/workbench-cli" gai a.gai 0.png 1.png --quiet
cp 0.png same.png
printf '{"zl":false,"root":{"kind":"pairs","children":[{"type":1,"name":"a","value":"b"}]}}' >a.json
"$bin/workbench-cli" dat import a.json a.dat
"$bin/workbench-cli" pack "$work/tree" a.pkg >/dev/null

# What a command writes lies in `out`; it is started in `in`.
declare -A commands=(
  [gi]="gi 0.png ../out/a.gi --type 2 --force"
  [gai]="gai ../out/a.gai 0.png 1.png --packed --force"
  [hai]="hai ../out/a.hai 0.png 1.png --force"
  [animate]="animate ../out/a.gai same.png 0.png --force"
  [dat]="dat import a.json ../out/a.dat --zl --force"
  [json]="dat export a.dat ../out/a.json --force"
  [png]="export a.gai ../out/a.png --all --force"
  [jpeg]="export a.gai ../out/a.jpg --force"
  [pack]="pack ../tree ../out/a.pkg --force"
  [unpack]="unpack a.pkg ../out"
  [extract]="extract a.pkg 0.png -o ../out/a.png --force"
)

# Lays out the older files: what the command makes, with other bytes in it.
prepare() {
  rm -rf "$work/new" "$work/old" "$work/out"
  mkdir "$work/out" && (cd "$work/in" && "$bin/workbench-cli" ${commands[$1]} >/dev/null) || fail "$1: does not run"
  mv "$work/out" "$work/new"
  cp -r "$work/new" "$work/old"
  find "$work/old" -type f -exec sh -c 'echo old >"$1"' - {} \;
}

# Runs it with the given command in front; `status` and the file `said` tell how it ended.
run() {
  local name=$1
  shift
  rm -rf "$work/out" && cp -r "$work/old" "$work/out"
  # Through a pipe: a full disk would not take what the command says. `|| exit` keeps the shell from telling of
  # those that are killed.
  (cd "$work/in" && "$@" "$bin/workbench-cli" ${commands[$name]} || exit $?) 2>&1 | cat >"$work/said"
  status=${PIPESTATUS[0]}
  runs=$((runs + 1))
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
      [ "$status" -ne 0 ] || fail "$1, $2: says nothing of $file"
    fi
  done < <(cd "$work/out" && find . -type f)
  [ "$(find "$work/out" -type f | wc -l)" -ge "$(find "$work/old" -type f | wc -l)" ] || fail "$1, $2: loses a file"
}

check_said() {
  [ "$status" -eq 0 ] || grep -q '^workbench-cli: .*: .' "$work/said" || grep -q '^ERR: ' "$work/said" ||
    fail "$1, $2: ends with $status and says: $(cat "$work/said")"
}

for name in "${!commands[@]}"; do
  prepare "$name"
  for call in "${calls[@]}"; do
    for fault in error=EIO error=ENOSPC signal=KILL; do
      [ "$call" = close ] && n=$closed || n=0
      while [ $((++n)) -lt 400 ]; do
        run "$name" strace -f -qq -o "$work/trace" -e "trace=$call" -e "inject=$call:$fault:when=$n"
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
  for room in 0 1 2 4 8 16 64; do
    run "$name" bash -c 'trap "" XFSZ; ulimit -f "$0"; exec "$@"' "$room"
    check "$name" "room for $room KB" ""
    check_said "$name" "room for $room KB"
  done
  run "$name" read_only
  chmod 755 "$work/out"
  check "$name" "a folder that may not be written" ""
  [ "$status" -ne 0 ] || fail "$name: writes into a folder that may not be written"
  check_said "$name" "a folder that may not be written"
done
echo "$runs runs, $faults calls failed, $failures failures"
[ "$failures" -eq 0 ] && [ "$faults" -gt 0 ]
