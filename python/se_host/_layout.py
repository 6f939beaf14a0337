"""The structs and constants of host/se_host.h. A test compares them with the header."""

from __future__ import annotations

import ctypes
from ctypes import c_char_p, c_double, c_int, c_int32, c_size_t, c_uint32, c_uint64, c_void_p

SAMPLE_RATE = 16000
BLOCK = 160
MICROPHONES = 7

HAS_CLOCK = 1
HAS_LEVELS = 2
HAS_ECHO_DELAY = 4
HAS_BLOCK_TIMES = 8

LogFunction = ctypes.CFUNCTYPE(None, c_void_p, c_int, c_char_p, c_char_p)


class _Sized(ctypes.Structure):
    """A struct that begins with its size."""

    def __init__(self, **values: object) -> None:
        super().__init__(size=ctypes.sizeof(self), **values)


class Options(_Sized):
    _fields_ = [
        ("size", c_size_t),
        ("engine", c_char_p),
        ("folder", c_char_p),
        ("device_model", c_int),
        ("array", c_char_p),
        ("tuning", c_char_p),
        ("sample_rate", c_uint32),
        ("quantum", c_uint32),
        ("microphones", c_int32 * MICROPHONES),
        ("far_end_channel", c_int32),
        ("log", LogFunction),
        ("log_context", c_void_p),
    ]


class Setting(_Sized):
    _fields_ = [
        ("size", c_size_t),
        ("name", c_char_p),
        ("path", c_char_p),
        ("type", c_char_p),
        ("help", c_char_p),
        ("elements", c_uint32),
        ("writable", c_int),
        ("lowest", c_double),
        ("highest", c_double),
    ]


class Health(_Sized):
    _fields_ = [
        ("size", c_size_t),
        ("valid", c_uint32),
        ("frames", c_uint64),
        ("blocks", c_uint64),
        ("bypassed_blocks", c_uint64),
        ("failed_blocks", c_uint64),
        ("edits_applied", c_uint64),
        ("edits_dropped", c_uint64),
        ("missing_frames", c_uint64),
        ("late_calls", c_uint64),
        ("far_end_dbfs", c_double),
        ("far_end_silent_seconds", c_double),
        ("microphone_dbfs", c_double * MICROPHONES),
        ("microphone_clipped", c_uint64 * MICROPHONES),
        ("microphone_dead", c_int32 * MICROPHONES),
        ("echo_delay_ms", c_double),
        ("echo_delay_confidence", c_double),
        ("block_mean_us", c_double),
        ("block_999_us", c_double),
        ("block_worst_us", c_double),
    ]
