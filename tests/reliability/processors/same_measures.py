#!/usr/bin/env python3
"""A task of a sweep on another processor gives the same measures, of the whole recording and of each second.

Usage: same_measures.py SE_HOST QEMU PROCESSOR
"""
import json
import pathlib
import subprocess
import sys
import tempfile


def lines_of(path):
    return [json.loads(line) for line in path.read_text().splitlines()]


def order_in(folder):
    """As `se_host sweep run` gives it to the process of the plan's only task."""
    task, = lines_of(folder / "tasks.jsonl")
    recording, = lines_of(folder / "manifest.jsonl")
    engine = json.loads((folder / "plan.json").read_text())["engine"]
    return {"key": task["key"], "recording": recording, "tuning": task["tuning"], "tuning_file": "", "engine": engine,
            "over_time": str(folder / "seconds.csv")}


def row_and_seconds(command, order):
    done = subprocess.run([*command, "sweep", "task"], input=json.dumps(order) + "\n", capture_output=True, text=True)
    assert done.returncode == 0, done.stderr
    return json.loads(done.stdout.splitlines()[-1]), pathlib.Path(order["over_time"]).read_text()


def main(host, qemu, processor, folder):
    call = folder / "calls/call"
    call.parent.mkdir()
    subprocess.run([host, "scene", f"{call}.wav", "--seconds", "7", "--talker-start", "4", "--echo", "-30", "--echo-delay", "60",
                    "--diffuse-noise", "-50", "--dead-channel", "3", "--parts", call, "--quiet"], check=True)
    subprocess.run([host, "sweep", "plan", call.parent, "--folder", folder / "sweep", "--far-end-channel", "0",
                    "--over-time", "--quiet"], check=True)
    order = order_in(folder / "sweep")
    here, seconds_here = row_and_seconds([host], order)
    there, seconds_there = row_and_seconds([qemu, "-cpu", processor, host], order)
    # A processor may choose the same builds as Haswell; as Penryn, the least that runs, none that runs the tests does.
    assert here["processor"] != there["processor"] or processor != "Penryn", "the emulated processor chose no other builds"
    empty = [name for name, value in here["measures"].items() if value is None]
    assert not empty, f"without a value: {empty}"
    assert seconds_here.count("\n") == 8, seconds_here
    for name in ("measures", "output"):
        assert here[name] == there[name], f"{name} here: {here[name]}\non {processor}: {there[name]}"
    assert seconds_here == seconds_there, f"seconds here:\n{seconds_here}on {processor}:\n{seconds_there}"


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as work:
        main(*sys.argv[1:], pathlib.Path(work))
    print("the same measures, and the same of each second")
