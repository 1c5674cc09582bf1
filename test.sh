#!/usr/bin/env bash
# Builds everything with warnings as errors and runs all tests, once more under AddressSanitizer and
# UndefinedBehaviorSanitizer, then each fuzz target for a few seconds. Needs no display. The exit status tells.
set -euo pipefail
cd "$(dirname "$0")"

scripts/setup.sh test
scripts/setup.sh fuzz
for preset in test asan fuzz; do
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset"
  ctest --preset "$preset"
done
