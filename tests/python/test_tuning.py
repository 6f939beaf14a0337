"""Tuning files."""
import json
import warnings

import pytest

import se_host


@pytest.fixture
def tuning(host, tmp_path):
    host["seout_gain_q10"] = 900
    host.save_tuning(tmp_path / "gentle.json")
    host.close()
    return tmp_path / "gentle.json"


def with_unknown_setting(tuning):
    content = json.loads(tuning.read_text())
    content["diagnostics"]["no_such"] = {"type": "Int16", "writable": True, "value": 1}
    tuning.write_text(json.dumps(content))
    return tuning


def test_a_host_is_opened_with_a_tuning(open_host, tuning):
    with open_host(tuning=tuning) as host:
        assert host["seout_gain_q10"] == 900


def test_a_tuning_is_loaded_into_an_open_host(open_host, tuning):
    with open_host() as host:
        assert host["seout_gain_q10"] == 1024
        host.load_tuning(str(tuning))
        assert host["seout_gain_q10"] == 900


def test_what_the_engine_does_not_have_is_a_warning(open_host, tuning):
    with_unknown_setting(tuning)
    with pytest.warns(se_host.TuningWarning, match="no_such") as warned:
        host = open_host(tuning=tuning)
    assert host["seout_gain_q10"] == 900
    with pytest.warns(se_host.TuningWarning, match="no_such"):
        host.load_tuning(tuning)
    assert len(warned) == 1


def test_a_warning_that_is_an_error_leaves_no_open_host(open_host, tuning):
    with_unknown_setting(tuning)
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        with pytest.raises(se_host.TuningWarning):
            open_host(tuning=tuning)
        open_host().close()


@pytest.mark.parametrize("content", [None, "no tuning"])
def test_a_file_that_is_no_tuning_is_an_error_with_its_name(open_host, tmp_path, content):
    path = tmp_path / "other.json"
    if content is not None:
        path.write_text(content)
    with pytest.raises(OSError, match="other.json") as failed:
        open_host(tuning=path)
    assert isinstance(failed.value, se_host.FileError)
    with open_host() as host, pytest.raises(se_host.FileError, match="other.json"):
        host.load_tuning(path)


def test_a_tuning_that_cannot_be_written_is_an_error(host, tmp_path):
    with pytest.raises(se_host.FileError, match="nowhere"):
        host.save_tuning(tmp_path / "nowhere" / "gentle.json")
