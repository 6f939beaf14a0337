#!/usr/bin/env python3
"""SIGKILL at the system calls of se_host: an output is the old one or the new one, whole, and nothing else is left.

Usage: killed_runs.py BIN [--all]
Without --all some of the calls, always the same and the last ones among them. Killed are the process that runs the
engine, its supervisor, or both at the same time. After the first two, no temporary file may be left; after the last, one
may, under a name that says so, and the next run of the command succeeds. Exit code 1 if a run breaks a rule.
"""
import argparse
import concurrent.futures
import pathlib
import re
import subprocess
import sys
import tempfile

from inputs import make_inputs

COMMANDS = {
    "process": ["process", "in.wav", "out", "--quiet"],
    "dump": ["diags", "dump", "out", "--recording", "in.wav"],
}
CHILD, SUPERVISOR = "1", "0"
SUBJECTS = {"engine's process": (CHILD, "one"), "supervisor": (SUPERVISOR, "one"), "both": (CHILD, "all")}
TEMPORARY = re.compile(r"\.unfinished-[0-9a-f]{16}")
LAST = 30
STEP = 7


def run(binaries, inputs, command, place, call, whom):
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        for file in inputs.iterdir():
            (folder / file.name).write_bytes(file.read_bytes())
        (folder / "out").write_text("old")
        words = [binaries / "se_host", *COMMANDS[command]]
        done = subprocess.run([binaries / "kill_at_call", place, str(call), whom, *words], cwd=folder,
                              capture_output=True, text=True, stdin=subprocess.DEVNULL)
        status, calls = map(int, done.stdout.splitlines()[-1].split())
        files = {file.name for file in folder.iterdir()} - {file.name for file in inputs.iterdir()}
        output = (folder / "out").read_bytes() if "out" in files else None
        after = subprocess.run(words, cwd=folder, capture_output=True) if whom == "all" else None
        return status, calls, files - {"out"}, output, done.stderr, after


def complaint(subject, whole, status, others, output, err, after):
    if output not in (b"old", whole):
        return f"an output that is neither the old one nor the new one: {output and output[:40]}"
    if subject == "both":
        if any(TEMPORARY.fullmatch(name) is None for name in others):
            return f"files {others}"
        return None if after.returncode == 0 else f"the next run: {after.stderr}"
    if others:
        return f"files {others}"
    if subject == "engine's process" and status != 0 and not err.strip().splitlines()[-1].startswith("se_host: "):
        return f"last line {err!r}"
    if subject == "engine's process" and status == 0 and output != whole:
        return "status 0 without the output"
    return None


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("binaries", type=pathlib.Path)
    parser.add_argument("--all", action="store_true")
    arguments = parser.parse_args()
    binaries = arguments.binaries.resolve()
    runs, broken = 0, 0
    with tempfile.TemporaryDirectory() as name:
        inputs = pathlib.Path(name)
        make_inputs(inputs, binaries)
        for command in COMMANDS:
            for subject, (place, whom) in SUBJECTS.items():
                _, count, _, whole, _, _ = run(binaries, inputs, command, place, 0, whom)
                calls = [call for call in range(1, count + 1)
                         if arguments.all or call % STEP == 0 or call > count - LAST]
                with concurrent.futures.ThreadPoolExecutor(4) as pool:
                    results = list(pool.map(lambda call: run(binaries, inputs, command, place, call, whom), calls))
                for call, (status, _, others, output, err, after) in zip(calls, results):
                    wrong = complaint(subject, whole, status, others, output, err, after)
                    if wrong:
                        print(f"{command}, {subject} killed at call {call} of {count}: {wrong}; status {status}")
                        broken += 1
                runs += len(calls)
    print(f"{runs} runs, {broken} break a rule")
    return 1 if broken or not runs else 0


if __name__ == "__main__":
    sys.exit(main())
