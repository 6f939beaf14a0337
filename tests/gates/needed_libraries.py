#!/usr/bin/env python3
"""The libraries depend on libstdc++ and libc alone, and on each other.

Usage: needed_libraries.py [--and NAME] LIBRARY...  prints every other library that one needs; exit code 1 if there is one
"""
import re
import subprocess
import sys

ALLOWED = re.compile(r"(libstdc\+\+|libgcc_s|libc|libm|ld-linux-x86-64|libcommon)\.so\.\d+")


def needed(library):
    text = subprocess.run(["readelf", "-dW", library], check=True, capture_output=True, text=True).stdout
    return re.findall(r"\(NEEDED\).*\[(.*)\]", text)


if __name__ == "__main__":
    arguments = sys.argv[1:]
    extra = arguments[1] if arguments[0] == "--and" else ""
    others = [f"{library} needs {name}" for library in arguments[2 if extra else 0:] for name in needed(library)
              if not ALLOWED.fullmatch(name) and not (extra and name.startswith(extra + ".so."))]
    print("\n".join(others) or "nothing but libstdc++ and libc")
    sys.exit(1 if others else 0)
