"""Sound through the engine: shapes, types and lengths of arrays do not change what comes out."""
from array import array

import numpy as np
import pytest

import se_host
from conftest import BUILD


@pytest.fixture
def expected(open_host, captured, far_end):
    """What whole blocks of int16 give."""
    with open_host() as host:
        return host.process(captured, far_end)


def pieces_of(sound, lengths):
    start = 0
    while start < len(sound):
        for length in lengths:
            yield slice(start, start + length)
            start += length


def test_the_engine_lowers_the_noise(expected, captured):
    assert expected.dtype == np.int16 and expected.shape == (len(captured),)
    assert 0 < np.std(expected[-se_host.SAMPLE_RATE:].astype(float)) < np.std(captured[:, 1].astype(float))


def test_a_host_that_is_opened_again_starts_anew(open_host, captured, far_end, expected):
    with open_host() as host:
        assert np.array_equal(host.process(captured, far_end), expected)


def test_calls_of_any_length_give_the_same_sound_later(open_host, captured, far_end, expected):
    with open_host(quantum=0) as host:
        assert host.latency == 159
        mono = np.concatenate([host.process(captured[piece], far_end[piece])
                               for piece in pieces_of(captured, [1, 159, 160, 7, 333, 1024])])
    assert not mono[:159].any()
    assert np.array_equal(mono[159:], expected[:-159])


def test_no_frames_are_no_sound(open_host):
    with open_host(quantum=0) as host:
        assert host.process(np.zeros((0, 8), np.int16)).shape == (0,)


def test_float32_gives_the_values_of_int16(open_host, captured, far_end, expected):
    with open_host() as host:
        mono = host.process((captured / 32768).astype(np.float32), (far_end / 32768).astype(np.float32))
    assert mono.dtype == np.float32
    assert np.array_equal(mono * 32768, expected)


def test_the_far_end_may_be_a_channel(open_host, captured, far_end, expected):
    captured[:, 0] = far_end
    with open_host(far_end_channel=0) as host:
        assert np.array_equal(host.process(captured), expected)


def test_without_a_far_end_it_is_silent(open_host, captured, expected):
    with open_host() as host:
        mono = host.process(captured)
    with open_host() as host:
        assert np.array_equal(host.process(captured, np.zeros(len(captured), np.int16)), mono)
    assert not np.array_equal(mono, expected)


def test_microphones_may_be_in_other_channels(open_host, captured, far_end, expected):
    with open_host(microphones=[6, 5, 4, 3, 2, 1, 0]) as host:
        assert np.array_equal(host.process(np.ascontiguousarray(captured[:, :0:-1]), far_end), expected)


@pytest.mark.parametrize("change", [
    pytest.param(np.asfortranarray, id="planes"),
    pytest.param(lambda sound: np.repeat(sound, 2, axis=0)[::2], id="every_second_frame"),
    pytest.param(lambda sound: np.frombuffer(sound.tobytes(), np.int16).reshape(sound.shape), id="read_only"),
    pytest.param(memoryview, id="memoryview"),
])
def test_the_memory_of_an_array_does_not_matter(open_host, captured, far_end, expected, change):
    with open_host() as host:
        assert np.array_equal(host.process(change(captured), change(far_end)), expected)


@pytest.mark.parametrize("kind, result", [(bytes, bytes), (bytearray, bytes), (lambda sound: array("h", sound), array)],
                         ids=["bytes", "bytearray", "array"])
def test_without_numpy_it_takes_and_gives_plain_python(open_host, captured, far_end, expected, kind, result):
    with open_host() as host:
        mono = host.process(kind(captured.tobytes()), kind(far_end.tobytes()), channels=8)
    assert isinstance(mono, result)
    assert bytes(mono) == expected.tobytes()


def test_the_callers_sound_stays_as_it_is(open_host, captured, far_end):
    before = captured.copy(), far_end.copy()
    with open_host() as host:
        host.process(captured, far_end)
    assert np.array_equal(captured, before[0]) and np.array_equal(far_end, before[1])


def test_bypass_gives_microphone_7(host, captured):
    host.bypass = True
    assert host.bypass
    assert np.array_equal(host.process(captured), captured[:, 7])


INT16 = np.zeros((160, 8), np.int16)


@pytest.mark.parametrize("error, text, captured, options", [
    (TypeError, "list", [[0] * 8], {}),
    (TypeError, "'d'", INT16.astype(float), {}),
    (TypeError, "'>h'", INT16.astype(">i2"), {}),
    (TypeError, "far_end is float32, but captured is int16", INT16, {"far_end": np.zeros(160, np.float32)}),
    (ValueError, "one dimension", INT16[:, 0].copy(), {}),
    (ValueError, "3 dimensions", INT16.reshape(160, 8, 1), {}),
    (ValueError, "8 channels instead of 7", INT16, {"channels": 7}),
    (ValueError, "no whole frames of 3 channels", INT16.tobytes(), {"channels": 3}),
    (ValueError, "no whole int16 samples", bytes(3), {"channels": 1}),
    (ValueError, "far_end has 80 frames, but captured has 160", INT16, {"far_end": np.zeros(80, np.int16)}),
    (ValueError, "far_end has 2 channels", INT16, {"far_end": np.zeros((160, 2), np.int16)}),
    (ValueError, "7 channels, but channel 7 is", np.zeros((160, 7), np.int16), {}),
    (ValueError, "150 frames, which are no multiple of the quantum of 160", np.zeros((150, 8), np.int16), {}),
    (ValueError, "clock_ns is -1", INT16, {"clock_ns": -1}),
])
def test_other_sound_is_refused_in_a_line_that_names_it(host, error, text, captured, options):
    with pytest.raises(error) as refused:
        host.process(captured, **options)
    assert text in str(refused.value) and "\n" not in str(refused.value)
    assert host.health().frames == 0


def test_a_far_end_channel_that_is_not_there_is_refused(open_host):
    with open_host(far_end_channel=9) as host:
        with pytest.raises(se_host.ArgumentError, match="8 channels, but channel 9"):
            host.process(INT16)
        host.process(INT16, INT16[:, 0].copy())  # which does without it


def test_blocks_in_which_the_engine_throws_are_silent(monkeypatch, open_host):
    monkeypatch.setenv("SE_HOSTILE", "block throw")
    with open_host(engine=BUILD / "bin/selibs/test_engines/hostile") as host:
        with pytest.raises(se_host.FailedError) as failed:
            host.process(INT16)
        assert failed.value.mono.dtype == np.int16 and failed.value.mono.shape == (len(INT16),)
        assert not failed.value.mono.any()
        assert host.health().failed_blocks == len(INT16) // se_host.BLOCK
