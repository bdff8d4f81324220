#!/usr/bin/env bash
# Validates the unpacked packages' metadata and documents: metadata.sh ROOT.
set -euo pipefail
share=$1/usr/share
desktop-file-validate "$share/applications/kolvane.desktop"
appstreamcli validate --no-net "$share/metainfo/org.kolvane.Kolvane.metainfo.xml" >"$1/../appstream" || {
  cat "$1/../appstream"
  exit 1
}
# The picture that it names is in the repository and has the given size.
picture=$(sed -n 's|.*<image [^>]*width="\([0-9]*\)" height="\([0-9]*\)">.*/kolvane.png</image>|\1 x \2|p' \
  "$share/metainfo/org.kolvane.Kolvane.metainfo.xml")
[[ -n $picture && $(file -b "${SOURCE_FOLDER:?}/docs/images/kolvane.png") == *", $picture,"* ]] || {
  echo "docs/images/kolvane.png is not $picture"
  exit 1
}

# The documents exist, and so do the targets of their links.
documents=$(find "$share/doc" -name '*.md')
for name in kolvane/command-line.md kolvane/formats/template.md kolvane-dev/embedding.md python3-kolvane/python.md; do
  [ -s "$share/doc/$name" ] || { echo "$name is missing" && exit 1; }
done
for document in $documents; do
  for link in $(grep -oE '\]\([^)]*\)' "$document" | sed -E 's/^\]\(//; s/\)$//; s/#.*//' | grep -v '^https\?:' || true); do
    [ -e "$(dirname "$document")/$link" ] || { echo "$document: $link leads nowhere" && exit 1; }
  done
done

# Without its plug-in Qt shows no window in a Wayland session.
[[ $(dpkg-deb -f "$1"/../kolvane_*.deb Recommends) == *qt6-wayland* ]] || { echo "qt6-wayland is not recommended" && exit 1; }

# File managers open command lists, in whatever case their names are written.
update-mime-database -n "$share/mime"
type=$(sed -n 's/^[0-9]*:\(.*\):\*\.cmd$/\1/p' "$share/mime/globs2")
[ -n "$type" ] || { echo "no file type of *.CMD" && exit 1; }
grep -qF "MimeType=$type;" "$share/applications/kolvane.desktop" || { echo "no program for $type" && exit 1; }
grep -qx 'Exec=kolvane %f' "$share/applications/kolvane.desktop" || { echo "the program opens no file" && exit 1; }
grep -qF "<mediatype>$type</mediatype>" "$share/metainfo/org.kolvane.Kolvane.metainfo.xml"

icon=$(sed -n 's/^Icon=//p' "$share/applications/kolvane.desktop")
[ -s "$share/icons/hicolor/scalable/apps/$icon.svg" ]
