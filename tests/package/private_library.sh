#!/bin/sh
# Other libraries are called libcommon, too. Ours is not in a folder that linkers search, and a foreign one beside
# libse_wrapper is not loaded in its place.
# Usage: private_library.sh TREE
set -eu
lib=$(dirname "$(find "$1" -name libse_wrapper.so)")
strays=$(find "$lib" -maxdepth 1 -name 'libcommon*')
test -z "$strays" || { echo "in a folder that linkers search: $strays"; exit 1; }

trap 'rm -f "$lib/libcommon.so.0"' EXIT
echo "not a library" >"$lib/libcommon.so.0"
ldd "$lib/libse_wrapper.so" | grep -q 'libcommon.so.0 => .*/libse_wrapper/libcommon.so.0'
