"""The functions of libse_host.so.0: finding and declaring them, calling them, texts both ways."""

from __future__ import annotations

import ctypes
import functools
import os
import pathlib
import warnings
from ctypes import POINTER, c_char_p, c_int, c_size_t, c_uint32, c_uint64, c_void_p
from typing import Any

from . import _layout
from .errors import LibraryError, Status, TuningWarning, error_of

NAME = "libse_host.so.0"
VARIABLE = "SE_HOST_LIBRARY"

_WHY_SIZE = 1024

# Result and arguments of each; a test compares them with the header.
FUNCTIONS: dict[str, tuple[Any, list[Any]]] = {
    "se_host_open": (c_int, [POINTER(_layout.Options), POINTER(c_void_p), c_char_p, c_size_t]),
    "se_host_close": (None, [c_void_p]),
    "se_host_latency": (c_uint32, [c_void_p]),
    "se_host_process_i16": (c_int, [c_void_p, c_void_p, c_uint32, c_void_p, c_size_t, c_void_p]),
    "se_host_process_f32": (c_int, [c_void_p, c_void_p, c_uint32, c_void_p, c_size_t, c_void_p]),
    "se_host_clock": (None, [c_void_p, c_uint64]),
    "se_host_bypass": (None, [c_void_p, c_int]),
    "se_host_set": (c_int, [c_void_p, c_char_p, c_char_p, c_char_p, c_size_t]),
    "se_host_get": (c_int, [c_void_p, c_char_p, c_char_p, c_size_t, POINTER(c_size_t)]),
    "se_host_setting_count": (c_size_t, [c_void_p]),
    "se_host_setting": (c_int, [c_void_p, c_size_t, POINTER(_layout.Setting)]),
    "se_host_load_tuning": (c_int, [c_void_p, c_char_p, c_char_p, c_size_t]),
    "se_host_save_tuning": (c_int, [c_void_p, c_char_p, c_char_p, c_size_t]),
    "se_host_health": (c_int, [c_void_p, POINTER(_layout.Health)]),
    "se_host_advice": (c_size_t, [c_void_p, c_char_p, c_size_t]),
    "se_host_engine_build": (c_char_p, [c_void_p]),
    "se_host_engine_version": (c_char_p, [c_void_p]),
    "se_host_version": (c_char_p, []),
    "se_host_status_text": (c_char_p, [c_int]),
}


def _path() -> str:
    if chosen := os.environ.get(VARIABLE):
        return chosen
    # What the library itself needs is found relative to the file, so links are followed first.
    beside = (pathlib.Path(__file__).parent / NAME).resolve()
    return str(beside) if beside.exists() else NAME


@functools.cache
def library() -> Any:
    """The library, loaded once. fails: LibraryError."""
    path = _path()
    try:
        loaded = ctypes.CDLL(path)
        for name, (result, arguments) in FUNCTIONS.items():
            function = getattr(loaded, name)
            function.restype, function.argtypes = result, arguments
    except (OSError, AttributeError) as error:
        raise LibraryError(f"{path} cannot be used: {error}; "
                           f"install libse_host, or set {VARIABLE} to the path of {NAME}") from None
    return loaded


def decoded(text: bytes | None) -> str:
    return (text or b"").decode("utf-8", "surrogateescape")


def encoded(what: str, text: str | os.PathLike[str] | None) -> bytes | None:
    """A name, value or path for the library; C texts end at the first null character."""
    if text is None:
        return None
    if "\0" in os.fspath(text):
        raise ValueError(f"{what} holds a null character")
    return os.fspath(text).encode("utf-8", "surrogateescape")


def status_text(status: int) -> str:
    return decoded(library().se_host_status_text(status))


def ask(function: Any, *arguments: Any) -> None:
    """Calls a function that explains itself. fails: an Error with its text; TuningWarning is a warning."""
    why = ctypes.create_string_buffer(_WHY_SIZE)
    status = function(*arguments, why, len(why))
    if status == Status.DIFFERS:
        warnings.warn(decoded(why.value), TuningWarning, stacklevel=3)
    elif status != Status.OK:
        raise error_of(status, decoded(why.value) or status_text(status))
