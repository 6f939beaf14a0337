# shellcheck shell=bash disable=SC2034
# The Debian packages that each command needs, and their installation. Source it, then: require_packages package...

BUILD_PACKAGES=(g++ cmake ninja-build pkg-config)
TOOL_PACKAGES=(libsndfile1-dev libsamplerate0-dev libcli11-dev nlohmann-json3-dev libboost-dev gnuplot-nox
    libkissfft-dev libspa-0.2-dev libsqlite3-dev libxxhash-dev)
# make: the package test and README's plain CMake lines use CMake's default generator.
# python3-*: the tests of python/.
TEST_PACKAGES=(libgtest-dev libbenchmark-dev python3 abigail-tools binutils qemu-user libspeexdsp-dev groff-base make git
    python3-pytest python3-pytest-forked python3-numpy python3-matplotlib python3-venv python3-setuptools python3-wheel
    pipewire pipewire-bin wireplumber dbus-daemon parallel)
# The job scheduler on which `./check slurm` runs a sweep.
SERVICE_PACKAGES=(slurm-wlm munge)
FORMAT_PACKAGES=(clang-format)
CLANG_PACKAGES=(clang clang-tidy)
FUZZ_PACKAGES=(clang libclang-rt-14-dev)
# The build dependencies of debian/control beside those above.
PACKAGE_PACKAGES=(debhelper dpkg-dev fakeroot lintian xz-utils dh-python pybuild-plugin-pyproject python3 python3-setuptools)
# Recordings of people, and what decodes them.
SPEECH_PACKAGES=(asterisk-core-sounds-en-g722 asterisk-core-sounds-es-g722 asterisk-core-sounds-fr-g722
    asterisk-core-sounds-it-g722 asterisk-core-sounds-ru-g722 pocketsphinx-testdata ffmpeg)
FRESH_PACKAGES=(debootstrap)
PEER_PACKAGES=(libavcodec-dev libavutil-dev libswresample-dev libfftw3-dev libkissfft-dev libliquid-dev libvolk2-dev
    libsamplerate0-dev libspeexdsp-dev libboost-dev libcli11-dev nlohmann-json3-dev gnuplot-nox)

# Installs what is missing, and prints nothing when there is nothing to do. A user who may not install gets one line
# that says what to install.
require_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "$0: packages are missing; install them as root: apt-get install --no-install-recommends ${missing[*]}" >&2
            return 1
        }
        as_root=(sudo)
    fi
    echo "Installing: ${missing[*]}"
    local log
    log=$(mktemp)
    if ! { "${as_root[@]}" apt-get update -qq &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"; } \
        >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        echo "$0: these packages could not be installed: ${missing[*]}" >&2
        return 1
    fi
    rm -f "$log"
}
