#!/usr/bin/env bash
# Installs the Debian packages that are missing. Usage: scripts/setup.sh run|test|fuzz|bench
set -euo pipefail

run_packages=(g++ cmake ninja-build qt6-base-dev qt6-translations-l10n libxcb1-dev libpng-dev libjpeg-dev
  zlib1g-dev libdeflate-dev libsquish-dev libsndfile1-dev libsdl2-dev librsvg2-bin fonts-inter)
test_packages=(libgtest-dev libgmock-dev xvfb xauth openbox xdotool x11-utils picom strace dpkg-dev file
  xdg-utils shared-mime-info desktop-file-utils libglib2.0-bin appstream man-db groff-base)
fuzz_packages=(clang "libclang-rt-14-dev" libgtest-dev)
bench_packages=(libbenchmark-dev libimagequant-dev libsimdjson-dev zip unzip xvfb xauth openbox xdotool)

case "${1:-}" in
  run) wanted=("${run_packages[@]}") ;;
  test) wanted=("${run_packages[@]}" "${test_packages[@]}") ;;
  fuzz) wanted=("${run_packages[@]}" "${fuzz_packages[@]}") ;;
  bench) wanted=("${run_packages[@]}" "${bench_packages[@]}") ;;
  *) echo "usage: $0 run|test|fuzz|bench" >&2; exit 2 ;;
esac

missing=()
for package in "${wanted[@]}"; do
  dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
