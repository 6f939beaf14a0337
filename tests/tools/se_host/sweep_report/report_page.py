#!/usr/bin/env python3
"""`se_host sweep report` on rows that are made here: the page is one well-formed file, and the same for the same rows.

Usage: report_page.py SE_HOST
"""
import json
import pathlib
import random
import subprocess
import sys
import tempfile
import unittest

from page_structure import Page

SE_HOST = None
HOSTILE = "<b>&\"'</td><script>alert(1)</script>"


def row(recording, tuning, measures, labels=None, error=None):
    return {"key": f"{recording}/{tuning}", "recording": recording, "tuning": tuning, "labels": labels or {},
            "status": "failed" if error else "ok", "error": error, "measures": {} if error else measures,
            "output": "0", "engine": {"build": "se_lib_beamv1.14", "version": "beam_1.14|reference", "file": "abc"},
            "program": {"version": "0.1.0", "files": "def"}, "processor": ["avx2", "fma"]}


def rows_of(tunings, recordings, scenarios=("office", "street")):
    chance = random.Random(1)
    for number in range(recordings):
        noise, stoi = chance.gauss(20, 4), chance.uniform(0.7, 0.95)
        for place, tuning in enumerate(tunings):
            yield row(f"call-{number:03}", tuning,
                      {"noise_reduction_db": noise + place + chance.gauss(0, 0.3),
                       "talker_stoi": stoi - 0.01 * place + chance.gauss(0, 0.001),
                       "output_rms_dbfs": -30 - place, "input_rms_dbfs": -25.5, "talker_mean_azimuth_degrees": 350,
                       "convergence_seconds": None if number % 3 == 0 else 1.5 - 0.1 * place},
                      {"scenario": scenarios[number % len(scenarios)]})


class ReportPage(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def report(self, rows, *options, name="report.html"):
        lines = "".join(json.dumps(one) + "\n" for one in rows)
        (self.folder / "results.jsonl").write_text(lines)
        out = self.folder / name
        subprocess.run([SE_HOST, "sweep", "report", str(self.folder), "--out", str(out), *options], check=True,
                       capture_output=True)
        text = out.read_text()
        self.html = text
        return Page(text)

    def refused(self, *options):
        done = subprocess.run([SE_HOST, "sweep", "report", str(self.folder), *options], capture_output=True, text=True)
        self.assertNotEqual(done.returncode, 0)
        self.assertEqual(done.stderr.count("\n"), 1, done.stderr)
        self.assertFalse((self.folder / "report.html").exists())
        return done.stderr

    def test_shows_what_was_compared_and_found(self):
        words = self.report(rows_of(["default", "new"], 30)).words()
        for text in ("30 recordings with 2 tunings.", "se_lib_beamv1.14", "60 runs, 0 failed", "new beside default",
                     "Better in", "noise lowered: +1.", "Worse in", "intelligibility of the talker: \u22120.0",
                     "office", "street", "What is the same with every tuning"):
            self.assertIn(text, words)

    def test_is_the_same_for_the_same_rows(self):
        rows = list(rows_of(["default", "new"], 15))
        self.report(rows)
        first = self.html
        self.report(rows, name="again.html")
        self.assertEqual(first, self.html)

    def test_has_pictures_of_each_measure(self):
        page = self.report(rows_of(["default", "new", "other"], 12))
        self.assertEqual(page.names.count("svg"), 2 * 4, "boxes and pairs of the measures that differ")

    def test_has_another_reference(self):
        words = self.report(rows_of(["default", "new"], 30), "--against", "new").words()
        self.assertIn("default beside new", words)
        self.assertIn("noise lowered: \u22121.", words)

    def test_has_chosen_measures_only(self):
        words = self.report(rows_of(["default", "new"], 12), "--measure", "talker_stoi").words()
        self.assertIn("intelligibility", words)
        self.assertNotIn("noise lowered", words)

    def test_groups_by_any_label(self):
        rows = [dict(one, labels={"room": one["recording"][-1]}) for one in rows_of(["default", "new"], 30)]
        self.assertIn("By room", self.report(rows, "--by", "room").words())
        self.assertNotIn("By nothing", self.report(rows, "--by", "nothing").words())

    def test_names_failed_rows(self):
        rows = list(rows_of(["default", "new"], 12))
        rows[3] = row("call-001", "new", {}, error="the engine ended: signal 11 <here>")
        words = self.report(rows).words()
        self.assertIn("24 runs, 1 failed", words)
        self.assertIn("call-001 new the engine ended: signal 11 <here>", words)

    def test_of_rows_that_have_all_failed_is_a_page_too(self):
        words = self.report(row(f"call-{n}", "default", {}, error="no engine") for n in range(3)).words()
        self.assertIn("3 runs, 3 failed", words)

    def test_of_rows_with_nulls_alone_is_a_page_too(self):
        self.report(row(f"call-{n}", tuning, {"talker_stoi": None}) for n in range(3) for tuning in ("a", "b"))

    def test_of_one_recording_draws_no_conclusion(self):
        words = self.report(rows_of(["default", "new"], 1)).words()
        self.assertIn("With 1 recording nothing can be said about others", words)
        self.assertNotIn("Better in", words)

    def test_of_one_tuning_compares_nothing(self):
        words = self.report(rows_of(["default"], 12)).words()
        self.assertIn("There is one tuning", words)
        self.assertIn("noise lowered", words)

    def test_of_one_row_is_a_page_too(self):
        self.report(rows_of(["default"], 1))

    def test_of_many_tunings_folds_them(self):
        page = self.report(rows_of([f"t{n:02}" for n in range(24)], 12))
        self.assertIn("The other tunings", page.words())

    def test_escapes_names(self):
        rows = [dict(one, recording=HOSTILE + one["recording"], labels={"scenario": HOSTILE}) for one in
                rows_of(["default", HOSTILE], 12)]
        rows.append(row("x", HOSTILE, {}, error=HOSTILE))
        page = self.report(rows)
        self.assertNotIn("script", page.names)
        self.assertIn(HOSTILE, " ".join(page.text))

    def test_marks_rows_of_different_engines(self):
        rows = list(rows_of(["default", "new"], 12))
        rows[1]["engine"] = dict(rows[1]["engine"], file="def")
        self.assertIn("The rows are of different engines", self.report(rows).words())

    def test_has_a_command_to_listen_where_the_manifest_has_the_recording(self):
        entry = {"id": "call-006", "recording": "/r/it's one.wav", "far_end": 0, "parts": "/r/one"}
        (self.folder / "manifest.jsonl").write_text(json.dumps(entry) + "\n")
        (self.folder / "tunings").mkdir()
        (self.folder / "tunings/new.json").write_text("{}")
        rows = rows_of(["default", "new"], 12)
        words = self.report(rows, "--no-pictures", "--measure", "noise_reduction_db").words()
        self.assertIn(f"se_host process '/r/it'\\''s one.wav' - --far-end-channel 0 --tuning {self.folder}/tunings/new.json "
                      "--engine se_lib_beamv1.14 --quiet | aplay", words)

    def test_shows_the_recordings_of_another_tuning(self):
        words = self.report(rows_of(["default", "new", "newer"], 12), "--show", "new").words()
        self.assertRegex(words, "Recordings that gained and lost most By [a-z ]+, new beside default")

    def test_says_why_a_picture_is_missing(self):
        entry = {"id": "call-000", "recording": "/nowhere/one.wav"}
        (self.folder / "manifest.jsonl").write_text(json.dumps(entry) + "\n")
        self.assertIn("No picture: cannot read", self.report(rows_of(["default", "new"], 1)).words())

    def test_without_results_is_refused(self):
        self.assertIn("results.jsonl'; 'se_host sweep merge' writes it", self.refused())

    def test_of_unknown_names_is_refused(self):
        (self.folder / "results.jsonl").write_text("".join(json.dumps(one) + "\n" for one in rows_of(["default"], 2)))
        self.assertIn("there is no tuning 'old' in the results, but default", self.refused("--against", "old"))
        self.assertIn("there is no tuning 'old'", self.refused("--show", "old"))
        self.assertIn("there is no measure 'loudness'", self.refused("--measure", "loudness"))

    def test_of_a_damaged_row_is_refused(self):
        (self.folder / "results.jsonl").write_text("{\n")
        self.assertIn("results.jsonl:1: not a row of results", self.refused())


if __name__ == "__main__":
    SE_HOST = sys.argv.pop(1)
    unittest.main()
