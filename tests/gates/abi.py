#!/usr/bin/env python3
"""The binary interface of libse_host is that of its baseline: functions, their arguments, the layouts of their structs.

Usage: abi.py BASELINE LIBRARY          prints what differs; exit code 1 if something does, or cannot be compared
       abi.py --renew BASELINE LIBRARY  writes the baseline
"""
import pathlib
import shlex
import shutil
import subprocess
import sys
import tempfile

NEEDED = "apt-get install abigail-tools"
RULE = """An addition at the end is a new minor version, everything else a new major version and a new name of the library (SOVERSION);
CHANGELOG.md names either. Then:"""
OPTIONS = ["--exported-interfaces-only", "--no-show-locs"]
# A program knows the handle by its address alone.
OPAQUE = "[suppress_type]\n  name = se_host_t\n  drop = yes\n"


def require(program):
    if not shutil.which(program):
        sys.exit(f"{program} is missing, so the interface cannot be compared. On Debian: {NEEDED}")


def main(arguments):
    renew = arguments[:1] == ["--renew"]
    baseline, library = arguments[renew:]
    command = shlex.join([sys.argv[0], "--renew", baseline, library])
    require("abidw")
    require("abidiff")
    with tempfile.NamedTemporaryFile("w") as suppressions:
        suppressions.write(OPAQUE)
        suppressions.flush()
        options = [*OPTIONS, "--suppressions", suppressions.name]
        if renew:
            subprocess.run(["abidw", *options, "--no-corpus-path", "--no-comp-dir-path", "--out-file", baseline, library],
                           check=True)
            return 0
        if not pathlib.Path(baseline).is_file():
            sys.exit(f"there is no baseline {baseline}; write it with: {command}")
        done = subprocess.run(["abidiff", *options, baseline, library], capture_output=True, text=True)
    print(done.stdout + done.stderr, end="")
    if done.returncode != 0:
        print(RULE, command, sep="\n")
        return 1
    print("the interface is that of the baseline")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
