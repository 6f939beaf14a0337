#!/usr/bin/env python3
"""The completion in bash offers the commands and options of the man page, and files where there is neither.

Usage: completion.py COMPLETION PAGE SE_HOST. Prints every difference; exit code 1 if there is one.
"""
import os
import pathlib
import re
import subprocess
import sys

from man_page import in_page

SCRIPT = """
. "$1"; program=$2; shift 2
COMP_WORDS=(se_host "$@"); COMP_CWORD=$#
_se_host "$program" "${!#}" "${COMP_WORDS[-2]}"
printf '%s\\n' "${COMPREPLY[@]}"
"""


def offered(completion, program, *words):
    done = subprocess.run(["bash", "-euc", SCRIPT, "-", completion, program, *words],
                          capture_output=True, text=True, check=True)
    return set(done.stdout.split())


def command_of(usage):
    """("diags", "set") of "se_host diags set NAME=VALUE..."."""
    return tuple(re.match(r"se_host((?: [a-z][a-z-]*)*)", usage).group(1).split())


def differences(completion, program, page):
    options = {command_of(usage): {flag for flag, _ in found} for usage, found in page.items()}
    for command, flags in options.items():
        below = {other[len(command)] for other in options if len(other) > len(command) and other[:len(command)] == command}
        for typed, wanted in (("", below), ("--", flags | {"--help"})):
            found = offered(completion, program, *command, typed)
            if found != wanted:
                yield f"se_host {' '.join(command)} {typed}: offered and not in the page {sorted(found - wanted)}, " \
                      f"in the page and not offered {sorted(wanted - found)}"
    for words, wanted in ((("pro",), {"process"}), (("diags", "wa"), {"watch"}), (("process", "in.wav", "--far-end-c"),
                          {"--far-end-channel"}), (("nothing", "x"), set())):
        found = offered(completion, program, *words)
        if found != wanted:
            yield f"se_host {' '.join(words)}: {sorted(found)} instead of {sorted(wanted)}"


if __name__ == "__main__":
    script, path, host = sys.argv[1:]
    broken = list(differences(os.path.abspath(script), os.path.abspath(host), in_page(pathlib.Path(path).read_text())))
    print("\n".join(broken) if broken else "the completion offers what the page lists")
    sys.exit(1 if broken else 0)
