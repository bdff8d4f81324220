#!/usr/bin/env bash
# Builds and runs two hosts: cpp_host.sh ROOT PREFIX EXAMPLE. One uses the unpacked development package, the other the
# installation below PREFIX.
set -euo pipefail
root=$(readlink -f "$1") prefix=$(readlink -f "$2") example=$3
here=$(dirname "$(readlink -f "$0")")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
unset DISPLAY WAYLAND_DISPLAY KOLVANE_FOLDER KOLVANE_PORT_LIBRARY LD_LIBRARY_PATH CMAKE_PREFIX_PATH
export HOME=$scratch XDG_CONFIG_HOME=$scratch/config XDG_STATE_HOME=$scratch/state XDG_RUNTIME_DIR=$scratch QT_QPA_PLATFORM=offscreen

# quietly COMMAND...: shows its output only if it fails.
run_quietly() {
  "$@" >"$scratch/log" 2>&1 || {
    cat "$scratch/log"
    exit 1
  }
}

# The example, through the CMake package.
run_quietly cmake -G Ninja -S "$example" -B "$scratch/build" -DCMAKE_PREFIX_PATH="$root/usr" -DCMAKE_BUILD_TYPE=Debug
run_quietly cmake --build "$scratch/build"
for display in "" "$here/../gui/with_xvfb"; do
  for mode in 0 1; do
    $display "$scratch/build/cpp-host" --mode $mode --list "$example/exchange.CMD" >"$scratch/calls" 2>"$scratch/log" ||
      run_quietly cat "$scratch/log"
    diff -u "$example/expected-$mode.txt" "$scratch/calls"
  done
done
if "$scratch/build/cpp-host" --device 7 >/dev/null 2>"$scratch/log"; then exit 1; fi
grep -q 'Kein Gerät mit dem Index 7' "$scratch/log"

# A host through pkg-config, which finds the component by its soname; the component finds its own folder.
module=$(dirname "$(find "$prefix" -name kolvane.pc)")
export PKG_CONFIG_PATH=$module
# A blank in the prefix stays part of each path.
[[ "$(pkg-config --define-variable='prefix=/a b' --cflags --libs kolvane)" == *'-I/a\ b/include'*'-L/a\ b/'*'-rpath,/a\ b/'* ]]
# shellcheck disable=SC2046
run_quietly "${CXX:-c++}" -std=c++20 "$here/headless_host.cpp" -o "$scratch/headless" $(pkg-config --cflags --libs kolvane)
status=0
"$scratch/headless" >"$scratch/folder" 2>"$scratch/log" || status=$?
[ "$status" = 3 ] && [ "$(cat "$scratch/folder")" = "${module%/pkgconfig}/kolvane" ] &&
  ! grep -q Portbibliothek "$scratch/log" || {
  printf 'the headless host ended with %s: ' "$status"
  cat "$scratch/folder" "$scratch/log"
  exit 1
}
