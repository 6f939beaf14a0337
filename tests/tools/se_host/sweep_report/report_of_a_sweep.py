#!/usr/bin/env python3
"""A sweep of simulated calls and its report: the figures are those of the engine, and the pictures are drawn.

Usage: report_of_a_sweep.py SE_HOST
"""
import json
import pathlib
import subprocess
import sys
import tempfile

from page_structure import Page

RECORDINGS = 3


def run(*words, **more):
    return subprocess.run([str(word) for word in words], check=True, capture_output=True, text=True, **more).stdout


def main(se_host, folder):
    for seed in range(1, RECORDINGS + 1):
        name = folder / f"calls/quiet/call-{seed}"
        name.parent.mkdir(parents=True, exist_ok=True)
        run(se_host, "scene", f"{name}.wav", "--seconds", 5, "--seed", seed, "--talker-start", 3, "--diffuse-noise", -50,
            "--parts", name, "--quiet")
    run(se_host, "sweep", folder / "calls", "--folder", folder / "sweep", "--grid", "senr_nf_weight_factor_q10=200",
        "--over-time", "--quiet")
    pages = []
    for name in ("one.html", "two.html"):
        run(se_host, "sweep", "report", folder / "sweep", "--out", folder / name, "--measure", "noise_reduction_db")
        pages.append((folder / name).read_text())
    assert pages[0] == pages[1], "two reports of one sweep differ"
    page = Page(pages[0])
    rows = [json.loads(line) for line in (folder / "sweep/results.jsonl").read_text().splitlines()]
    lowered = {(row["recording"], row["tuning"]): row["measures"]["noise_reduction_db"] for row in rows}
    assert len(lowered) == 2 * RECORDINGS and all(lowered.values()), lowered
    tuning = "senr_nf_weight_factor_q10=200"
    for recording in {recording for recording, _ in lowered}:
        change = lowered[recording, tuning] - lowered[recording, "default"]
        assert change < -3, f"{recording}: the tuning lowers the noise less, by {change} dB"
        assert f"{change:+.2f} dB".replace("-", "\u2212") in page.words(), change
    assert page.pictures == RECORDINGS, f"{page.pictures} pictures"
    assert page.words().count("In each second: noise lowered") == RECORDINGS
    # A command of the page plays the output that the sweep measured.
    command = next(line for line in pages[0].replace("&#39;", "'").splitlines() if "se_host process" in line)
    words = command.split("<pre>")[-1].removesuffix(" | aplay").replace("se_host", str(se_host), 1)
    wav = subprocess.run(words, shell=True, check=True, capture_output=True).stdout
    assert wav[:4] == b"RIFF" and len(wav) > 5 * 32000, len(wav)


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as work:
        main(pathlib.Path(sys.argv[1]), pathlib.Path(work))
    print("the report shows what the engine did")
