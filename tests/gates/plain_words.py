#!/usr/bin/env python3
"""The texts are plain technical English: no word of the list below occurs in them.

Usage: plain_words.py ROOT. Prints every line with such a word and what to write instead; exit code 1 if there is one.
Needs a git checkout; elsewhere it says so and passes.
"""
import pathlib
import re
import subprocess
import sys

INSTEAD = {
    r"s?h[e]|h(im|is|er)(self)?": "name the thing: the talker, the caller, the engineer",
    r"whoever|whomever": "name it: the caller, code that ...",
    r"in peace": "normally",
    r"the other end is gone": "the peer closed the connection",
}
WORDS = [(re.compile(rf"\b({words})\b", re.IGNORECASE), instead) for words, instead in INSTEAD.items()]
SUFFIXES = {".h", ".cpp", ".inl", ".py", ".md", ".1", ".txt", ".sh", ".cmake", ".in"}


def texts(root):
    listed = subprocess.run(["git", "-C", root, "ls-files", "-z"], capture_output=True, text=True)
    if listed.returncode != 0:
        return None
    paths = (pathlib.Path(root, name) for name in listed.stdout.split("\0") if name)
    return [p for p in paths if (p.suffix in SUFFIXES or p.suffix == "") and p.is_file() and p.name != "plain_words.py"]


def findings(paths):
    for path in paths:
        for number, line in enumerate(path.read_text(errors="replace").splitlines(), 1):
            for word, instead in WORDS:
                if found := word.search(line):
                    yield f"{path}:{number}: '{found.group()}': {instead}"


if __name__ == "__main__":
    paths = texts(sys.argv[1])
    if paths is None:
        print("no git checkout: nothing to look at")
        sys.exit(0)
    lines = list(findings(paths))
    print("\n".join(lines) if lines else "none of the words")
    sys.exit(1 if lines else 0)
