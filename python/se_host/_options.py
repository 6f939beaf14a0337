"""The options of a host as the library takes them."""

from __future__ import annotations

import ctypes
import operator
import os
from collections.abc import Sequence
from typing import Any

from . import _layout
from ._library import encoded
from ._log import to_logging
from .errors import ArgumentError

_NOT_THERE = -1
_MOST = 2**31 - 1


def whole(what: str, value: Any, lowest: int = 0, highest: int = _MOST) -> int:
    """fails: TypeError when it is no whole number, ArgumentError when it is out of range."""
    number = operator.index(value)
    if not lowest <= number <= highest:
        raise ArgumentError(f"{what} is {number}; it must be {lowest} to {highest}")
    return number


def _channel(what: str, channel: int | None) -> int:
    return _NOT_THERE if channel is None else whole(what, channel)


def options_of(*, tuning: str | os.PathLike[str] | None, engine: str | os.PathLike[str] | None,
               folder: str | os.PathLike[str] | None, device_model: bool, array: str | os.PathLike[str] | None,
               sample_rate: int, quantum: int, microphones: Sequence[int | None],
               far_end_channel: int | None) -> _layout.Options:
    if len(microphones) != _layout.MICROPHONES:
        raise ArgumentError(f"microphones has {len(microphones)} channels; it must have {_layout.MICROPHONES}, with "
                            "None for a microphone that is not there")
    channels = [_channel(f"the channel of microphone {number}", channel) for number, channel in enumerate(microphones, 1)]
    return _layout.Options(
        tuning=encoded("tuning", tuning), engine=encoded("engine", engine), folder=encoded("folder", folder),
        device_model=bool(device_model), array=encoded("array", array), sample_rate=whole("sample_rate", sample_rate),
        quantum=whole("quantum", quantum), microphones=(ctypes.c_int32 * _layout.MICROPHONES)(*channels),
        far_end_channel=_channel("far_end_channel", far_end_channel), log=to_logging)
