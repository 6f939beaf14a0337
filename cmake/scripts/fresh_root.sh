#!/usr/bin/env bash
# The README's commands on a Debian that holds git and nothing else: makes such a root in a scratch folder, clones the
# project into it and runs ./demo, ./check and the README's CMake lines there, as root and as a user without sudo.
# Only what is committed is in the clone. Needs root, debootstrap and this machine's apt sources.
set -euo pipefail
cd "$(dirname "$0")/../.."

. cmake/scripts/debian_root.sh

[ -z "$(git status --porcelain)" ] || echo "note: changes that are not committed are not in the clone"

scratch=$(mktemp -d "${TMPDIR:-/tmp}/libse_wrapper-fresh.XXXXXX")
trap 'rm -rf --one-file-system "$scratch"' EXIT
root=$scratch/debian
begin=$SECONDS

make_root() {
    make_debian_root "$root" git
    chroot "$root" useradd --create-home --shell /bin/bash builder
    git clone --quiet . "$root/root/project"
    git clone --quiet . "$root/home/builder/project"
    chroot "$root" chown -R builder: /home/builder
}

# in_root <user> <command>: in a login shell, in the clone.
in_root() { in_debian_root "$root" su - "$1" -c "cd project && export CMAKE_BUILD_PARALLEL_LEVEL=$(nproc) && $2"; }

stage() { printf '\n-- after %d s, %s: %s\n' $((SECONDS - begin)) "$1" "$2"; }

run() {
    stage "$1" "$2"
    in_root "$1" "$2" </dev/null
}

# Without the packages and without the right to install them: one line that says what to install.
refuses() {
    local output
    stage builder "$1, packages missing"
    if output=$(in_root builder "$1" </dev/null 2>&1); then
        echo "$1 succeeded without its packages" >&2
        return 1
    fi
    echo "$output"
    if [ "$(wc -l <<<"$output")" -ne 1 ] || ! grep -q 'apt-get install' <<<"$output"; then
        echo "$1 should have said in one line what to install" >&2
        return 1
    fi
}

readme_lines() { grep '^cmake ' README.md | sed 's/$/ \&\&/; $s/ &&$//' | tr '\n' ' '; }

echo "a new $release root"
make_root
refuses ./demo
refuses ./check
for user in root builder; do
    run "$user" ./demo
    run "$user" ./check
    run "$user" "{ $(readme_lines); } >plain.log 2>&1 || { tail -n 40 plain.log; exit 1; }"
done
stage everyone "all commands succeeded"
