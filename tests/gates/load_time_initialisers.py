#!/usr/bin/env python3
"""The code that a library runs while it is loaded: the initialisers of the named files, and no others.

Usage: load_time_initialisers.py LIBRARY [SOURCE_FILE...]

Each source file with an object that has to be made or released at run time has one entry in .init_array and one
local function _GLOBAL__sub_I_<file>. One more entry belongs to the compiler's own start-up file.
"""
import re
import subprocess
import sys

ADDRESS_SIZE = 8
COMPILERS_OWN = 1


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def files_with_initialisers(library):
    return sorted(set(re.findall(r" t _GLOBAL__sub_I_(\S+\.cpp)$", output_of("nm", library), re.MULTILINE)))


def initialisers(library):
    section = re.search(r"\.init_array\s+INIT_ARRAY\s+\S+ \S+ (\S+)", output_of("readelf", "-SW", library))
    return int(section.group(1), 16) // ADDRESS_SIZE - COMPILERS_OWN if section else 0


def main():
    library, expected = sys.argv[1], sorted(sys.argv[2:])
    found, count = files_with_initialisers(library), initialisers(library)
    if found == expected and count == len(expected):
        print(f"{library}: {', '.join(expected) or 'nothing'} at load time")
        return 0
    print(f"{library} runs {count} initialisers while it is loaded, in: {', '.join(found) or 'no named file'}")
    print(f"  only these may have one: {', '.join(expected) or 'none'}; make other objects constant expressions")
    return 1


sys.exit(main())
