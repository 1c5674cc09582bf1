#!/usr/bin/env bash
# clang-format and clang-tidy over the C++ files that changed since main, or over all with --all.
set -euo pipefail
cd "$(dirname "$0")/.."

[ -f build/test/compile_commands.json ] || cmake --preset test >/dev/null
if [ "${1:-}" = --all ]; then
  mapfile -t files < <(git ls-files '*.cpp' '*.h')
else
  mapfile -t files < <(git diff --name-only --diff-filter=d "$(git merge-base HEAD main)" -- '*.cpp' '*.h')
fi
[ ${#files[@]} -eq 0 ] && exit 0

clang-format --dry-run --Werror "${files[@]}"
# Headers are looked at with what includes them.
printf '%s\n' "${files[@]}" | sed -n '/\.cpp$/p' |
  xargs -r -P "$(nproc)" -n 4 clang-tidy -p build/test --quiet --extra-arg=-Wno-unknown-warning-option
