# Installs the Debian packages that are missing. Source it, then: require_packages "purpose" package...
# Quiet when there is nothing to do.

require_packages() {
    local purpose=$1
    shift
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "Missing for $purpose: ${missing[*]}. Install them as root: apt-get install ${missing[*]}" >&2
            return 1
        }
        as_root=(sudo)
    fi
    echo "Installing for $purpose: ${missing[*]}"
    local log
    log=$(mktemp)
    if ! { "${as_root[@]}" apt-get update -qq &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"; } \
        >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        echo "The packages could not be installed: ${missing[*]}" >&2
        return 1
    fi
    rm -f "$log"
}

BUILD_PACKAGES=(g++ cmake ninja-build pkg-config)
TOOL_PACKAGES=(libsndfile1-dev libsamplerate0-dev libcli11-dev nlohmann-json3-dev libboost-dev gnuplot-nox libkissfft-dev)
TEST_PACKAGES=(libgtest-dev libbenchmark-dev python3 binutils qemu-user libspeexdsp-dev groff-base)
CHECK_PACKAGES=(clang clang-format clang-tidy)
PEER_PACKAGES=(libavcodec-dev libavutil-dev libswresample-dev libfftw3-dev libkissfft-dev libliquid-dev libvolk2-dev
    libsamplerate0-dev libspeexdsp-dev libboost-dev libcli11-dev nlohmann-json3-dev gnuplot-nox)
