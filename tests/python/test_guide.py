"""What docs/python.md shows works: its programs run in their order in one folder, its commands install the package."""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import wave

import pytest

from conftest import ROOT

GUIDE = (ROOT / "docs/python.md").read_text()
# Without what a test run sets; the Python of the tests comes first.
ENVIRONMENT = {name: value for name, value in os.environ.items() if not name.startswith("PYTHON")}
ENVIRONMENT["PATH"] = f"{pathlib.Path(sys.executable).parent}:{os.environ['PATH']}"


WITH_PACKAGE = {**ENVIRONMENT, "PYTHONPATH": str(ROOT / "python")}
EXAMPLE = [sys.executable, ROOT / "python/examples/sweep_setting.py"]


def blocks(language):
    return re.findall(rf"^```{language}\n(.*?)^```$", GUIDE, re.MULTILINE | re.DOTALL)


@pytest.fixture
def folder(tmp_path, captured):
    with wave.open(str(tmp_path / "meeting.wav"), "wb") as file:
        file.setparams((8, 2, 16000, 0, "NONE", "not compressed"))
        file.writeframes(captured.tobytes())
    return tmp_path


def test_the_programs_run(folder):
    programs = blocks("python")
    assert programs
    for program in programs:
        done = subprocess.run([sys.executable, "-W", "error", "-c", program], cwd=folder, env=WITH_PACKAGE,
                              capture_output=True, text=True)
        assert done.returncode == 0, f"{program}\n{done.stderr}"


def test_the_example_draws_a_sweep(folder):
    pytest.importorskip("matplotlib", reason="python3-matplotlib is not installed")
    done = subprocess.run([*EXAMPLE, "meeting.wav", "seout_gain_q10", "256", "512", "1024", "--picture", "sweep.png"],
                          cwd=folder, env=WITH_PACKAGE, capture_output=True, text=True, check=True)
    speech = [float(line.split()[2]) for line in done.stdout.splitlines() if line.endswith("dBFS")]
    assert [after - before for before, after in zip(speech, speech[1:])] == pytest.approx([6.0, 6.0], abs=0.3)
    assert (folder / "sweep.png").read_bytes().startswith(b"\x89PNG")


@pytest.mark.parametrize("arguments, named", [(["meeting.wav", "no_such", "1"], "no_such"),
                                              (["nowhere.wav", "seout_gain_q10", "1"], "nowhere.wav"),
                                              (["meeting.wav", "seout_gain_q10", "0.5"], "seout_gain_q10")])
def test_the_example_ends_with_one_line_that_names_what_is_wrong(folder, arguments, named):
    pytest.importorskip("matplotlib", reason="python3-matplotlib is not installed")
    done = subprocess.run([*EXAMPLE, *arguments], cwd=folder, env=WITH_PACKAGE, capture_output=True, text=True)
    assert done.returncode == 1 and done.stderr.count("\n") == 1 and named in done.stderr


def test_the_commands_install_the_package(tmp_path):
    """In a copy of the checkout, because setuptools writes into it."""
    shutil.copytree(ROOT / "python", tmp_path / "checkout/python", ignore=shutil.ignore_patterns("build", "*.egg-info"))
    [commands] = blocks("sh")
    done = subprocess.run(["bash", "-ec", commands], cwd=tmp_path / "checkout", capture_output=True, text=True,
                          env={**ENVIRONMENT, "HOME": str(tmp_path)})
    assert done.returncode == 0, done.stdout + done.stderr
    code = "import pathlib, se_host; print(se_host.__file__); se_host.Host(); " \
           "assert pathlib.Path(se_host.__file__).with_name('py.typed').exists()"
    used = subprocess.run([tmp_path / "se/bin/python", "-c", code], env=ENVIRONMENT, cwd=tmp_path, capture_output=True,
                          text=True)
    assert used.returncode == 0, used.stderr
    assert used.stdout.startswith(str(tmp_path / "se/lib"))
