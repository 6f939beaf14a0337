#!/usr/bin/env python3
"""The installed headers are those that a host may include: everything that they include is installed, and every
installed header is one of the documented ones or included by one.

Usage: headers_belong.py INCLUDE_DIR  prints what is missing or left over; exit code 1 if there is something
"""
import pathlib
import re
import sys

DOCUMENTED = ["se_host.h", "webrtc_common/se_wrapper.h"] + [
    f"common/{name}.h" for name in (
        "assertion", "check", "config", "cpu_info", "dynlib", "file", "logging", "properties", "property_node",
        "property_value", "string_printf")]
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)


def main(include_dir):
    root = pathlib.Path(include_dir)
    installed = {path.relative_to(root).as_posix() for path in root.rglob("*") if path.is_file()}
    problems = []
    reached, waiting = set(), [(header, "the list of documented headers") for header in DOCUMENTED]
    while waiting:
        header, user = waiting.pop()
        if header in reached:
            continue
        reached.add(header)
        if header in installed:
            waiting += [(included, header) for included in INCLUDE.findall((root / header).read_text())]
        else:
            problems.append(f"{user} needs {header}, which is not installed")
    problems += [f"{header} is installed, but no documented header includes it" for header in installed - reached]
    print("\n".join(sorted(problems)) or f"{len(installed)} headers, {len(DOCUMENTED)} of them documented")
    return bool(problems)


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
