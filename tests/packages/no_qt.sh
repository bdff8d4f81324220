#!/usr/bin/env bash
# Checks that a program that opens no window starts without Qt: no_qt.sh FILE...
set -euo pipefail
status=0
for file in "$@"; do
  needed=$(readelf -d "$file" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p')
  # An empty list would prove nothing.
  [ -n "$needed" ] || { echo "$file: needs nothing at all" && exit 1; }
  if found=$(grep -E "^libQt|^libxcb|^libmspack" <<<"$needed"); then
    printf '%s needs %s\n' "$file" "$(tr '\n' ' ' <<<"$found")"
    status=1
  fi
done
exit "$status"
