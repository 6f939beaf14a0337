#!/bin/sh
# Builds and runs the small host against an installed tree, by pkg-config and nothing else.
# Usage: pkg_config.sh TREE WORK_DIR CXX
set -eu
tree=$1
work=$2
cxx=$3
rm -rf "$work"
mkdir -p "$work"
pc=$(find "$tree" -name se_wrapper.pc)
# shellcheck disable=SC2046
"$cxx" -std=c++17 "$(dirname "$0")/host/small_host.cpp" -o "$work/small_host" \
    $(PKG_CONFIG_PATH=$(dirname "$pc") pkg-config --cflags --libs se_wrapper)
cp -r "$(find "$tree" -type d -name selibs)" "$work/selibs"
test "$("$work/small_host" 2>/dev/null)" = "se_lib_beamv1.14"
