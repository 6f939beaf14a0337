#!/usr/bin/env python3
"""Instructions with a VEX or EVEX prefix stand in functions that carry AVX in their name, those with EVEX in
functions that carry AVX512 or AVX10, and nowhere else: any other function runs on processors that would stop at them.

Usage: vex_instructions.py LIBRARY...               exit code 1 if an instruction breaks the rule
       vex_instructions.py --expect-avx LIBRARY...  exit code 1 unless every family has builds for AVX and each of
                                                    them such instructions: shows that the gate sees them
"""
import re
import subprocess
import sys

# The part of their names before the instruction set. The AVX entry points of the convolution only jump.
FAMILIES = ["convolve_body_i16_i16", "convolve_body_i16_i32", "fftpack", "multiplyComplex", "deinterleave",
            "filter_pairs", "total_pairs"]
BUILD = re.compile(rf"({'|'.join(FAMILIES)}).*?[_:](avx[0-9a-z]*)\b")

FUNCTION = re.compile(r"^[0-9a-f]+ <(.+)>:$")
INSTRUCTION = re.compile(r"^\s*[0-9a-f]+:\t((?:[0-9a-f]{2} )+)\s*(\S.*)$")
PREFIXES = {"26", "2e", "36", "3e", "64", "65", "67"}  # those that may precede VEX and EVEX
NEEDED_IN_NAME = {"c4": "avx", "c5": "avx", "62": "avx512|avx10"}  # in 64-bit code no other instruction begins with these bytes


def needed_in_name(octets):
    first = next((octet for octet in octets if octet not in PREFIXES), "")
    return NEEDED_IN_NAME.get(first)


def disassembly(library):
    return subprocess.run(["objdump", "-dC", "--insn-width=16", library],
                          check=True, capture_output=True, text=True).stdout.splitlines()


def vector_instructions(lines):
    """Function, what its name must contain, instruction."""
    function = "?"
    for line in lines:
        if found := FUNCTION.match(line):
            function = found.group(1)
        elif (found := INSTRUCTION.match(line)) and (needed := needed_in_name(found.group(1).split())):
            yield function, needed, found.group(2)


def builds(functions):
    """Family and instruction set of every function that names both."""
    return {found.groups() for name in functions if (found := BUILD.search(name))}


def missing_builds(lines):
    """The AVX builds and instructions that a library lacks."""
    all_builds = builds(found.group(1) for line in lines if (found := FUNCTION.match(line)))
    yield from sorted(f"no build of {family} for AVX" for family in FAMILIES
                      if all(family != named for named, _ in all_builds))
    seen = builds(function for function, _, _ in vector_instructions(lines))
    yield from sorted(f"no AVX instruction in {family}, {name}" for family, name in all_builds - seen)


def main(arguments):
    if arguments[0] == "--expect-avx":
        missing = [text for library in arguments[1:] for text in missing_builds(disassembly(library))]
        print("\n".join(missing) or "all found")
        return bool(missing)
    found = [(library, *row) for library in arguments for row in vector_instructions(disassembly(library))]
    broken = [row for row in found if not re.search(row[2], row[1].lower())]
    print("\n".join(f"{library}: {function}: {text}" for library, function, _, text in broken)
          or f"{len(found)} AVX instructions, all in functions named so")
    return bool(broken)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
