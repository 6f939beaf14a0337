# shellcheck shell=bash
# A Debian of this machine's release in a folder, with nothing in it but what debootstrap takes. Needs root, debootstrap and
# this machine's apt sources. Source it, then: make_debian_root folder [package...]; in_debian_root folder command...

release=$(. /etc/os-release && echo "$VERSION_CODENAME")

mirror() {
    # shellcheck disable=SC2016
    apt-get indextargets --format '$(RELEASE) $(COMPONENT) $(REPO_URI)' |
        awk -v release="$release" '$1 == release && $2 == "main" { print $3; exit }'
}

make_debian_root() {
    local root=$1 uri packages
    shift
    if [ "$(id -u)" -ne 0 ]; then
        echo "$0: making a Debian root needs the rights of root" >&2
        return 1
    fi
    uri=$(mirror)
    if [ -z "$uri" ]; then
        apt-get update -qq
        uri=$(mirror)
    fi
    packages=$(IFS=,; echo "ca-certificates${*:+,$*}")
    debootstrap --variant=minbase --include="$packages" "$release" "$root" "$uri" >"$root.log" 2>&1 || {
        tail -n 20 "$root.log"
        echo "$0: debootstrap failed" >&2
        return 1
    }
    copy_apt_sources "$root"
}

# Its own sources name only the mirror that it came from: security updates are among this machine's.
copy_apt_sources() {
    local root=$1 file
    rm -f "$root/etc/apt/sources.list"
    for file in /etc/apt/sources.list /etc/apt/sources.list.d /etc/apt/keyrings /etc/apt/trusted.gpg.d \
        /usr/share/keyrings /etc/resolv.conf /etc/hosts; do
        [ ! -e "$file" ] || cp -rL "$file" "$root$(dirname "$file")/"
    done
    grep -rlE '^ *Acquire::' /etc/apt/apt.conf.d 2>/dev/null | xargs -r cp -t "$root/etc/apt/apt.conf.d" || true
}

# The mounts end with the command.
in_debian_root() {
    # shellcheck disable=SC2016
    unshare --mount bash -euc '
        mount -t proc proc "$1/proc"
        mount --rbind /dev "$1/dev"
        exec chroot "$@"
    ' - "$@"
}
