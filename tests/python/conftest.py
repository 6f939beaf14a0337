"""Fixtures of the tests of python/. Each test runs in a process of its own (--forked), because a process has one engine.

SE_HOST_BUILD is the build tree, build/release by default.
"""
import os
import pathlib
import sys
import tempfile

import numpy as np
import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ.get("SE_HOST_BUILD", ROOT / "build/release"))

os.environ["SE_HOST_LIBRARY"] = str(BUILD / "lib/libse_host.so.0")
sys.path.insert(0, str(ROOT / "python"))

import se_host  # noqa: E402  needs the path


@pytest.fixture
def tmp_path():
    """As pytest's own, which leaves its folder behind when a process is forked."""
    with tempfile.TemporaryDirectory() as folder:
        yield pathlib.Path(folder)


@pytest.fixture
def open_host():
    """Opens a host on the reference engine; a call brings whole blocks unless the test says otherwise."""
    def open_(**options):
        return se_host.Host(**{"quantum": se_host.BLOCK, **options})
    return open_


@pytest.fixture
def host(open_host):
    with open_host() as host:
        yield host


@pytest.fixture
def captured():
    """Two seconds of noise from above, which all microphones hear alike, with some of their own: channels 1 to 7, int16."""
    random = np.random.default_rng(1)
    frames = 2 * se_host.SAMPLE_RATE
    sound = np.zeros((frames, 8), np.int16)
    sound[:, 1:] = random.normal(0, 2000, (frames, 1)) + random.normal(0, 100, (frames, 7))
    return sound


@pytest.fixture
def far_end(captured):
    return np.random.default_rng(2).normal(0, 2000, len(captured)).astype(np.int16)
