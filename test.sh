#!/usr/bin/env bash
# Builds everything with warnings as errors and runs all tests, once more under AddressSanitizer and
# UndefinedBehaviorSanitizer. Needs no display. The exit status tells.
set -euo pipefail
cd "$(dirname "$0")"

scripts/setup.sh test
for preset in test asan; do
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset"
  ctest --preset "$preset"
done
