#!/usr/bin/env python3
"""engine_vs_peer with recorded speech: it is used, and a folder that cannot be used is refused in one line.

Usage: voices_test.py ENGINE_VS_PEER
"""
import array
import json
import math
import pathlib
import subprocess
import sys
import tempfile
import unittest
import wave

PROGRAM = sys.argv.pop(1)
RATE = 16000


def write_speech(path, pitch=120, seconds=1.0, rate=RATE, channels=1, loudness=3000, offset=0):
    """Harmonics that rise and fall four times a second."""
    def sample(i):
        time = i // channels / rate
        tone = sum(math.sin(2 * math.pi * pitch * k * time) / k for k in range(1, 12))
        return int(offset + loudness * tone * math.sin(2 * math.pi * 2 * time) ** 2)
    samples = array.array("h", [sample(i) for i in range(int(seconds * rate) * channels)])
    with wave.open(str(path), "wb") as file:
        file.setnchannels(channels)
        file.setsampwidth(2)
        file.setframerate(rate)
        file.writeframes(samples.tobytes())


class Voices(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        for name, pitch in (("anna", 210), ("boris", 110), ("carla", 180)):
            (self.folder / name).mkdir()
            for number in range(2):
                write_speech(self.folder / name / f"{number}.wav", pitch + 10 * number)

    def run_program(self, *arguments):
        scene = () if "--scene" in arguments else ("--scene", "strong-coupling")
        return subprocess.run([PROGRAM, "--quick", "--passes", "1", "--json", *scene, *arguments],
                              capture_output=True, text=True)

    def results(self, *arguments):
        finished = self.run_program(*arguments)
        self.assertEqual(finished.stderr, "")
        self.assertEqual(finished.returncode, 0)
        return json.loads(finished.stdout)

    def figures_with(self, folder):
        return self.results("--voices", folder)["figures"]

    def assert_refused(self, *mentions):
        finished = self.run_program("--voices", self.folder)
        self.assertEqual(finished.returncode, 1)
        self.assertEqual(finished.stdout, "")
        self.assertEqual(len(finished.stderr.splitlines()), 1, finished.stderr)
        for mention in mentions:
            self.assertIn(mention, finished.stderr)

    def test_the_report_names_the_talkers(self):
        self.assertEqual(self.results("--voices", self.folder)["voices"], "recordings of 3 people: anna, boris, carla")
        self.assertEqual(self.results()["voices"], "synthetic")

    def test_the_scene_depends_on_the_recordings(self):
        before = self.figures_with(self.folder)
        self.assertEqual(self.figures_with(self.folder), before)
        for talker in ("anna", "boris", "carla"):
            write_speech(self.folder / talker / "0.wav", 140)
        self.assertNotEqual(self.figures_with(self.folder), before)

    def test_the_babble_depends_on_the_recordings(self):
        babble = ("--scene", "babble", "--voices", self.folder)
        before = self.results(*babble)["figures"]
        for talker in ("anna", "boris", "carla"):
            write_speech(self.folder / talker / "0.wav", 140)
        self.assertNotEqual(self.results(*babble)["figures"], before)

    def test_silence_around_it_and_an_offset_do_not_count(self):
        before = self.figures_with(self.folder)
        for path in self.folder.glob("*/*.wav"):
            with wave.open(str(path)) as file:
                samples = array.array("h", file.readframes(file.getnframes()))
            silence = [300] * RATE
            samples = [300 + sample for sample in samples]
            with wave.open(str(path), "wb") as file:
                file.setparams((1, 2, RATE, 0, "NONE", None))
                file.writeframes(array.array("h", silence + samples + silence).tobytes())
        for mine, its in zip(self.figures_with(self.folder), before):
            self.assertAlmostEqual(mine["engine"]["mean"], its["engine"]["mean"], delta=0.5)

    def test_the_document_tells_of_real_speech(self):
        self.results("--voices", self.folder, "--document", self.folder)
        page = (self.folder / "real_speech.md").read_text()
        self.assertIn("recordings of 3 people", page)
        self.assertIn("(real_speech.svg)", page)
        self.assertTrue((self.folder / "real_speech.svg").exists())

    def test_a_folder_that_is_missing(self):
        self.folder /= "nowhere"
        self.assert_refused("nowhere: No such file or directory")

    def test_two_talkers(self):
        for path in (self.folder / "carla").iterdir():
            path.unlink()
        (self.folder / "carla").rmdir()
        self.assert_refused(f"{self.folder}: it has 2 talkers, at least 3 are needed; each is a folder of WAV files")

    def test_a_talker_without_recordings(self):
        (self.folder / "dora").mkdir()
        (self.folder / "dora" / "notes.txt").write_text("nothing")
        self.assert_refused(f"{self.folder}/dora: it has no *.wav")

    def test_a_file_that_is_no_sound(self):
        (self.folder / "anna" / "0.wav").write_text("nothing")
        self.assert_refused(f"{self.folder}/anna/0.wav: it is not a WAV file")

    def test_another_form(self):
        write_speech(self.folder / "anna" / "0.wav", rate=8000)
        self.assert_refused("anna/0.wav: it has 8000 Hz and 1 channels; convert it to 16000 Hz, mono")
        write_speech(self.folder / "anna" / "0.wav", channels=2)
        self.assert_refused("anna/0.wav: it has 16000 Hz and 2 channels")

    def test_silence(self):
        write_speech(self.folder / "boris" / "1.wav", loudness=0, offset=300)
        self.assert_refused("boris/1.wav: it is silent; remove it")


if __name__ == "__main__":
    unittest.main()
