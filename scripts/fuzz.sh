#!/usr/bin/env bash
# Fuzzes every reader and writer. Usage: scripts/fuzz.sh MINUTES [TARGET…], as in "scripts/fuzz.sh 5 read_png"; the
# minutes are shared by all targets on each core. What is learnt stays in build/fuzz/corpus for the next time, what is found in build/fuzz/findings.
set -euo pipefail
cd "$(dirname "$0")/.."
minutes=${1:?usage: $0 MINUTES [TARGET…]}
shift

scripts/setup.sh fuzz
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz
cd build/fuzz
bin/fuzz_seeds .
mkdir -p logs
targets=()
for name in "$@"; do
  targets+=("fuzz_${name#fuzz_}")
  [ -x "bin/${targets[-1]}" ] || { echo "$0: there is no target $name" >&2; exit 2; }
done
[ $# -gt 0 ] || mapfile -t targets < <(cd bin && ls -d fuzz_read_* fuzz_write_*)
seconds=$((minutes * 60 * $(nproc) / ${#targets[@]}))

fuzz() {
  local status=0
  bin/"$1" -keep_seed=1 -max_total_time="$2" -timeout=20 -rss_limit_mb=3072 -print_final_stats=1 -verbosity=0 \
    -artifact_prefix="findings/$1-" "corpus/$1" "seeds/$1" >"logs/$1" 2>&1 || status=$?
  printf '%-24s %12s runs\n' "$1" "$(sed -n 's/^stat::number_of_executed_units: *//p' "logs/$1")"
  [ "$status" -eq 0 ] || echo "$1: see build/fuzz/logs/$1"
  return "$status"
}
export -f fuzz
printf '%s\n' "${targets[@]}" | xargs -P "$(nproc)" -I{} bash -c "fuzz {} $seconds" || { ls findings; exit 1; }
