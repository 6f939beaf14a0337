#!/usr/bin/env python3
"""Dependencies point downwards only: each folder includes what docs/architecture.md allows and nothing else.

Usage: include_rule.py ROOT. Prints every include that breaks the rule; exit code 1 if there is one.
"""
import pathlib
import re
import sys

TABLE = "docs/architecture.md"
HEADER = "| folder | what | may include |"
PATH = re.compile(r"`([^`]+)`")
PROPERTY_TREE = re.compile(r"common/(property_|properties|config)")
COMMAND_LINE = re.compile(r"CLI/")
INCLUDE = re.compile(r'^\s*#\s*include\s+(["<])([^">]+)[">]')


class Rule:
    """A row of the table: what one folder may include."""

    def __init__(self, allowed):
        self.allowed = [path.rstrip("/") for path in PATH.findall(allowed)]
        self.refused = [pattern for words, pattern in (("without the property tree", PROPERTY_TREE),
                                                       ("without a command line", COMMAND_LINE)) if words in allowed]

    def allows(self, included, is_system):
        if any(pattern.match(included) for pattern in self.refused):
            return False
        return is_system or any(below(included, path) for path in self.allowed)


def folder_of(path, rules):
    return max((folder for folder in rules if below(path, folder)), key=len, default=None)


def read_rules(document):
    rows = document.read_text().split(HEADER, 1)[1].split("\n\n", 1)[0].splitlines()[2:]
    for row in rows:
        folders, _, allowed = (cell.strip() for cell in row.strip("|").split("|"))
        for folder in PATH.findall(folders):
            yield folder.rstrip("/"), Rule(allowed)


def below(path, folder):
    return path == folder or path.startswith(folder + "/")


def violations(root, rules):
    tops = sorted({folder.split("/")[0] for folder in rules})
    sources = [p for top in tops for p in sorted((root / top).rglob("*")) if p.suffix in (".h", ".cpp", ".inl")]
    for source in sources:
        name = source.relative_to(root).as_posix()
        folder = folder_of(name, rules)
        for number, line in enumerate(source.read_text().splitlines(), 1):
            found = INCLUDE.match(line)
            if not found or folder_of(found.group(2), rules) == folder:
                continue
            if not rules[folder].allows(found.group(2), found.group(1) == "<"):
                yield f"{name}:{number}: {folder} must not include {found.group(2)} ({TABLE})"


if __name__ == "__main__":
    root = pathlib.Path(sys.argv[1])
    broken = list(violations(root, dict(read_rules(root / TABLE))))
    print("\n".join(broken) if broken else "every include points downwards")
    sys.exit(1 if broken else 0)
