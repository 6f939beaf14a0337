#!/usr/bin/env bash
# The README's commands on a Debian that holds git and nothing else: makes such a root in a scratch folder, clones the
# project into it and runs ./demo, ./check and the README's CMake lines there, as root and as a user without sudo.
# Only what is committed is in the clone. Needs root, debootstrap and this machine's apt sources.
set -euo pipefail
cd "$(dirname "$0")/../.."

if [ "$(id -u)" -ne 0 ]; then
    echo "./check --fresh: making a Debian root needs the rights of root" >&2
    exit 1
fi
[ -z "$(git status --porcelain)" ] || echo "note: changes that are not committed are not in the clone"

scratch=$(mktemp -d "${TMPDIR:-/tmp}/libse_wrapper-fresh.XXXXXX")
trap 'rm -rf --one-file-system "$scratch"' EXIT
root=$scratch/debian
log=$scratch/debootstrap.log
begin=$SECONDS

release=$(. /etc/os-release && echo "$VERSION_CODENAME")

mirror() {
    # shellcheck disable=SC2016
    apt-get indextargets --format '$(RELEASE) $(COMPONENT) $(REPO_URI)' |
        awk -v release="$release" '$1 == release && $2 == "main" { print $3; exit }'
}

make_root() {
    local uri
    uri=$(mirror)
    if [ -z "$uri" ]; then
        apt-get update -qq
        uri=$(mirror)
    fi
    debootstrap --variant=minbase --include=ca-certificates,git "$release" "$root" "$uri" >"$log" 2>&1 || {
        tail -n 20 "$log"
        echo "./check --fresh: debootstrap failed" >&2
        return 1
    }
    copy_apt_sources
    chroot "$root" useradd --create-home --shell /bin/bash builder
    git clone --quiet . "$root/root/project"
    git clone --quiet . "$root/home/builder/project"
    chroot "$root" chown -R builder: /home/builder
}

# Its own sources name only the mirror that it came from: security updates are among this machine's.
copy_apt_sources() {
    local file
    rm -f "$root/etc/apt/sources.list"
    for file in /etc/apt/sources.list /etc/apt/sources.list.d /etc/apt/keyrings /etc/apt/trusted.gpg.d \
        /usr/share/keyrings /etc/resolv.conf /etc/hosts; do
        [ ! -e "$file" ] || cp -rL "$file" "$root$(dirname "$file")/"
    done
    grep -rlE '^ *Acquire::' /etc/apt/apt.conf.d 2>/dev/null | xargs -r cp -t "$root/etc/apt/apt.conf.d" || true
}

# in_root <user> <command>: in a login shell, in the clone. The mounts end with the command.
in_root() {
    # shellcheck disable=SC2016
    unshare --mount bash -euc '
        mount -t proc proc "$1/proc"
        mount --rbind /dev "$1/dev"
        exec chroot "$1" su - "$2" -c "cd project && export CMAKE_BUILD_PARALLEL_LEVEL=$(nproc) && $3"
    ' - "$root" "$1" "$2"
}

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
