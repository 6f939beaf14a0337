"""What can go wrong. The texts are those of the library: one line that names the thing and what to do about it."""

from __future__ import annotations

import enum
from typing import Any


class Status(enum.IntEnum):
    """Result of a call of the library."""

    OK = 0
    BAD_ARGUMENT = 1
    BAD_ENGINE = 2
    IN_USE = 3
    BAD_FILE = 4
    UNKNOWN = 5
    REFUSED = 6
    FULL = 7
    DIFFERS = 8
    FAILED = 9


class Error(Exception):
    """Base of all errors of this package. `status` is the library's; None when there is none."""

    status: Status | None = None


class ArgumentError(Error, ValueError):
    """An argument that cannot be meant, such as a channel that is not there, or a host that is closed."""

    status = Status.BAD_ARGUMENT


class EngineError(Error):
    """There is no such engine build, or it cannot be used."""

    status = Status.BAD_ENGINE


class InUseError(Error):
    """This process has an open host already, or has loaded another engine."""

    status = Status.IN_USE


class FileError(Error, OSError):
    """A tuning or array file cannot be read or written, or is not one."""

    status = Status.BAD_FILE


class UnknownSettingError(Error, KeyError):
    """The engine has no such setting."""

    status = Status.UNKNOWN
    __str__ = Exception.__str__  # KeyError shows its text in quotes


class RefusedError(Error, ValueError):
    """The setting is read-only, or does not take this value."""

    status = Status.REFUSED


class QueueFullError(Error):
    """More edits wait than the library keeps: they are taken while sound is processed, then there is room again."""

    status = Status.FULL


class FailedError(Error, RuntimeError):
    """No memory, or the engine threw an exception. After `process`, `mono` is what it would have returned, with silence for
    the blocks in which the engine threw; otherwise None."""

    status = Status.FAILED
    mono: Any = None


class LibraryError(Error, OSError):
    """libse_host.so.0 cannot be loaded, or is too old for this package."""


class TuningWarning(UserWarning):
    """The tuning is applied, but the engine does not hold all of its values; the text has the first difference."""


_BY_STATUS: dict[int | None, type[Error]] = {
    error.status: error
    for error in (ArgumentError, EngineError, InUseError, FileError, UnknownSettingError, RefusedError, QueueFullError,
                  FailedError)
}


def error_of(status: int, text: str) -> Error:
    """The exception for a status of the library; a later library may have more of them."""
    return _BY_STATUS.get(status, Error)(text)
