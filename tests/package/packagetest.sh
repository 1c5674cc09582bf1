#!/usr/bin/env bash
# Makes the Debian package, installs it below a folder of its own, uses it as a user of a desktop does, and removes it.
# Needs a display with a window manager. Usage: packagetest.sh BUILD_FOLDER CPACK
set -euo pipefail
build=$1
cpack=$2
source=$(cd "$(dirname "$0")/../.." && pwd)
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
chmod 755 "$place"
root=$place/root
export HOME=$place/home
unset XDG_CONFIG_HOME XDG_DATA_HOME XDG_CONFIG_DIRS XDG_CURRENT_DESKTOP DESKTOP_SESSION WAYLAND_DISPLAY
settings=$HOME/.config/workbench/Options.ini
defaults=$HOME/.config/mimeapps.list
foreign=$'[Default Applications]\ntext/plain=vim.desktop\napplication/x-workbench-gi=other.desktop;'

fail() {
  echo "packagetest: $*" >&2
  exit 1
}
expect() { # WHAT WANTED GOT
  [ "$2" = "$3" ] || fail "$1: $3, not $2"
}
# Somebody who can't write to the program's folder.
as_user() {
  if [ "$(id -u)" -eq 0 ]; then
    setpriv --reuid=65534 --regid=65534 --clear-groups "$@"
  else
    "$@"
  fi
}
# Waits for the program's window and closes it as a person does.
close_window() {
  local window
  window=$(timeout 20 xdotool search --sync --onlyvisible --name '^Workbench$' | head -n 1) || fail "no window came"
  timeout 20 xdotool windowactivate --sync "$window" || fail "the window does not come forward"
  xdotool key alt+F4
  for _ in $(seq 100); do
    xwininfo -id "$window" >/dev/null 2>&1 || return 0
    sleep 0.1
  done
  fail "the window stays"
}
# Starts the installed program with these settings, closes it, and waits for its end.
run_with() {
  printf '%s\r\n' "$@" | as_user tee "$settings" >/dev/null
  as_user "$root/usr/bin/workbench" >/dev/null 2>&1 &
  close_window
  wait $!
}

mkdir -p "$root"/var/lib/dpkg/{info,updates,triggers} "$(dirname "$settings")"
touch "$root"/var/lib/dpkg/{status,available}
printf '%s\n' "$foreign" > "$defaults"
printf 'gi\0\0' > "$HOME/имя \$1.GI"
[ "$(id -u)" -ne 0 ] || chown -R 65534:65534 "$HOME"

(cd "$build" && "$cpack" -G DEB -B "$place/deb") >"$place/cpack.log" 2>&1 || fail "$(cat "$place/cpack.log")"
package=$(echo "$place"/deb/*.deb)
for library in libqt6widgets6 libpng16-16 libdeflate0 libsndfile1 libsdl2-2.0-0; do
  dpkg-deb -f "$package" Depends | grep -q "$library" || fail "does not depend on $library"
done
dpkg() { # the libraries are those of this machine
  command dpkg --root="$root" --log="$place/dpkg.log" --force-not-root,depends "$@" >"$place/dpkg.out" 2>&1 ||
    fail "dpkg $*: $(cat "$place/dpkg.out")"
}
dpkg -i "$package"
share=$root/usr/share
desktop-file-validate "$share/applications/workbench.desktop"
appstreamcli validate --no-net "$share"/metainfo/*.xml >"$place/appstream.log" || fail "$(cat "$place/appstream.log")"
for page in "$share"/man/man1/*; do
  expect "$page" "" "$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -l "$page" 2>&1 >"$place/page")"
  grep -q 'SEE ALSO' "$place/page" || fail "$page is not all there"
done

cli=$root/usr/bin/workbench-cli
expect version "workbench-cli $(dpkg-deb -f "$package" Version)" "$("$cli" --version)"
"$cli" info "$place/none.gi" 2>"$place/err" && fail "a missing file is told of"
grep -q "can't be read" "$place/err" || fail "the graphics library is not found: $(cat "$place/err")"
printf 'RIFF    WAVE' >"$place/none.wav"
"$cli" info "$place/none.wav" 2>"$place/err" && fail "a sound without samples is told of"
grep -q "of no kind" "$place/err" || fail "the sound library is not found: $(cat "$place/err")"
# The examples of the README run as they stand.
"$source/samples/make-samples.sh" "$place/samples" "$build/bin" >"$place/samples.log" || fail "$(cat "$place/samples.log")"
cd "$place/samples"
cp game/Графика/Планета.gi game/Данные.pkg game/Данные/Игра.dat .
cp game/Графика/Планета.png planet.png
for picture in game/Разное/Взрыв/*.png; do cp "$picture" "frame${picture##*_}"; done
for picture in game/Интерфейс/Радар/*.png; do cp "$picture" "full${picture##*_}"; done
grep '^workbench-cli ' "$source/README.md" >"$place/examples"
while read -r example; do
  PATH=$root/usr/bin:$PATH bash -o pipefail -c "$example" >"$place/said" 2>&1 </dev/null ||
    fail "$example: $(cat "$place/said")"
done <"$place/examples"
cd /

# shellcheck disable=SC1090
. "$share/bash-completion/completions/workbench-cli"
complete_words() {
  COMP_WORDS=("$cli" "$@")
  COMP_CWORD=$#
  _workbench_cli
  echo "${COMPREPLY[*]}"
}
expect "completed command" unpack "$(complete_words un)"
expect "completed options" "--all --alt-gai" "$(complete_words export --al)"

# The program opens the user's files when that is chosen, as the desktop's own tools see it.
run_with GI=True PKG=True
expect settings True "$(sed -n 's/^GI=\(.*\)\r/\1/p' "$settings")"
[ ! -e "$root/usr/lib/workbench/bin/Options.ini" ] || fail "settings in the system's folder"
desktop-file-validate "$HOME/.local/share/applications/workbench-files.desktop"
expect "default for GI" workbench-files.desktop "$(xdg-mime query default application/x-workbench-gi)"
expect "default for HAI" "" "$(xdg-mime query default application/x-workbench-hai)"
expect "type of the file" application/x-workbench-gi \
  "$(XDG_CURRENT_DESKTOP=GNOME xdg-mime query filetype "$HOME/имя \$1.GI")"
as_user gio open "$HOME/имя \$1.GI"
close_window
for _ in $(seq 100); do # the settings are written when the window is gone
  shown=$(sed -n 's/^Dir=\(.*\)\r/\1/p' "$settings")
  [ "$shown" != "C:${HOME//\//\\}" ] || break
  sleep 0.1
done
expect "folder that was shown" "C:${HOME//\//\\}" "$shown"

run_with GI=False
expect "other programs' defaults" "$foreign" "$(cat "$defaults")"
expect "what is left" "" "$(cd "$HOME/.local/share" && { grep -rl workbench . || find . -type f -name '*workbench*'; })"

dpkg --purge workbench
expect "what is installed" "" "$(find "$root" -path "$root/var/lib/dpkg" -prune -o -type f -print -o -name '*workbench*' -print)"
