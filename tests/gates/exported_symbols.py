#!/usr/bin/env python3
"""A library exports exactly the symbols of its list in symbols/: demangled names, sorted, one on each line.

Usage: exported_symbols.py LIST LIBRARY          prints the differences; exit code 1 if there is one
       exported_symbols.py --renew LIST LIBRARY  writes the list

Weak symbols depend on what the compiler inlines, and compilers differ in which type information they export. Both are
left out, except explicitly instantiated templates; each must belong to this project or to the standard library.
"""
import pathlib
import re
import shlex
import subprocess
import sys

EXPLICIT_INSTANTIATIONS = re.compile(
    r"^(std::string )?quill::(StaticPropertyBase|StaticDeferredInit|property_internal::PropertyValueOperatorsT"
    r"|media::se_wrapper::printArray)<")
KNOWN = re.compile(r"\bquill::|\bstd::|__gnu_cxx::")
TYPE_INFORMATION = re.compile(r"(typeinfo|typeinfo name|vtable) for (quill|std)::")
STRING = "std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >"
LINE = re.compile(r"^[0-9a-f]+ (\w) (.+)$")


def exported(library):
    """The names to list, and the names that must not be in the library."""
    text = subprocess.run(["nm", "-DC", "--defined-only", library], check=True, capture_output=True, text=True).stdout
    names, foreign = set(), set()
    for line in text.splitlines():
        kind, name = LINE.match(line).groups()
        name = name.replace(STRING, "std::string").replace(" >", ">")
        if TYPE_INFORMATION.match(name):
            continue
        if kind not in "WVu" or (kind == "W" and EXPLICIT_INSTANTIATIONS.match(name)):
            names.add(name)
        elif not KNOWN.search(name):
            foreign.add(name)
    return sorted(names), sorted(foreign)


def main(arguments):
    renew = arguments[:1] == ["--renew"]
    path, library = arguments[renew:]
    names, foreign = exported(library)
    if renew:
        pathlib.Path(path).write_text("\n".join(names) + "\n")
        return 0
    listed = pathlib.Path(path).read_text().splitlines()
    differences = [f"exported, not listed: {name}" for name in names if name not in listed]
    differences += [f"listed, not exported: {name}" for name in listed if name not in names]
    if differences:
        command = [sys.argv[0], "--renew", path, library]
        differences.append(f"If this is intended: {shlex.join(command)}")
    differences += [f"neither ours nor the standard library's: {name}" for name in foreign]
    print("\n".join(differences) or f"{len(names)} names, as listed")
    return bool(differences)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
