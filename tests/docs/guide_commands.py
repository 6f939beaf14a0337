#!/usr/bin/env python3
"""The commands of a guide do what the guide shows.

Usage: guide_commands.py GUIDE PROGRAMS [CODE...]. Runs every command of the guide's ```console blocks in
order, all in one empty folder, with the folder PROGRAMS in front of the PATH, and compares what it prints,
errors included:

  $ command      must end with exit code 0; a backslash at the end goes on in the next line
  ...            stands for any lines, or none; within a line, for any text
    took 0.61 s  a line that begins with "took" differs from machine to machine: its numbers are not compared
  -26.8          a number with a point may be off by a hundredth of it: mathematical libraries differ
  ~/tuning       the folder in which the commands run

The guide's ```cpp blocks must stand, as they are, in one of the files CODE. Blocks of other languages are
left alone. Prints every difference; exit code 1 if there is one.
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile

BLOCK = re.compile(r"^```(\w*)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
NUMBER = re.compile(r"\d+(\.\d+)?")
DECIMAL = re.compile(r"-?\d+\.\d+")


def blocks(guide, language):
    return [text for found, text in BLOCK.findall(guide) if found == language]


def commands(block):
    """Pairs of a command and the lines that it prints."""
    found = []
    lines = iter(block.splitlines())
    for line in lines:
        if line.startswith("$ "):
            while line.endswith("\\"):
                line += "\n" + next(lines)
            found.append((line[2:], []))
        elif found:
            found[-1][1].append(line)
        else:
            raise SystemExit(f"a console block begins with output: {line}")
    return found


def comparable(line):
    line = line.rstrip()
    return NUMBER.sub("#", line) if line.lstrip().startswith("took") else line


def pattern_of(line):
    if line.strip() == "...":
        return r"(?:.*\n)*"
    texts = [re.escape(text).replace(r"\.\.\.", ".*") for text in DECIMAL.split(comparable(line))]
    return r"(-?\d+\.\d+)".join(texts) + r"\n"


def agree(shown, printed):
    match = re.fullmatch("".join(map(pattern_of, shown)), "".join(comparable(line) + "\n" for line in printed))
    expected = [number for line in shown for number in DECIMAL.findall(comparable(line))]
    return match is not None and all(abs(float(one) - float(other)) <= 0.01 * abs(float(one))
                                     for one, other in zip(expected, match.groups()))


def differences(guide, programs):
    environment = dict(os.environ, PATH=f"{programs}:{os.environ['PATH']}", LC_ALL="C.UTF-8")
    everything = [pair for block in blocks(guide, "console") for pair in commands(block)]
    if not everything:
        yield "there is no command in it"
    with tempfile.TemporaryDirectory(dir=os.path.realpath(tempfile.gettempdir())) as folder:
        for command, shown in everything:
            done = subprocess.run(["bash", "-c", command], cwd=folder, env=environment, text=True, check=False,
                                  stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
            printed = done.stdout.replace(folder, "~/tuning")
            if done.returncode != 0 or not agree(shown, printed.splitlines()):
                yield (f"$ {command}\nexit code {done.returncode}\n--- the guide shows\n" + "\n".join(shown) +
                       f"\n--- it prints\n{printed}")


def missing_code(guide, files):
    sources = [path.read_text() for path in files]
    for code in blocks(guide, "cpp"):
        if not any(code in source for source in sources):
            yield f"this stands in none of the files that are compiled:\n{code}"


if __name__ == "__main__":
    text = pathlib.Path(sys.argv[1]).read_text()
    broken = list(differences(text, pathlib.Path(sys.argv[2]).resolve()))
    broken += missing_code(text, [pathlib.Path(name) for name in sys.argv[3:]])
    print("\n\n".join(broken) if broken else "every command does what the guide shows")
    sys.exit(1 if broken else 0)
