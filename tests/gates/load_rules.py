#!/usr/bin/env python3
"""Rules for the dynamic loading of a built file: calls are bound at load time, the tables for them are read-only
afterwards, no text is relocated, and libraries are looked for in folders relative to the file alone.

Usage: load_rules.py FILE...  prints what breaks a rule; exit code 1 if there is something
"""
import re
import subprocess
import sys


def readelf(option, path):
    return subprocess.run(["readelf", "-W", option, path], check=True, capture_output=True, text=True).stdout


def broken_rules(path):
    dynamic = readelf("-d", path)
    if not re.search(r"\(FLAGS_1\).*\bNOW\b", dynamic):
        yield "calls are not bound at load time; link with -z now"
    if "GNU_RELRO" not in readelf("-l", path):
        yield "relocated tables stay writable; link with -z relro"
    if "TEXTREL" in dynamic:
        yield "text is relocated; compile with -fPIC"
    for runpath in re.findall(r"\((?:RPATH|RUNPATH)\).*\[(.*)\]", dynamic):
        for entry in runpath.split(":"):
            if entry != "$ORIGIN" and not entry.startswith("$ORIGIN/"):
                yield f"runpath entry '{entry}' does not begin with $ORIGIN"


if __name__ == "__main__":
    broken = [f"{path}: {rule}" for path in sys.argv[1:] for rule in broken_rules(path)]
    print("\n".join(broken) or f"{len(sys.argv) - 1} files follow every rule")
    sys.exit(1 if broken else 0)
