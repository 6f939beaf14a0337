#!/usr/bin/env python3
"""Instructions with a VEX or EVEX prefix stand in functions that carry AVX in their name, and nowhere else:
any other function runs on processors that would stop at them.

Usage: vex_gate.py LIBRARY...               exit code 1 if an instruction breaks the rule
       vex_gate.py --expect-avx LIBRARY...  exit code 1 unless functions of every kind in AVX_FUNCTIONS have such
                                            instructions: shows that the gate sees them
"""
import re
import subprocess
import sys

# Parts of their names.
AVX_FUNCTIONS = ["convolve_i16_i16_AVX", "convolve_i16_i32_AVX", "7fftpack", "10widen_avx2",
                 "17narrowScaled_avx2", "14narrowQ10_avx2"]

FUNCTION = re.compile(r"^[0-9a-f]+ <(.+)>:$")
INSTRUCTION = re.compile(r"^\s*[0-9a-f]+:\t((?:[0-9a-f]{2} )+)\s*(\S.*)$")
PREFIXES = {"26", "2e", "36", "3e", "64", "65", "67"}  # those that may stand before VEX and EVEX
VECTOR_EXTENSIONS = {"c4", "c5", "62"}  # in 64-bit code these bytes begin nothing else


def has_vector_extension(octets):
    first = next((octet for octet in octets if octet not in PREFIXES), "")
    return first in VECTOR_EXTENSIONS


def vector_instructions(library):
    """Pairs of function and instruction."""
    text = subprocess.run(["objdump", "-d", "--insn-width=16", library],
                          check=True, capture_output=True, text=True).stdout
    function = "?"
    for line in text.splitlines():
        if found := FUNCTION.match(line):
            function = found.group(1)
        elif (found := INSTRUCTION.match(line)) and has_vector_extension(found.group(1).split()):
            yield function, found.group(2)


def main(arguments):
    expect_avx = arguments[:1] == ["--expect-avx"]
    found = [(library, *pair) for library in arguments[expect_avx:] for pair in vector_instructions(library)]
    if expect_avx:
        functions = {function for _, function, _ in found}
        missing = {part for part in AVX_FUNCTIONS if not any(part in function for function in functions)}
        print("\n".join(f"no AVX instruction found in {name}" for name in sorted(missing)) or "all found")
        return bool(missing)
    broken = [row for row in found if "avx" not in row[1].lower()]
    print("\n".join(f"{library}: {function}: {text}" for library, function, text in broken)
          or f"{len(found)} AVX instructions, all in functions named so")
    return bool(broken)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
