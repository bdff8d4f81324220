#!/usr/bin/env bash
# Makes the Debian packages and unpacks them: unpack.sh BUILD_FOLDER CMAKE CPACK, into BUILD_FOLDER/packages/root;
# BUILD_FOLDER/packages/prefix is the result of cmake --install.
set -euo pipefail
cd "$1"
rm -rf packages
mkdir packages
for step in "$2 --install . --prefix $PWD/packages/prefix" "$3 -G DEB"; do
  # shellcheck disable=SC2086
  $step >packages/log 2>&1 || {
    tail -n 30 packages/log
    exit 1
  }
done
mkdir packages/root
for package in packages/*.deb; do dpkg-deb -x "$package" packages/root; done
