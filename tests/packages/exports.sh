#!/usr/bin/env bash
# Checks what the shared objects export: exports.sh LIBKOLVANE LIBDEVLNK WINDOWS, against the lists beside this file.
# Symbols missing in a list are marked +, symbols missing in a library -.
set -euo pipefail
export LC_ALL=C
lists=$(dirname "$(readlink -f "$0")")

# exported FILE: one demangled name per line, without addresses and versions
exported() {
  nm -Dg --defined-only -C "$1" | sed -E 's/^[0-9a-f]+ //; /^A /d; s/^. //; s/@@.*//; s/\[abi:cxx11\]//' | sort -u
}

status=0
for pair in "$1:libkolvane.exports" "$2:libdevlnk.exports" "$3:libkolvane-windows.exports"; do
  diff -U0 --label "${pair#*:}" --label "${pair%:*}" "$lists/${pair#*:}" <(exported "${pair%:*}") || status=1
done
exit "$status"
