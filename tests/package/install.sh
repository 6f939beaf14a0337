#!/bin/sh
# Installs the build into a folder and moves it to TREE: the tree must work in any place.
# Usage: install.sh BUILD_DIR TREE
set -eu
rm -rf "$2" "$2.first"
cmake --install "$1" --prefix "$2.first" >/dev/null
mv "$2.first" "$2"
