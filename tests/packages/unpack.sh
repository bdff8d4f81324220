#!/usr/bin/env bash
# Makes the Debian packages and unpacks them: unpack.sh BUILD_FOLDER CPACK, into BUILD_FOLDER/packages/root.
set -euo pipefail
cd "$1"
rm -rf packages
mkdir packages
"$2" -G DEB >packages/log 2>&1 || {
  tail -n 30 packages/log
  exit 1
}
mkdir packages/root
for package in packages/*.deb; do dpkg-deb -x "$package" packages/root; done
