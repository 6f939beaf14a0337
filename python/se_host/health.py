"""What the sound so far tells."""

from __future__ import annotations

import ctypes
import dataclasses
from typing import Any

from . import _layout


@dataclasses.dataclass(frozen=True)
class Health:
    """State of a host. A field is None as long as it cannot be relied on.

    Tuples have an element for each of the microphones 1 to 7.
    """

    frames: int
    """Frames received."""
    blocks: int
    """Blocks of 160 frames that the engine processed."""
    bypassed_blocks: int
    failed_blocks: int
    """Blocks in which the engine threw an exception."""
    edits_applied: int
    edits_dropped: int
    """Edits that were not made because the engine had moved the value."""
    missing_frames: int | None
    """Frames that should have come by the clock that was given to `process`, found some two seconds later; None without a
    clock."""
    late_calls: int | None
    """Calls more than 20 ms behind that clock; None without a clock."""
    far_end_dbfs: float | None
    """Level of the last second, -144 for silence; None before a second of sound."""
    far_end_silent_seconds: float
    """How long the far end has been digital silence."""
    microphone_dbfs: tuple[float, ...] | None
    """Level of the last second; None before a second of sound."""
    microphone_clipped: tuple[int, ...] | None
    """Samples at the limits of int16."""
    microphone_dead: tuple[bool, ...] | None
    """Constant for a second, or 40 dB below the median of the others."""
    echo_delay_ms: float | None
    """Delay of the echo behind the far end, negative when the far end comes too late; None when no echo was heard."""
    echo_delay_confidence: float | None
    """0 to 1: the share of two-second pieces that agree."""
    block_mean_us: float | None
    """Microseconds that the engine takes for a block; None before 100 blocks."""
    block_999_us: float | None
    """99.9 % of the blocks take no longer."""
    block_worst_us: float | None


# The fields that need a flag.
NEEDS = {
    _layout.HAS_CLOCK: ("missing_frames", "late_calls"),
    _layout.HAS_LEVELS: ("far_end_dbfs", "microphone_dbfs", "microphone_clipped", "microphone_dead"),
    _layout.HAS_ECHO_DELAY: ("echo_delay_ms", "echo_delay_confidence"),
    _layout.HAS_BLOCK_TIMES: ("block_mean_us", "block_999_us", "block_worst_us"),
}


def _plain(value: Any) -> Any:
    return tuple(value) if isinstance(value, ctypes.Array) else value


def health_of(raw: _layout.Health) -> Health:
    values = {field.name: _plain(getattr(raw, field.name)) for field in dataclasses.fields(Health)}
    values["microphone_dead"] = tuple(map(bool, values["microphone_dead"]))
    for flag, names in NEEDS.items():
        if not raw.valid & flag:
            values.update(dict.fromkeys(names))
    return Health(**values)
