"""The engine of this process. Any thread may call a host, and `process` lets other Python threads run meanwhile."""

from __future__ import annotations

import ctypes
import os
from array import array as Array
from collections.abc import Sequence
from typing import TYPE_CHECKING, Any, overload

from . import _layout
from ._handle import Handle
from ._library import decoded, status_text
from ._mapping import SettingsMapping
from ._options import options_of, whole
from ._sound import Output, Sound, require_same_form, sound_of
from .errors import FailedError, Status, error_of
from .health import Health, health_of

if TYPE_CHECKING:
    import numpy

SAMPLE_RATE = _layout.SAMPLE_RATE
"""Frames a second."""
BLOCK = _layout.BLOCK
"""Frames that the engine takes at once."""

_ADVICE_SIZE = 1 << 16


class Host(SettingsMapping):
    """An engine that is ready for sound, and a mapping of its settings.

        with se_host.Host(tuning="gentle.json") as host:
            mono = host.process(captured, far_end)
            host["seout_gain_q10"] = 900

    One host is open at a time. After it is closed, the same engine can be opened again, as it starts; another engine needs
    another process. An engine that crashes takes this process with it.

    Settings are found by name ("seout_gain_q10") or path ("diags/basic/seout_gain_q10"). An edit is read back at once and
    reaches the engine with the next blocks, up to 4 edits a block; values of the engine come back some blocks later.
    `settings` has type, range and help of each. A setting cannot be deleted.
    """

    def __init__(self, *, tuning: str | os.PathLike[str] | None = None, engine: str | os.PathLike[str] | None = None,
                 folder: str | os.PathLike[str] | None = None, device_model: bool = False,
                 array: str | os.PathLike[str] | None = None, sample_rate: int = SAMPLE_RATE, quantum: int = 0,
                 microphones: Sequence[int | None] = range(1, 8), far_end_channel: int | None = None) -> None:
        """Checks, loads and starts the engine, and applies the tuning.

        tuning:           file of settings that is applied before the first block
        engine:           file name of an engine build in `folder`, or a path with a slash
        folder:           of the engine builds; default: "selibs" beside the program, or else the installed ones
        device_model:     for the device that has an engine build of its own
        array:            file with the places of the microphones; default: the engine's own array
        sample_rate:      of the caller's sound, Hz; only 16000 is taken
        quantum:          each call of `process` brings a multiple of so many frames, which lowers the latency; 0: any number
        microphones:      channels of the microphones 1 to 7 in `captured`, None for one that is not there
        far_end_channel:  channel of the far end in `captured`, for calls without `far_end`

        fails: EngineError, InUseError, FileError, ArgumentError, LibraryError. A tuning that the engine does not hold as
        asked is a TuningWarning.
        """
        self._options = options_of(tuning=tuning, engine=engine, folder=folder, device_model=device_model, array=array,
                                   sample_rate=sample_rate, quantum=quantum, microphones=microphones,
                                   far_end_channel=far_end_channel)
        super().__init__(Handle(self._options))
        self._bypass = False
        functions, handle = self._handle.functions, self._handle.get()
        self._latency: int = functions.se_host_latency(handle)
        self._engine_build = decoded(functions.se_host_engine_build(handle))
        self._engine_version = decoded(functions.se_host_engine_version(handle))

    def close(self) -> None:
        """Waits for calls in progress, then closes. Edits that no block has taken are lost. Closing again does nothing."""
        self._handle.close()

    @property
    def closed(self) -> bool:
        return self._handle.closed

    def __enter__(self) -> Host:
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def __repr__(self) -> str:
        return f"<se_host.Host {self._engine_build}{', closed' if self.closed else ''}>"

    @property
    def engine_build(self) -> str:
        """File name of the engine."""
        return self._engine_build

    @property
    def engine_version(self) -> str:
        return self._engine_version

    @overload
    def process(self, captured: numpy.ndarray[Any, Any], far_end: Any = None, *, channels: int | None = None,
                clock_ns: int | None = None) -> numpy.ndarray[Any, Any]: ...
    @overload
    def process(self, captured: bytes | bytearray, far_end: Any = None, *, channels: int | None = None,
                clock_ns: int | None = None) -> bytes: ...
    @overload
    def process(self, captured: Array[Any] | memoryview, far_end: Any = None, *, channels: int | None = None,
                clock_ns: int | None = None) -> Array[Any]: ...

    def process(self, captured: Any, far_end: Any = None, *, channels: int | None = None,
                clock_ns: int | None = None) -> Any:
        """Sends any number of frames of 16 kHz sound through the engine.

        captured:  (frames, channels), int16, or float32 of -1 to 1; one dimension of interleaved samples, or bytes of
                   int16 samples, with `channels`
        far_end:   (frames,) of the same type, what the loudspeaker plays at that time; default: the channel of the options,
                   silence without one
        clock_ns:  the caller's clock in nanoseconds, from any beginning, as the first frame was captured; with it `health`
                   finds frames that did not come

        Returns (frames,) of the same type, later than `captured` by `latency` frames: a numpy array for a numpy array, bytes
        for bytes and bytearray, else an array.array. Arrays that are not contiguous or not writable are copied.

        fails: TypeError for another type of samples, ArgumentError for a shape that does not fit the options, FailedError
        when the engine threw; its `mono` has the sound, with silence for the blocks that failed.
        """
        sound = sound_of("captured", captured, channels)
        reference = None if far_end is None else sound_of("far_end", far_end, 1)
        if reference is not None:
            require_same_form(sound, reference)
        output = Output(sound)
        functions = self._handle.functions
        process = functions.se_host_process_i16 if sound.kind == "h" else functions.se_host_process_f32
        clock = None if clock_ns is None else whole("clock_ns", clock_ns, highest=2**64 - 1)
        with self._handle.audio:
            handle = self._handle.get()
            if clock is not None:
                functions.se_host_clock(handle, clock)
            status = process(handle, sound.address, sound.channels, reference.address if reference else None,
                             sound.frames, output.address)
        mono = output.like(captured)
        if status == Status.OK:
            return mono
        error = error_of(status, self._objection_to(sound, reference) or status_text(status))
        if isinstance(error, FailedError):
            error.mono = mono
        raise error

    def _objection_to(self, sound: Sound, far_end: Sound | None) -> str | None:
        """What the options have against this sound."""
        options = self._options
        last = max([*options.microphones] + ([options.far_end_channel] if far_end is None else []))
        if last >= sound.channels:
            return (f"captured has {sound.channels} channels, but channel {last} is that of a microphone or of the far end; "
                    "open the host with the microphones=... and far_end_channel=... of this sound")
        if options.quantum and sound.frames % options.quantum:
            return f"captured has {sound.frames} frames, which are no multiple of the quantum of {options.quantum}"
        return None

    @property
    def latency(self) -> int:
        """Frames by which `process` returns the sound later, the engine's own delay aside; 0 for a quantum of 160."""
        return self._latency

    @property
    def bypass(self) -> bool:
        """While true, the output is the sound of microphone 7 as it is, and the engine stands still."""
        return self._bypass

    @bypass.setter
    def bypass(self, bypass: bool) -> None:
        with self._handle.control:
            self._handle.functions.se_host_bypass(self._handle.get(), bool(bypass))
            self._bypass = bool(bypass)

    def health(self) -> Health:
        """What the sound so far tells. Takes some milliseconds, for which `process` does not wait."""
        raw = _layout.Health()
        with self._handle.control:
            status = self._handle.functions.se_host_health(self._handle.get(), ctypes.byref(raw))
        if status != Status.OK:
            raise error_of(status, status_text(status))
        return health_of(raw)

    def advice(self) -> list[str]:
        """What is wrong and what to do, a sentence each; empty when nothing is."""
        text = ctypes.create_string_buffer(_ADVICE_SIZE)
        with self._handle.control:
            self._handle.functions.se_host_advice(self._handle.get(), text, len(text))
        return decoded(text.value).splitlines()
