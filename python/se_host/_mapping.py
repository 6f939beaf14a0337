"""The settings of an open handle as a mapping."""

from __future__ import annotations

import ctypes
import os
import types
from collections.abc import Iterator, Mapping, MutableMapping

from . import _layout
from ._handle import Handle
from ._library import ask, decoded, encoded
from .errors import Status, UnknownSettingError, error_of
from .settings import Setting, Value, setting_of

_VALUE_SIZE = 256


def _catalogue_of(handle: Handle) -> list[Setting]:
    raw = _layout.Setting()
    catalogue = []
    with handle.control:
        for place in range(handle.functions.se_host_setting_count(handle.get())):
            handle.functions.se_host_setting(handle.get(), place, ctypes.byref(raw))
            catalogue.append(setting_of(raw))
    return catalogue


class SettingsMapping(MutableMapping[str, Value]):
    """Values by name or path; the names are those that it iterates over."""

    def __init__(self, handle: Handle) -> None:
        self._handle = handle
        self._by_name: dict[str, Setting] = {}
        self._by_path: dict[str, Setting] = {}
        for setting in _catalogue_of(handle):  # of two with one name, the first
            self._by_name.setdefault(setting.name, setting)
            self._by_path.setdefault(setting.path, setting)

    @property
    def settings(self) -> Mapping[str, Setting]:
        """Type, range and help of each setting and measurement, by name."""
        return types.MappingProxyType(self._by_name)

    def __getitem__(self, name: str) -> Value:
        setting = self._setting(name)
        size = _VALUE_SIZE
        while True:
            text, length = ctypes.create_string_buffer(size), ctypes.c_size_t()
            with self._handle.control:
                status = self._handle.functions.se_host_get(self._handle.get(), encoded("name", name), text, size,
                                                            ctypes.byref(length))
            if status != Status.OK:
                raise error_of(status, f"the engine has no setting '{name}'")
            if length.value < size:
                return setting.value_of(decoded(text.value))
            size = length.value + 1

    def __setitem__(self, name: str, value: Value) -> None:
        text = encoded("value", self._setting(name).text_of(value))
        with self._handle.control:
            ask(self._handle.functions.se_host_set, self._handle.get(), encoded("name", name), text)

    def __delitem__(self, name: str) -> None:
        raise TypeError("the settings of an engine cannot be deleted")

    def __iter__(self) -> Iterator[str]:
        return iter(self._by_name)

    def __len__(self) -> int:
        return len(self._by_name)

    # Two engines are never the same, whatever their settings are.
    __eq__ = object.__eq__
    __hash__ = object.__hash__

    def load_tuning(self, path: str | os.PathLike[str]) -> None:
        """Asks for all writable values of a tuning file. Names and values that cannot be are passed over with a
        TuningWarning. fails: FileError, QueueFullError, and nothing is changed.
        """
        with self._handle.control:
            ask(self._handle.functions.se_host_load_tuning, self._handle.get(), encoded("path", path))

    def save_tuning(self, path: str | os.PathLike[str]) -> None:
        """Writes all values to a tuning file, as a whole or not at all. fails: FileError."""
        with self._handle.control:
            ask(self._handle.functions.se_host_save_tuning, self._handle.get(), encoded("path", path))

    def _setting(self, name: str) -> Setting:
        setting = self._by_name.get(name) or self._by_path.get(name)
        if setting is None:
            raise UnknownSettingError(f"the engine has no setting '{name}'; host.settings lists them")
        return setting
