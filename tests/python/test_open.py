"""Opening and closing, what can go wrong with it, and where the library comes from."""
import gc
import logging
import os
import pickle
import shutil
import subprocess
import sys

import numpy as np
import pytest

import se_host
from conftest import BUILD, ROOT

BLOCK = np.zeros((160, 8), np.int16)


def test_a_host_tells_its_engine(host):
    assert host.engine_build == "se_lib_beamv1.14"
    assert "reference" in host.engine_version
    assert "se_lib_beamv1.14" in repr(host)
    assert host.latency == 0


def test_an_engine_is_chosen_by_folder_and_name(open_host):
    with open_host(folder=BUILD / "bin/selibs", engine="se_lib_harborv006") as host:
        assert host.engine_build == "se_lib_harborv006"


def test_the_device_model_has_its_own_engine(open_host):
    with open_host(device_model=True) as host:
        assert host.engine_build == "se_lib_harborv006"


def test_a_second_open_host_is_refused(host, open_host):
    with pytest.raises(se_host.InUseError):
        open_host()
    assert host.process(BLOCK).shape == (160,)


def test_another_engine_is_refused(open_host):
    open_host().close()
    with pytest.raises(se_host.InUseError):
        open_host(device_model=True)


@pytest.mark.parametrize("error, text, options", [
    (se_host.EngineError, "no_such", {"engine": "no_such"}),
    (ValueError, "48000", {"sample_rate": 48000}),
    (ValueError, "microphones has 2 channels", {"microphones": [1, 2]}),
    (ValueError, "microphone 3 is -2", {"microphones": [1, 2, -2, 4, 5, 6, 7]}),
    (ValueError, "1023", {"far_end_channel": 5000}),
    (ValueError, "quantum is -1", {"quantum": -1}),
    (TypeError, "float", {"quantum": 160.0}),
    (ValueError, "null character", {"tuning": "a\0b"}),
])
def test_options_that_cannot_be_are_refused_by_name(open_host, error, text, options):
    with pytest.raises(error) as refused:
        open_host(**options)
    assert text in str(refused.value) and "\n" not in str(refused.value)
    open_host().close()


def test_the_end_of_the_with_statement_closes(open_host):
    with open_host() as host:
        assert not host.closed
    assert host.closed
    host.close()


@pytest.mark.parametrize("use", [
    lambda host: host.process(BLOCK), lambda host: host["seout_gain_q10"],
    lambda host: host.__setitem__("seout_gain_q10", 900), lambda host: host.health(), lambda host: host.advice(),
    lambda host: host.save_tuning("x.json"), lambda host: setattr(host, "bypass", True)],
    ids=["process", "get", "set", "health", "advice", "save", "bypass"])
def test_a_closed_host_says_so(open_host, use):
    host = open_host()
    host.close()
    with pytest.raises(ValueError, match="closed"):
        use(host)


def test_a_forgotten_host_is_closed(open_host):
    host = open_host()
    del host
    gc.collect()
    open_host().close()


def test_a_program_that_forgets_to_close_ends_normally():
    code = "import se_host; host = se_host.Host(); host['seout_gain_q10'] = 900"
    environment = dict(os.environ, PYTHONPATH=str(ROOT / "python"))
    assert subprocess.run([sys.executable, "-c", code], env=environment).returncode == 0


def test_log_records_go_to_the_logger(open_host, caplog):
    with caplog.at_level(logging.DEBUG, "se_host"):
        open_host().close()
    assert any("Loaded" in record.getMessage() or "loaded" in record.getMessage() for record in caplog.records)


def test_errors_can_be_pickled():
    error = pickle.loads(pickle.dumps(se_host.UnknownSettingError("no setting 'x'")))
    assert str(error) == "no setting 'x'" and error.status is se_host.Status.UNKNOWN


def test_the_library_has_the_version_of_the_package():
    from se_host._library import decoded, library
    assert decoded(library().se_host_version()) == se_host.__version__


def run_elsewhere(code, package, **environment):
    kept = {name: value for name, value in os.environ.items() if name != "SE_HOST_LIBRARY"}
    return subprocess.run([sys.executable, "-c", code], env={**kept, "PYTHONPATH": str(package), **environment},
                          capture_output=True, text=True)


OPEN = """
import se_host
try:
    with se_host.Host() as host:
        print(host.engine_build)
except OSError as error:
    print(type(error).__name__, error)
"""


def test_a_library_beside_the_package_is_found(tmp_path):
    shutil.copytree(ROOT / "python/se_host", tmp_path / "se_host")
    (tmp_path / "se_host/libse_host.so.0").symlink_to(BUILD / "lib/libse_host.so.0")
    assert run_elsewhere(OPEN, tmp_path).stdout == "se_lib_beamv1.14\n"


@pytest.mark.parametrize("content", [None, "not a library"])
def test_a_library_that_cannot_be_used_is_named_with_what_to_do(tmp_path, content):
    library = tmp_path / "libse_host.so.0"
    if content is not None:
        library.write_text(content)
    done = run_elsewhere(OPEN, ROOT / "python", SE_HOST_LIBRARY=str(library))
    assert done.stdout.startswith("LibraryError ")
    assert str(library) in done.stdout and "set SE_HOST_LIBRARY" in done.stdout


def test_a_library_of_another_kind_is_refused():
    done = run_elsewhere(OPEN, ROOT / "python", SE_HOST_LIBRARY="libc.so.6")
    assert done.stdout.startswith("LibraryError ") and "se_host_open" in done.stdout
