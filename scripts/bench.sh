#!/usr/bin/env bash
# Builds and runs every benchmark. The counters are ratios against a limit measured in the same run.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh bench
cmake --preset bench >/dev/null
cmake --build --preset bench
for program in build/bench/bin/bench_*; do
  echo "== ${program##*/}"
  "$program" "$@"
done
