"""An open handle of the library, and what keeps it from being closed during a call."""

from __future__ import annotations

import ctypes
import threading
import weakref
from typing import Any

from . import _layout
from ._library import ask, library
from .errors import ArgumentError, TuningWarning


def _close(functions: Any, handle: ctypes.c_void_p, audio: Any, control: Any) -> None:
    with audio, control:
        functions.se_host_close(handle)


class Handle:
    """Threads that process sound take turns, and so do all other calls. The two kinds do not wait for each other: a call
    holds `audio` or `control`, and closing takes both.
    """

    def __init__(self, options: _layout.Options) -> None:
        self.functions = library()
        self.audio, self.control = threading.Lock(), threading.RLock()
        self._handle = ctypes.c_void_p()
        try:
            ask(self.functions.se_host_open, ctypes.byref(options), ctypes.byref(self._handle))
        except TuningWarning:  # the program turns warnings into errors
            self.functions.se_host_close(self._handle)
            raise
        # Also called when the host is forgotten, and at the end of the program.
        self.close = weakref.finalize(self, _close, self.functions, self._handle, self.audio, self.control)

    @property
    def closed(self) -> bool:
        return not self.close.alive

    def get(self) -> ctypes.c_void_p:
        """needs: a lock, which keeps the handle open while it is used."""
        if self.closed:
            raise ArgumentError("the host is closed")
        return self._handle
