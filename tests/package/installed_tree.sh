#!/bin/sh
# Installs the build, moves the tree, and builds and runs a small host against it, both ways.
# Usage: installed_tree.sh BUILD_DIR CXX
set -eu
build=$1
cxx=$2
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/first" >/dev/null
mv "$work/first" "$work/tree"
lib=$(dirname "$(find "$work/tree" -name 'libse_wrapper.so')")

run() {
    cp -r "$work/tree/bin/selibs" "$(dirname "$1")/selibs"
    test "$(LD_LIBRARY_PATH=$lib "$1" 2>/dev/null)" = "se_lib_beamv1.14"
}

echo "with find_package"
cmake -S "$here/host" -B "$work/cmake" -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_PREFIX_PATH="$work/tree" >/dev/null
cmake --build "$work/cmake" >/dev/null
run "$work/cmake/small_host"

echo "with pkg-config"
mkdir "$work/pkgconfig"
# shellcheck disable=SC2046
"$cxx" -std=c++17 "$here/host/small_host.cpp" -o "$work/pkgconfig/small_host" \
    $(PKG_CONFIG_PATH="$lib/pkgconfig" pkg-config --cflags --libs se_wrapper)
run "$work/pkgconfig/small_host"

echo "the installed program"
"$work/tree/bin/se_host" info >/dev/null

echo "its man page"
groff -mdoc -Tutf8 "$work/tree/share/man/man1/se_host.1" >/dev/null
