#!/usr/bin/env bash
# Builds the example of several instruments with the unpacked development package and queries two simulated amplifiers
# with it: cpp_instrument.sh ROOT EXAMPLE.
set -euo pipefail
root=$(readlink -f "$1") example=$2
scratch=$(mktemp -d)
amplifiers=()
stop() {
  for amplifier in "${amplifiers[@]}"; do kill "$amplifier" 2>/dev/null || true; done
  rm -rf "$scratch"
}
trap stop EXIT
unset DISPLAY WAYLAND_DISPLAY LD_LIBRARY_PATH CMAKE_PREFIX_PATH

cmake -G Ninja -S "$example" -B "$scratch/build" -DCMAKE_PREFIX_PATH="$root/usr" -DCMAKE_BUILD_TYPE=Debug >"$scratch/log" 2>&1 &&
  cmake --build "$scratch/build" >>"$scratch/log" 2>&1 || { cat "$scratch/log" && exit 1; }

resources=()
for number in 1 2; do
  mkfifo "$scratch/says$number"
  "$root/usr/bin/kolvane-amplifier" --tcp 0 >"$scratch/says$number" &
  amplifiers+=($!)
  exec {says}<"$scratch/says$number"
  read -r line <&$says
  resources+=("TCPIP::127.0.0.1::${line##*[!0-9]}::SOCKET")
done
identity=$("$scratch/build/cpp-instrument" '*IDN?' "${resources[@]}")
[ "$(wc -l <<<"$identity")" = 2 ] && [ "$(sort -u <<<"$identity" | wc -l)" = 1 ] && [[ $identity == *,* ]] || {
  printf 'the instruments said: %s\n' "$identity"
  exit 1
}
if "$scratch/build/cpp-instrument" '*IDN?' nonsense 2>"$scratch/log"; then exit 1; fi
grep -q "bad RESOURCE 'nonsense'" "$scratch/log"
