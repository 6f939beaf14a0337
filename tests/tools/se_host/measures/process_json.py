#!/usr/bin/env python3
"""Where docs/measures.md says that `se_host process --json` has the same number as a measure, it has.

Usage: process_json.py MEASURES.md SE_HOST
"""
import json
import pathlib
import re
import subprocess
import sys
import tempfile

SECTION = re.compile(r"^### `(\w+)`\n(.*?)(?=^#|\Z)", re.MULTILINE | re.DOTALL)
PATH = re.compile(r"[Ii]n\s+`process --json`:\s+`([^`]+)`")
LIST_OF_FINDINGS = "microphones"
STEP = 0.0001


def run(*words):
    return subprocess.run([str(word) for word in words], check=True, capture_output=True, text=True).stdout


def paths_of(document):
    found = {name: PATH.search(text) for name, text in SECTION.findall(document)}
    return {name: match.group(1) for name, match in found.items() if match}


def value_at(summary, path):
    for name, index in re.findall(r"(\w+)(?:\[(\d+)\])?", path):
        summary = summary[name]
        if index:
            summary = summary[int(index)]
    return summary


def differences(measures, summary, paths):
    for name, path in paths.items():
        there = value_at(summary, path)
        if path == LIST_OF_FINDINGS:
            there = sum(bool(microphone["finding"]) for microphone in there)
        here = measures[name]
        if here is None or there is None or abs(here - there) > STEP:
            yield f"{name} is {here}, {path} of process --json is {there}"


if __name__ == "__main__":
    document, host = sys.argv[1:]
    paths = paths_of(pathlib.Path(document).read_text())
    with tempfile.TemporaryDirectory() as work:
        calls, call = pathlib.Path(work, "calls"), pathlib.Path(work, "calls/call")
        calls.mkdir()
        run(host, "scene", f"{call}.wav", "--seconds", 12, "--talker-start", 5, "--talker-end", 8, "--echo", -30,
            "--echo-delay", 80, "--diffuse-noise", -50, "--dead-channel", 3, "--parts", call, "--quiet")
        run(host, "sweep", calls, "--folder", f"{work}/sweep", "--far-end-channel", 0, "--no-report", "--quiet")
        row = json.loads(pathlib.Path(work, "sweep/results.jsonl").read_text())
        summary = json.loads(run(host, "process", f"{call}.wav", f"{work}/out.wav", "--far-end-channel", 0, "--parts", call,
                                 "--json"))
        broken = list(differences(row["measures"], summary, paths))
    if len(paths) < 10:
        broken.append(f"only {len(paths)} measures have a path")
    print("\n".join(broken) or f"{len(paths)} measures are as process --json tells them")
    sys.exit(1 if broken else 0)
