#!/usr/bin/env bash
# Builds and runs every benchmark. The counters are ratios against a limit measured in the same run.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh bench
cmake --preset bench >/dev/null
cmake --build --preset bench
for program in build/bench/bin/bench_*; do
  echo "== ${program##*/}"
  if [ "${program##*/}" = bench_startup ]; then
    # A home of its own, so that the user's settings stay out of it.
    home=$(mktemp -d)
    HOME=$home XDG_CONFIG_HOME=$home XDG_DATA_HOME=$home scripts/withdisplay.sh "$program"
    rm -rf "$home"
  else
    "$program" "$@"
  fi
done
