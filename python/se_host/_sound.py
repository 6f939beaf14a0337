"""Sound in any object with the buffer protocol, for the library and back. Needs no numpy."""

from __future__ import annotations

import ctypes
import sys
from array import array
from typing import Any, NamedTuple

from .errors import ArgumentError

# Of the buffer protocol. Bytes are int16 samples.
_KINDS = {"h": "h", "f": "f", "B": "h"}
_SIZES = {"h": 2, "f": 4}
_NAMES = {"h": "int16", "f": "float32"}


class Sound(NamedTuple):
    start: Any  # the first byte; keeps the buffer alive
    kind: str   # "h" or "f"
    frames: int
    channels: int

    @property
    def address(self) -> int:
        return ctypes.addressof(self.start)


def _view_of(what: str, given: Any) -> memoryview:
    try:
        return memoryview(given)
    except TypeError:
        raise TypeError(f"{what} is of type {type(given).__name__}; it must be a numpy array, an array.array, bytes "
                        "or another buffer of int16 or float32 samples") from None


def _shape_of(what: str, view: memoryview, samples: int, channels: int | None) -> tuple[int, int]:
    if view.ndim == 2:
        frames, width = view.shape or (0, 0)
    elif view.ndim == 1 and channels is not None and channels > 0:
        frames, width = samples // channels, channels
    elif view.ndim == 1:
        raise ArgumentError(f"{what} has one dimension; give it the shape (frames, channels), or say channels=...")
    else:
        raise ArgumentError(f"{what} has {view.ndim} dimensions; its shape must be (frames, channels)")
    if channels not in (None, width):
        raise ArgumentError(f"{what} has {width} channels instead of {channels}")
    if frames * width != samples:
        raise ArgumentError(f"{what} has {samples} samples, which are no whole frames of {channels} channels")
    return frames, width


def _start_of(view: memoryview) -> Any:
    """The first byte of the buffer, or of a copy when it is empty, read-only or has gaps."""
    if view.nbytes == 0 or view.readonly or not view.c_contiguous:
        return ctypes.c_char.from_buffer(bytearray(view) or bytearray(1))
    return ctypes.c_char.from_buffer(view)


def sound_of(what: str, given: Any, channels: int | None) -> Sound:
    """The samples of `given`: two dimensions, or one with the number of channels.

    fails: TypeError for another kind of object or samples, ArgumentError for another shape.
    """
    view = _view_of(what, given)
    kind = _KINDS.get(view.format.lstrip("@=<"))
    if kind is None or (view.itemsize == 1 and view.ndim != 1):
        raise TypeError(f"{what} has samples of the format '{view.format}'; they must be int16 or float32")
    if view.nbytes % _SIZES[kind] != 0:
        raise ArgumentError(f"{what} has {view.nbytes} bytes, which are no whole {_NAMES[kind]} samples")
    frames, width = _shape_of(what, view, view.nbytes // _SIZES[kind], channels)
    return Sound(_start_of(view), kind, frames, width)


def require_same_form(captured: Sound, far_end: Sound) -> None:
    if far_end.kind != captured.kind:
        raise TypeError(f"far_end is {_NAMES[far_end.kind]}, but captured is {_NAMES[captured.kind]}; "
                        "both must be of one type")
    if far_end.frames != captured.frames:
        raise ArgumentError(f"far_end has {far_end.frames} frames, but captured has {captured.frames}")


class Output:
    """Memory for one channel of the same kind and length as `sound`."""

    def __init__(self, sound: Sound) -> None:
        self._samples = bytearray(sound.frames * _SIZES[sound.kind])
        self._kind = sound.kind
        self._start = _start_of(memoryview(self._samples))

    @property
    def address(self) -> int:
        return ctypes.addressof(self._start)

    def like(self, given: Any) -> Any:
        """The samples as a numpy array, bytes or an array.array, as `given` is."""
        numpy = sys.modules.get("numpy")
        if numpy is not None and isinstance(given, numpy.ndarray):
            return numpy.frombuffer(self._samples, given.dtype)
        if isinstance(given, (bytes, bytearray)):
            return bytes(self._samples)
        return array(self._kind, bytes(self._samples))
