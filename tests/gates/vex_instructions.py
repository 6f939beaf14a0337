#!/usr/bin/env python3
"""Instructions with a VEX or EVEX prefix stand in functions that carry AVX in their name, those with EVEX in
functions that carry AVX512, and nowhere else: any other function runs on processors that would stop at them.

Usage: vex_instructions.py LIBRARY...               exit code 1 if an instruction breaks the rule
       vex_instructions.py --expect-avx LIBRARY...  exit code 1 unless functions of every kind in AVX_FUNCTIONS have
                                                    such instructions: shows that the gate sees them
"""
import re
import subprocess
import sys

# Patterns of their names. The AVX entry points of the convolution only jump.
AVX_FUNCTIONS = [f"convolve_{types}_{instructions}$"
                 for types in ("i16_i16", "i16_i32")
                 for instructions in ("avx", "avx2", "avxvnni", "avx512vnni")]
AVX_FUNCTIONS += ["7fftpack.*3avx", "7fftpack.*4avx2", "20multiplyComplex_avx2", "17deinterleave_avx2"]

FUNCTION = re.compile(r"^[0-9a-f]+ <(.+)>:$")
INSTRUCTION = re.compile(r"^\s*[0-9a-f]+:\t((?:[0-9a-f]{2} )+)\s*(\S.*)$")
PREFIXES = {"26", "2e", "36", "3e", "64", "65", "67"}  # those that may stand before VEX and EVEX
NEEDED_IN_NAME = {"c4": "avx", "c5": "avx", "62": "avx512"}  # in 64-bit code these bytes begin nothing else


def needed_in_name(octets):
    first = next((octet for octet in octets if octet not in PREFIXES), "")
    return NEEDED_IN_NAME.get(first)


def vector_instructions(library):
    """Function, what its name must contain, instruction."""
    text = subprocess.run(["objdump", "-d", "--insn-width=16", library],
                          check=True, capture_output=True, text=True).stdout
    function = "?"
    for line in text.splitlines():
        if found := FUNCTION.match(line):
            function = found.group(1)
        elif (found := INSTRUCTION.match(line)) and (needed := needed_in_name(found.group(1).split())):
            yield function, needed, found.group(2)


def main(arguments):
    expect_avx = arguments[:1] == ["--expect-avx"]
    found = [(library, *pair) for library in arguments[expect_avx:] for pair in vector_instructions(library)]
    if expect_avx:
        functions = {function for _, function, _, _ in found}
        missing = {part for part in AVX_FUNCTIONS if not any(re.search(part, name) for name in functions)}
        print("\n".join(f"no AVX instruction found in {name}" for name in sorted(missing)) or "all found")
        return bool(missing)
    broken = [row for row in found if row[2] not in row[1].lower()]
    print("\n".join(f"{library}: {function}: {text}" for library, function, _, text in broken)
          or f"{len(found)} AVX instructions, all in functions named so")
    return bool(broken)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
