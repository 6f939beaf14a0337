# shellcheck shell=bash
# Building a preset. Source it from a script that runs with `set -o pipefail`, then: build_preset preset

# Reads a build's output. On a terminal it shows the percentage, elsewhere nothing.
show_percentage() {
    local line label=$1
    while IFS= read -r line; do
        if [ -t 1 ] && [[ $line =~ ^\[([0-9]+)/([0-9]+)\] ]]; then
            printf '\r%s: %3d %%' "$label" $((100 * BASH_REMATCH[1] / BASH_REMATCH[2]))
        fi
    done
    [ ! -t 1 ] || printf '\r\033[K'
}

# The whole output goes to build/<preset>.log; of a build that failed its end is shown.
build_preset() {
    local preset=$1 log=build/$1.log
    mkdir -p build
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset"; } 2>&1 | tee "$log" | show_percentage "building"; then
        tail -n 60 "$log"
        echo "$0: the build failed; $log has all of its output" >&2
        return 1
    fi
}
