#!/usr/bin/env python3
"""A program that has no engine builds beside it finds those of the installed tree, in C and in Python. Where there are
none either, the error names both folders.

Usage: installed_engines.py TREE C_COMPILER SOURCE_DIR
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

PROGRAM = re.compile(r"^```c\n(.*?)^```\n\n```\n(.*?)^```$", re.MULTILINE | re.DOTALL)
OPEN = """
import se_host, sys
try:
    with se_host.Host(device_model=True) as host:
        print(host.engine_build)
except se_host.EngineError as error:
    print(error)
"""


def only(paths):
    [path] = paths
    return path


def printed(command, **variables):
    return subprocess.run([str(word) for word in command], check=True, text=True, stdout=subprocess.PIPE,
                          env={**os.environ, **variables}).stdout


def in_c(tree, compiler, guide, work):
    """What the guide's program prints, and what it should print."""
    program, shown = PROGRAM.search(guide).groups()
    (work / "host.c").write_text(program)
    flags = printed(["pkg-config", "--cflags", "--libs", "se_host"],
                    PKG_CONFIG_PATH=str(only(tree.rglob("se_host.pc")).parent)).split()
    subprocess.run([compiler, "-std=c11", work / "host.c", "-o", work / "host", *flags], check=True)
    return printed([work / "host"]), shown


def in_python(library, source):
    return printed([sys.executable, "-B", "-c", OPEN],
                   SE_HOST_LIBRARY=str(library), PYTHONPATH=str(source / "python")).strip()


def without_engines(tree, work):
    """A copy of the library alone."""
    lib = work / "lib"
    (lib / "libse_wrapper").mkdir(parents=True)
    for name, folder in (("libse_host", ""), ("libse_wrapper", ""), ("libcommon", "libse_wrapper")):
        shutil.copy(only(tree.rglob(name + ".so.0")), lib / folder)
    return lib / "libse_host.so.0"


def main(tree, compiler, source):
    with tempfile.TemporaryDirectory() as folder:
        work = pathlib.Path(folder).resolve()
        found, shown = in_c(tree, compiler, (source / "docs/host-guide.md").read_text(), work)
        assert found == shown, found
        assert in_python(only(tree.rglob("libse_host.so.0")), source) == "se_lib_harborv006"
        error = in_python(without_engines(tree, work), source)
        beside = pathlib.Path(sys.executable).resolve().parent / "selibs"
        assert f"neither '{beside}' nor '{work}/lib/libse_wrapper/selibs' is a folder" in error, error


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]), sys.argv[2], pathlib.Path(sys.argv[3]))
