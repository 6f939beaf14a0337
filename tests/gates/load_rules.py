#!/usr/bin/env python3
"""Rules for how a built file is loaded: calls are bound at load time, the tables for them are read-only afterwards, no
text is relocated, no stack is executable, a program can be loaded at any address, and libraries are looked for in
folders relative to the file alone. An empty entry of a runpath is the current folder, an absolute one may be writable
for somebody else.

Usage: load_rules.py FILE|FOLDER...  the ELF files among these and below these folders
       load_rules.py --list FILE     those whose names are the lines of a file
prints what breaks a rule; exit code 1 if there is something
"""
import pathlib
import re
import subprocess
import sys

MAGIC = b"\x7fELF"


def linked_files(arguments):
    if arguments[0] == "--list":
        return [pathlib.Path(line) for line in pathlib.Path(arguments[1]).read_text().split()]
    paths = [pathlib.Path(argument) for argument in arguments]
    below = [file for path in paths if path.is_dir() for file in sorted(path.rglob("*"))]
    return [file for file in below if file.is_file() and not file.is_symlink() and is_elf(file)] + \
           [path for path in paths if not path.is_dir()]


def is_elf(path):
    with path.open("rb") as file:
        return file.read(len(MAGIC)) == MAGIC


def headers(paths):
    """What readelf says of each file."""
    text = subprocess.run(["readelf", "-Wld", *paths], check=True, capture_output=True, text=True).stdout
    parts = re.split(r"^File: (.*)$", text, flags=re.MULTILINE) if len(paths) > 1 else ["", str(paths[0]), text]
    return zip(parts[1::2], parts[2::2])


def broken_rules(header):
    if not re.search(r"\(FLAGS_1\).*\bNOW\b", header):
        yield "calls are not bound at load time; link with -z now"
    if "GNU_RELRO" not in header:
        yield "relocated tables stay writable; link with -z relro"
    if "TEXTREL" in header:
        yield "text is relocated; compile with -fPIC"
    if not re.search(r"GNU_STACK(\s+0x[0-9a-f]+){5}\s+RW\s", header):
        yield "the stack is executable; link with -z noexecstack"
    if re.search(r"Elf file type is EXEC", header):
        yield "it is loaded at a fixed address; link with -pie"
    for runpath in re.findall(r"\((?:RPATH|RUNPATH)\).*\[(.*)\]", header):
        for entry in runpath.split(":"):
            if entry != "$ORIGIN" and not entry.startswith("$ORIGIN/"):
                yield f"runpath entry '{entry}' does not begin with $ORIGIN"


def main(arguments):
    files = linked_files(arguments)
    missing = [f"{path}: is not built" for path in files if not path.is_file()]
    built = [path for path in files if path.is_file()]
    broken = [f"{path}: {rule}" for path, header in headers(built) for rule in broken_rules(header)] if built else []
    print("\n".join(missing + broken) or f"{len(built)} files follow every rule")
    return bool(missing or broken or not built)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
