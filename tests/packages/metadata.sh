#!/usr/bin/env bash
# Validates what the unpacked package tells the desktop: metadata.sh ROOT.
set -euo pipefail
share=$1/usr/share
desktop-file-validate "$share/applications/kolvane.desktop"
appstreamcli validate --no-net "$share/metainfo/org.kolvane.Kolvane.metainfo.xml" >"$1/../appstream" || {
  cat "$1/../appstream"
  exit 1
}
icon=$(sed -n 's/^Icon=//p' "$share/applications/kolvane.desktop")
[ -s "$share/icons/hicolor/scalable/apps/$icon.svg" ]
