"""A host is a mapping of its settings, with values of their types."""
import math

import numpy as np
import pytest

import se_host
from se_host import Setting


def test_an_edit_is_read_back_at_once(host):
    assert host["seout_gain_q10"] == 1024
    host["seout_gain_q10"] = 900
    assert host["seout_gain_q10"] == 900


def test_an_edit_is_heard(open_host, captured):
    def output_with(gain):
        with open_host() as host:
            host["seout_gain_q10"] = gain
            return host.process(captured).astype(float)
    assert np.std(output_with(512)) == pytest.approx(np.std(output_with(1024)) / 2, rel=0.01)


def test_an_edit_between_two_calls_reaches_the_second(host, captured):
    assert host.process(captured).any()
    host["seout_gain_q10"] = 0
    host.process(captured[:1600])
    assert not host.process(captured).any()


def test_a_measurement_moves_with_the_sound(host, captured):
    assert host["sesys_blocks"] == 0
    host.process(captured)
    assert 0 < host["sesys_blocks"] <= 200


def test_a_setting_is_found_by_its_path(host):
    host["diags/basic/seout_gain_q10"] = 900
    assert host["seout_gain_q10"] == 900


def test_values_have_the_types_of_their_settings(host, captured):
    host.process(captured)
    assert host["mmfx_look_mode"] == "0 - All directions"
    assert host["aec_bypass"] is False
    assert isinstance(host["sercv_far_end_energy"], (int, float))
    assert isinstance(host["seout_level_dbfs"], float)
    assert isinstance(host["location"], int)
    assert len(host["semic_level_dbfs"]) == 7
    assert all(isinstance(level, float) and -60 < level < 0 for level in host["semic_level_dbfs"])
    assert host["semic_clipped_total"] == [0] * 7


@pytest.mark.parametrize("name, given, held", [
    ("seout_gain_q10", "900", 900),
    ("seout_gain_q10", np.int16(900), 900),
    ("mmfx_look_mode", 2, "2 - Narrow forward"),
    ("mmfx_look_mode", "1 - Forward", "1 - Forward"),
    ("aec_bypass", True, True),
    ("aec_bypass", 1, True),
    ("seout_gain_q10", True, 1),
])
def test_a_value_may_be_given_in_several_ways(host, captured, name, given, held):
    host[name] = given
    host.process(captured[:1600])
    assert host[name] == held


def test_every_writable_value_can_be_written_back(host, captured):
    before = dict(host)
    for name, setting in host.settings.items():
        if setting.writable:
            host[name] = before[name]
            host.process(captured[:160])
    assert host.health().edits_dropped == 0
    assert {name: host[name] for name in host if host.settings[name].writable} == {
        name: before[name] for name in host if host.settings[name].writable}


@pytest.mark.parametrize("error, name, value, text", [
    (KeyError, "no_such", 1, "'no_such'"),
    (ValueError, "seout_gain_q10", 10**12, "out of range"),
    (ValueError, "seout_gain_q10", "loud", "'loud'"),
    (ValueError, "mmfx_location", 1, "read-only"),
    (ValueError, "semic_level_dbfs", [0.0] * 7, "array"),
    (TypeError, "seout_gain_q10", 0.5, "whole number, not float"),
    (TypeError, "seout_gain_q10", None, "whole number, not NoneType"),
    (ValueError, "seout_gain_q10", "9\0", "null character"),
])
def test_what_a_setting_does_not_take_is_refused_and_changes_nothing(host, error, name, value, text):
    before = host.get(name)
    with pytest.raises(error) as refused:
        host[name] = value
    assert text in str(refused.value)
    assert host.get(name) == before


def test_more_edits_than_wait_are_refused_until_there_is_sound(host, captured):
    with pytest.raises(se_host.QueueFullError):
        for gain in range(1, 2000):
            host["seout_gain_q10"] = gain
    last = host["seout_gain_q10"]
    assert last == gain - 1
    host.process(captured)
    host["seout_gain_q10"] = 900
    host.process(captured[:160])
    assert host["seout_gain_q10"] == 900


def test_a_host_is_a_mapping(host):
    assert "seout_gain_q10" in host and "no_such" not in host and 3 not in host
    assert set(host) == set(host.settings) and len(host) == len(host.settings) > 40
    assert host.get("no_such", 7) == 7
    host.update(seout_gain_q10=900, senr_comfort_noise_q10=10)
    assert (host["seout_gain_q10"], host["senr_comfort_noise_q10"]) == (900, 10)
    with pytest.raises(TypeError, match="cannot be deleted"):
        del host["seout_gain_q10"]


def test_settings_have_type_range_and_help(host):
    gain = host.settings["seout_gain_q10"]
    assert (gain.type, gain.elements, gain.writable) == ("Int32", 1, True)
    assert gain.path == "diags/basic/seout_gain_q10"
    assert gain.lowest < 1024 < gain.highest
    assert "1024 = 1" in gain.help
    assert not host.settings["sesys_blocks"].writable
    assert host.settings["sent_levels_dbfs"].elements == 180


def setting(kind, elements=1):
    return Setting("x", "x", kind, elements, True, 0, 1, "")


@pytest.mark.parametrize("given, text, value", [
    (setting("Int40"), "-549755813888", -549755813888),
    (setting("UInt32"), "4294967295", 4294967295),
    (setting("Float32"), "-12.5", -12.5),
    (setting("Bool"), "1", True),
    (setting("Enum"), "2 - [ a, b ]", "2 - [ a, b ]"),
    (setting("Int16", 3), "[ 1, -2, 3 ]", [1, -2, 3]),
    (setting("Float32", 2), "[ 1, -0.5 ]", [1.0, -0.5]),
    (setting("Int16", 2), "[  ]", []),
    (setting("Int16", 2), "none", None),
    (setting("none"), "none", None),
])
def test_texts_of_the_library_become_values(given, text, value):
    assert given.value_of(text) == value and type(given.value_of(text)) is type(value)


def test_a_float_that_is_not_finite_is_nan():
    assert math.isnan(setting("Float32").value_of("none"))
