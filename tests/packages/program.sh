#!/usr/bin/env bash
# Runs the unpacked program: program.sh ROOT VERSION. It cannot reach any file of the build.
set -euo pipefail
root=$(readlink -f "$1") version=$2
folder=$(dirname "$(find "$root/usr/lib" -name libdevlnk.so)")
scratch=$(mktemp -d)
amplifier=
end() {
  [ -z "$amplifier" ] || kill "$amplifier" 2>/dev/null || true
  rm -rf "$scratch"
}
trap end EXIT
unset DISPLAY WAYLAND_DISPLAY KOLVANE_FOLDER KOLVANE_PORT_LIBRARY LD_LIBRARY_PATH
export HOME=$scratch XDG_CONFIG_HOME=$scratch/config XDG_STATE_HOME=$scratch/state XDG_DATA_HOME=$scratch/data XDG_RUNTIME_DIR=$scratch
export TMPDIR=$scratch QT_QPA_PLATFORM=offscreen
cd "$scratch"
kolvane=$root/usr/bin/kolvane

fail() {
  printf '%s\n' "$*"
  exit 1
}

[ "$("$kolvane" --version)" = "kolvane $version" ] || fail "--version says $("$kolvane" --version)"

# A list without a window, with the unpacked amplifier and port library.
mkfifo says
"$root/usr/bin/kolvane-amplifier" --tcp 0 >says &
amplifier=$!
read -r line <says
port=${line##*:}
"$kolvane" run "$folder/demo.CMD" --connect "TCPIP::127.0.0.1::$port::SOCKET" >answers 2>errors ||
  fail "run ended with $?: $(cat errors)"
[ "$(cat errors)" = "kolvane: Die laufende Meßwerterfassung wurde beendet" ] || fail "run wrote: $(cat errors)"
grep -q '^KOLVANE,' answers || fail "no answer to *IDN?: $(head -n 5 answers)"

# asked_to_end PROGRAM ARGS...: SIGTERM is pending before it starts, so that the window closes at once.
terminate_window() {
  env --block-signal=TERM sh -c 'kill -TERM $$; exec "$@"' sh "$@" >window 2>&1 || fail "$* ended with $?: $(cat window)"
}
terminate_window "$kolvane"
[ -s "$XDG_CONFIG_HOME/Kolvane/Kolvane.ini" ] || fail "the window saved no settings"
terminate_window "$kolvane" --demo
! ls -d "$TMPDIR"/kolvane-demo-* 2>/dev/null || fail "the demo did not remove its folder"

# The files that the component and the desktop look for.
for file in libkolvane.so.0 libkolvane-windows.so libdevlnk.so Terminal.chm TermCmdHelp.rtf demo.CMD KVA-1-KOPF.BNS; do
  [ -s "$folder/$file" ] || fail "$file is missing next to the component"
done
for program in kolvane kolvane-amplifier; do
  [ -s "$root/usr/share/man/man1/$program.1.gz" ] || fail "$program has no manual page"
done
# The help file contains the paths of its source pages, which are never opened.
! grep -rlF --exclude='*.chm' -e "$root" -e "${SOURCE_FOLDER:?}" "$root/usr" || fail "files above name the source"
