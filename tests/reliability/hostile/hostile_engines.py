#!/usr/bin/env python3
"""Runs every command of se_host, and two small hosts, with engines that misbehave, and checks how each run ends.

Usage: hostile_engines.py BIN [--all] [--only TEXT] [--jobs N] [--write PAGE.md]
BIN is the folder of the programs. Without --all each kind of engine meets one command. Prints each run that breaks a
rule; exit code 1 if there is one. --write makes a page of all results.

The rules for se_host: no status 0 (or 3) unless the outputs are whole and right; a documented status; one line at the
end that says why; an older output unchanged otherwise; no other files; no control characters. For libse_host, which has
no process for the engine: no exception leaves it, no control characters, and what does not end the process changes nothing
else. For all: no crash whose first frame outside of the system's libraries is ours.
"""
import argparse
import collections
import concurrent.futures
import io
import json
import os
import pathlib
import re
import resource
import subprocess
import sys
import tempfile
import wave

from inputs import FRAMES, make_inputs
from kinds import ANSWERS, ENDINGS, HANGS, kinds
from page import write_page

MEMORY = 3 << 30
PATIENCE = 20  # seconds, for a program that is not supervised
OURS = ("se_host", "hostile_", "libse_", "libcommon")
CONTROL = re.compile(rb"[\x00-\x08\x0b-\x1f\x7f]|\xc2[\x80-\x9f]")

Run = collections.namedtuple("Run", "kind command status out err output files log complaint")


def commands(binaries):
    engine = ["--engine", "test_engines/hostile", "--engine-timeout", "1"]
    host = str(binaries / "se_host")
    return {
        "process": [host, "process", "in.wav", "out", *engine, "--quiet"],
        "noise-test": [host, "noise-test", "out", "--recording", "in.wav", *engine, "--quiet"],
        "info": [host, "info", *engine, "--json"],
        "diags list": [host, "diags", "list", *engine, "--json"],
        "diags get": [host, "diags", "get", "int16", "float32", *engine, "--json"],
        "diags set": [host, "diags", "set", "int16=5", "--save", "out", *engine],
        "diags dump": [host, "diags", "dump", "out", "--recording", "in.wav", *engine],
        "diags restore": [host, "diags", "restore", "tuning.json", *engine],
        "diags watch": [host, "diags", "watch", "in.wav", *engine],
        "check-engine": [host, "check-engine", str(binaries / "selibs/test_engines/hostile"), *engine[2:], "--json"],
        "small host": [str(binaries / "hostile_host")],
        "library": [str(binaries / "hostile_library_host"), str(binaries / "selibs/test_engines/hostile")],
    }


def limit():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def run_one(inputs, kind, name, words):
    """Runs a command in a folder of its own, in which an older output stands."""
    with tempfile.TemporaryDirectory() as folder, tempfile.TemporaryDirectory() as elsewhere:
        folder = pathlib.Path(folder)
        for file in inputs.iterdir():
            (folder / file.name).write_bytes(file.read_bytes())
        (folder / "out").write_text("old")
        log = pathlib.Path(elsewhere) / "log"
        environment = {**os.environ, "SE_HOSTILE": " ".join(kind), "SE_HOSTILE_LOG": str(log)}
        try:
            done = subprocess.run(words, cwd=folder, env=environment, capture_output=True, timeout=PATIENCE,
                                  preexec_fn=limit, stdin=subprocess.DEVNULL)
            status, out, err = done.returncode, done.stdout, done.stderr
        except subprocess.TimeoutExpired:
            status, out, err = None, b"", b""
        files = sorted(file.name for file in folder.iterdir())
        output = (folder / "out").read_bytes() if "out" in files else None
        return Run(kind, name, status, out, err, output, files, log.read_text() if log.exists() else "", None)


def is_whole(run):
    """Whether the outputs can be read as what they are to be."""
    try:
        if run.command == "process":
            with wave.open(io.BytesIO(run.output)) as sound:
                return sound.getnframes() == FRAMES
        if run.command == "noise-test":
            return run.output.count(b"\n") == 6 * 31
        if run.command in ("diags set", "diags dump"):
            return "diagnostics" in json.loads(run.output)
        if run.command in ("info", "diags list", "diags get", "check-engine"):
            return bool(json.loads(run.out))
    except (ValueError, wave.Error, EOFError):
        return False
    return True


def may_end(run):
    """Ends that a signal which is no crash causes, and the end of a program whose work is done."""
    stage, deed = run.kind
    if run.status in (-15, -14):
        return deed in ("term", "alarm")
    return run.status in (0, 1, 2, 3, 4)


def complaint_of_library(run, usual):
    """What is wrong with a run of libse_host that did not crash in our code; None: nothing."""
    stage, deed = run.kind
    if CONTROL.search(run.err) or CONTROL.search(run.out):
        return "control characters"
    if deed in ("throw", "throw-int"):
        left = run.status not in (0, 1) and stage not in ("load", "unload")
        return "an exception leaves the library" if left else None
    if "done" in run.log and deed in [*ENDINGS, *HANGS, "spin"] or deed == "close-output":
        return None
    if run.status not in (0, 1):
        return f"status {run.status}"
    if run.status == 1 and b"library_host: " not in run.err:
        return "no reason"
    if run.files != usual.files:
        return f"files {run.files}"
    if deed in ANSWERS.get(stage, []) or (deed, run.status) == ("leave-thread", 1):
        return None  # each call leaves another thread, until there is no memory for more
    return None if (run.status, run.out) == (0, usual.out) else "the output differs"


def complaint(run, usual):
    """What is wrong with the run; None: nothing."""
    stage, deed = run.kind
    crash = re.search(r"^crash \d+ (.*)$", run.log, re.MULTILINE)
    if crash and crash.group(1).startswith(OURS):
        return "crash in " + crash.group(1)
    if run.command == "small host":
        return None
    if run.command == "library":
        return complaint_of_library(run, usual)
    if run.status is None:
        return "does not end"
    if not may_end(run):
        return f"status {run.status}"
    if run.files != usual.files:
        return f"files {run.files}"
    if CONTROL.search(run.err) or CONTROL.search(run.out):
        return "control characters"
    happened = "done" in run.log
    done = run.status == 0 or stage == "unload" and run.output != b"old" or run.status == 3 and is_whole(run)
    if run.status != 0 and deed != "close-output" and not (run.err.decode(errors="replace").splitlines() or [""])[-1].startswith("se_host: "):
        return "last line " + repr(run.err[-200:])
    if happened and stage != "unload" and deed in [*ENDINGS, *HANGS] and run.status == 0:
        return "status 0"
    if happened and deed == "close-output" and run.status == 0:
        return "status 0" if usual.out else None
    if not done and deed == "close-output" and is_whole(run):
        return None  # the files stand, and the summary could not be printed
    if not done:
        return None if run.output == b"old" else "the older output is lost"
    if deed in ANSWERS.get(stage, []) and happened:
        return None if is_whole(run) else "the output is not whole"
    return None if (run.out, run.output) == (usual.out, usual.output) else "the output differs"


def chosen(all_runs, usual):
    """Each kind with all commands that reach its stage, or with one of them, in turn."""
    for number, kind in enumerate(kinds()):
        reaching = [name for name, run in usual.items() if f"at {kind[0]}\n" in run.log]
        yield from ((kind, name) for name in (reaching if all_runs else reaching[number % len(reaching):][:1]))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("binaries", type=pathlib.Path)
    parser.add_argument("--all", action="store_true")
    parser.add_argument("--only", default="")
    parser.add_argument("--jobs", type=int, default=16)
    parser.add_argument("--write", type=pathlib.Path)
    arguments = parser.parse_args()
    lines = commands(arguments.binaries.resolve())
    with tempfile.TemporaryDirectory() as inputs:
        inputs = pathlib.Path(inputs)
        make_inputs(inputs, arguments.binaries.resolve())
        usual = {name: run_one(inputs, ("show", "stages"), name, words) for name, words in lines.items()}
        wanted = [one for one in chosen(arguments.all, usual)
                  if arguments.only in f"{' '.join(one[0])} / {one[1]}"]
        with concurrent.futures.ThreadPoolExecutor(arguments.jobs) as pool:
            runs = list(pool.map(lambda one: run_one(inputs, one[0], one[1], lines[one[1]]), wanted))
    runs = [run._replace(complaint=complaint(run, usual[run.command])) for run in runs]
    broken = [run for run in runs if run.complaint] + [run for run in usual.values() if run.status != 0]
    for run in broken:
        print(f"{' '.join(run.kind)} / {run.command}: {run.complaint}; status {run.status}; "
              f"{run.err.decode(errors='replace')[-300:]!r} {run.log.split()}")
    if arguments.write:
        write_page(arguments.write, runs, list(lines))
    print(f"{len(runs)} runs of {len({run.kind for run in runs})} kinds, {len(broken)} break a rule")
    return 1 if broken or not runs else 0


if __name__ == "__main__":
    sys.exit(main())
