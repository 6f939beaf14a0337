#!/usr/bin/env python3
"""The programs in the host guide compile, run, and print what the guide shows.

Usage: guide_program.py GUIDE SOURCE_DIR BUILD_DIR C_COMPILER CXX_COMPILER
"""
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

PROGRAM = re.compile(r"```(c|cpp)\n(#include.*?)```\s*```\n(.*?)```", re.S)


def compile_and_run(language, program, compilers, source, build):
    lib = f"{build}/lib"
    compiler, standard, libraries, include = {
        "c": (compilers["c"], "c11", ["-lse_host"], f"{source}/host"),
        "cpp": (compilers["cpp"], "c++17", ["-lse_wrapper", "-lcommon"], source),
    }[language]
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder)
        (path / f"host.{language}").write_text(program)
        shutil.copytree(f"{build}/bin/selibs", path / "selibs", ignore=shutil.ignore_patterns("test_*"))
        subprocess.run([compiler, f"-std={standard}", "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-I", include,
                        str(path / f"host.{language}"), "-o", str(path / "host"), "-L", lib, *libraries, f"-Wl,-rpath,{lib}",
                        f"-Wl,-rpath-link,{lib}"], check=True)
        return subprocess.run([str(path / "host")], check=True, capture_output=True, text=True).stdout


def main(guide, source, build, c_compiler, cxx_compiler):
    programs = PROGRAM.findall(pathlib.Path(guide).read_text())
    if [language for language, _, _ in programs] != ["c", "cpp"]:
        sys.exit("the guide should have a program in C and one in C++, each with what it prints")
    for language, program, shown in programs:
        printed = compile_and_run(language, program, {"c": c_compiler, "cpp": cxx_compiler}, source, build)
        if printed != shown:
            sys.exit(f"the guide shows:\n{shown}the program printed:\n{printed}")


if __name__ == "__main__":
    main(*sys.argv[1:])
