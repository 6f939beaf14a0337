#!/bin/sh
# Includes the source tree in a project with settings of its own, by add_subdirectory and by FetchContent; the project
# builds, runs and installs a host.
# Usage: subproject.sh SOURCE_DIR WORK_DIR CMAKE_ARGUMENT...
set -eu
source=$1
work=$2
shift 2
rm -rf "$work"
for fetch_content in OFF ON; do
    echo "FETCH_CONTENT=$fetch_content"
    cmake -S "$(dirname "$0")/parent" -B "$work" -DCMAKE_CXX_FLAGS=-O0 \
        -DSE_WRAPPER_SOURCE="$source" -DFETCH_CONTENT="$fetch_content" "$@" >/dev/null
    cmake --build "$work" --target small_host >/dev/null
    test "$("$work/programs/small_host" 2>/dev/null)" = "se_lib_beamv1.14"
    cmake --install "$work" --prefix "$work/installed" >/dev/null
    test "$(find "$work/installed" -type f -printf '%P ')" = "bin/small_host "
done
