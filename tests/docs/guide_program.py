#!/usr/bin/env python3
"""The program in the host guide compiles, runs, and prints what the guide shows.

Usage: guide_program.py GUIDE SOURCE_DIR BUILD_DIR COMPILER
"""
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile


def main(guide, source, build, compiler):
    text = pathlib.Path(guide).read_text()
    program, shown = re.search(r"```cpp\n(.*?)```\s*```\n(.*?)```", text, re.S).groups()
    lib = f"{build}/lib"
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder)
        (path / "host.cpp").write_text(program)
        shutil.copytree(f"{build}/bin/selibs", path / "selibs", ignore=shutil.ignore_patterns("test_*"))
        subprocess.run([compiler, "-std=c++17", "-Wall", "-Wextra", "-Werror", "-I", source, str(path / "host.cpp"),
                        "-o", str(path / "host"), "-L", lib, "-lse_wrapper", "-lcommon", f"-Wl,-rpath,{lib}"],
                       check=True)
        printed = subprocess.run([str(path / "host")], check=True, capture_output=True, text=True).stdout
    if printed != shown:
        sys.exit(f"the guide shows:\n{shown}the program printed:\n{printed}")


if __name__ == "__main__":
    main(*sys.argv[1:])
