"""Health has None for what cannot be relied on."""
import ctypes
import dataclasses

import pytest

import se_host
from se_host import _layout, health


def test_fields_are_those_of_the_library():
    raw = [name for name, _ in _layout.Health._fields_ if name not in ("size", "valid")]
    assert [field.name for field in dataclasses.fields(se_host.Health)] == raw


@pytest.mark.parametrize("flag", health.NEEDS)
def test_a_flag_is_about_its_fields(flag):
    with_flag, without = health.health_of(_layout.Health(valid=flag)), health.health_of(_layout.Health(valid=~flag & 15))
    names = [field.name for field in dataclasses.fields(se_host.Health)]
    assert {name for name in names if getattr(without, name) is None} == set(health.NEEDS[flag])
    assert not any(getattr(with_flag, name) is None for name in health.NEEDS[flag])


def test_before_sound_it_knows_nothing_of_it(host):
    found = host.health()
    assert (found.frames, found.blocks) == (0, 0)
    assert found.microphone_dbfs is None and found.block_mean_us is None and found.missing_frames is None
    assert host.advice()


def test_sound_is_counted_and_measured(host, captured, far_end):
    captured[:, 3] = 0
    captured[1000, 5] = 32767
    host.process(captured, far_end)
    found = host.health()
    assert (found.frames, found.blocks) == (32000, 200)
    assert found.microphone_dead == (False, False, True, False, False, False, False)
    assert found.microphone_clipped == (0, 0, 0, 0, 1, 0, 0)
    assert found.microphone_dbfs[0] == pytest.approx(-24.3, abs=0.5)
    assert found.far_end_dbfs == pytest.approx(-24.3, abs=0.5)
    assert 0 < found.block_mean_us <= found.block_worst_us
    assert any("microphone 3" in sentence for sentence in host.advice())


def test_a_clock_finds_missing_frames(host, captured):
    lost = 0
    for block in range(300):
        if block == 100:
            lost = 160
        clock_ns = (160 * block + lost) * 10**9 // se_host.SAMPLE_RATE
        host.process(captured[:160], clock_ns=clock_ns)
    assert host.health().missing_frames == 160


def test_the_delay_of_an_echo_is_found(host, captured, far_end):
    delay = 800  # 50 ms
    captured[delay:, 1:] = far_end[:-delay, None] // 4
    for _ in range(4):
        host.process(captured, far_end)
    assert host.health().echo_delay_ms == pytest.approx(50, abs=1)
    assert host.health().echo_delay_confidence > 0.5


def test_raw_structs_tell_their_size():
    assert _layout.Health().size == ctypes.sizeof(_layout.Health)
