#!/usr/bin/env bash
# ./run hands its arguments to the program in the caller's folder, and standard output is the program's:
# run_elsewhere.sh RUN
set -euo pipefail
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir -p "$folder/tree/scripts" "$folder/tree/build/bin" "$folder/elsewhere"
cp "$1" "$folder/tree/run"
# Replaces the library by functions that print to standard output.
cat >"$folder/tree/scripts/lib.sh" <<'END'
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
build_packages=""
need_packages() { echo "installing"; }
configure() { echo "configuring"; }
build() { echo "building"; }
END
printf '#!/bin/sh\necho "$PWD: $*"\n' >"$folder/tree/build/bin/kolvane"
chmod +x "$folder/tree/build/bin/kolvane"

cd "$folder/elsewhere"
# expect TEXT ARGS...
expect() {
  local expected=$1 printed
  shift
  printed=$("$folder/tree/run" "$@" 2>/dev/null)
  [ "$printed" = "$expected" ] || { echo "run $*: '$printed' in place of '$expected'" && exit 1; }
}
expect "$PWD: check a.CMD" check a.CMD
expect "$PWD: --demo"
