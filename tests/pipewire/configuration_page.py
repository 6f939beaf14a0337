#!/usr/bin/env python3
"""The page about PipeWire explains each key of the configuration that is shipped, and no key of ours that there is not.

Usage: configuration_page.py ROOT
"""
import pathlib
import re
import sys

KEY = re.compile(r"(?:^|[{\s#])([a-z]+(?:[.-][a-z*]+)+)\s*=", re.MULTILINE)
STRUCTURE = re.compile(r"context\..*|(capture|source|sink|playback)\.props|aec\.args")


def main(root):
    root = pathlib.Path(root)
    page = (root / "docs/pipewire.md").read_text()
    keys = set(KEY.findall((root / "pipewire/se-echo-cancel.conf").read_text()))
    explained = set(re.findall(r"`((?:se|audio|node|log|library|media|stream|target|channelmix|nice|support)\.[a-z.*-]+)[^`]*`", page))
    known = set(re.findall(r'\{"(se\.[a-z-]+)"', (root / "pipewire/arguments.cpp").read_text()))
    shown = {"se.engine", "se.advice"}  # parameters
    problems = [f"docs/pipewire.md does not explain {key}" for key in sorted((keys | known) - explained)
                if not STRUCTURE.fullmatch(key)]
    problems += [f"there is no key {key}" for key in sorted(explained | keys)
                 if key.startswith("se.") and key not in known | shown]
    print("\n".join(problems) or f"{len(keys)} keys are explained")
    return 1 if problems or not known else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
