#!/bin/sh
# Builds and runs the small host against an installed tree, by find_package.
# Usage: find_package.sh TREE WORK_DIR CMAKE_ARGUMENT...
set -eu
tree=$1
work=$2
shift 2
rm -rf "$work"
cmake -S "$(dirname "$0")/host" -B "$work" -DCMAKE_PREFIX_PATH="$tree" "$@" >/dev/null
cmake --build "$work" >/dev/null
test "$("$work/small_host" 2>/dev/null)" = "se_lib_beamv1.14"
