#!/usr/bin/env python3
"""debian/ has the project's version, needs every package that the tools need, and ./package installs what it needs.

Usage: debian_control.py SOURCE_DIR VERSION  prints what differs; exit code 1 if there is something
"""
import pathlib
import re
import subprocess
import sys

LISTS = ["BUILD_PACKAGES", "TOOL_PACKAGES", "PACKAGE_PACKAGES"]
ALWAYS_THERE = {"g++", "dpkg-dev", "fakeroot", "lintian", "xz-utils", "debhelper"}  # on a machine that builds packages


def package_lists(source):
    script = '. "$1"; shift; for list in "$@"; do declare -n names=$list; echo "$list ${names[*]}"; done'
    text = subprocess.run(["bash", "-euc", script, "-", source / "cmake/scripts/packages.sh", *LISTS],
                          check=True, capture_output=True, text=True).stdout
    return {line.split()[0]: set(line.split()[1:]) for line in text.splitlines()}


def differences(source, version):
    changelog = re.match(r"libse-wrapper \((.*)-\d+\)", (source / "debian/changelog").read_text())
    if changelog.group(1) != version:
        yield f"debian/changelog has version {changelog.group(1)}, CMakeLists.txt {version}"
    control = re.search(r"^Build-Depends:\n((?: .*\n)+)", (source / "debian/control").read_text(), re.MULTILINE)
    needs = set(re.findall(r"^ ([^\s,]+)", control.group(1), re.MULTILINE)) - {"debhelper-compat"}
    lists = package_lists(source)
    wanted = set.union(*lists.values()) - ALWAYS_THERE
    for name in sorted(wanted - needs):
        yield f"{name} is in cmake/scripts/packages.sh and not in Build-Depends of debian/control"
    for name in sorted(needs - wanted):
        yield f"{name} is in Build-Depends of debian/control, and in none of {', '.join(LISTS)} of cmake/scripts/packages.sh"


if __name__ == "__main__":
    found = list(differences(pathlib.Path(sys.argv[1]), sys.argv[2]))
    print("\n".join(found) or "debian/ and the build agree")
    sys.exit(1 if found else 0)
