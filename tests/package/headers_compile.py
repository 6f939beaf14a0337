#!/usr/bin/env python3
"""Every installed header compiles alone and twice, without a warning. Lists of rows (..._rows.h) are not headers: they
need the macro that they are expanded with.

Usage: headers_compile.py INCLUDE_DIR COMPILER STANDARD  prints what the compiler says; exit code 1 if it says something
"""
import concurrent.futures
import os
import pathlib
import subprocess
import sys

WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Wconversion", "-Werror"]


def messages(include_dir, compiler, standard, header):
    command = [compiler, f"-std={standard}", *WARNINGS, f"-I{include_dir}", "-fsyntax-only", "-x", "c++", "-"]
    source = f"#include <{header}>\n" * 2
    return subprocess.run(command, input=source, capture_output=True, text=True).stderr


def main(include_dir, compiler, standard):
    headers = [path.relative_to(include_dir).as_posix() for path in sorted(pathlib.Path(include_dir).rglob("*.h"))]
    headers = [header for header in headers if not header.endswith("_rows.h")]
    with concurrent.futures.ThreadPoolExecutor(len(os.sched_getaffinity(0))) as pool:
        found = list(pool.map(lambda header: messages(include_dir, compiler, standard, header), headers))
    print("".join(found) or f"{len(headers)} headers compile alone")
    return not headers or any(found)


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
