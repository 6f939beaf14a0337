#!/usr/bin/env python3
"""Rules for how every source is compiled: functions with arrays on their stack check it before they return, calls to the
C library check the sizes that the compiler knows (where it optimises), and every target of an indirect jump is marked,
which the object file states in its note.

Usage: compile_rules.py compile_commands.json  prints what breaks a rule; exit code 1 if there is something
"""
import json
import pathlib
import re
import shlex
import subprocess
import sys

MARKED = "x86 feature: IBT, SHSTK"


def last(arguments, prefix, otherwise):
    return next((argument for argument in reversed(arguments) if argument.startswith(prefix)), otherwise)


def broken_by_command(arguments):
    if last(arguments, "-fstack-protector", "") != "-fstack-protector-strong":
        yield "compile with -fstack-protector-strong"
    if last(arguments, "-fcf-protection", "") not in ("-fcf-protection", "-fcf-protection=full"):
        yield "compile with -fcf-protection"
    if last(arguments, "-O", "-O0") != "-O0" and last(arguments, "-D_FORTIFY_SOURCE", "") < "-D_FORTIFY_SOURCE=2":
        yield "compile with -D_FORTIFY_SOURCE=2"


def built_object(command):
    arguments = shlex.split(command["command"])
    return pathlib.Path(command["directory"], arguments[arguments.index("-o") + 1])


def notes(objects):
    text = subprocess.run(["readelf", "-Wn", *objects], check=True, capture_output=True, text=True).stdout
    parts = re.split(r"^File: (.*)$", text, flags=re.MULTILINE) if len(objects) > 1 else ["", objects[0], text]
    return dict(zip(parts[1::2], parts[2::2]))


def main(database):
    commands = json.loads(pathlib.Path(database).read_text())
    broken = [f"{command['file']}: {rule}" for command in commands
              for rule in broken_by_command(shlex.split(command["command"]))]
    objects = [str(path) for command in commands if (path := built_object(command)).suffix == ".o" and path.is_file()]
    broken += [f"{path}: its note does not say '{MARKED}'" for path, note in notes(objects).items()
               if MARKED not in note]
    print("\n".join(broken) or f"{len(commands)} sources and {len(objects)} object files follow every rule")
    return bool(broken or not objects)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
