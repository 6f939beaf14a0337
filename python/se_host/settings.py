"""Settings: what they are, and their values between Python and the library's texts."""

from __future__ import annotations

import dataclasses
import math
import operator
from collections.abc import Callable
from typing import Any, Union

from . import _layout
from ._library import decoded

Value = Union[bool, int, float, str, list[Any], None]
"""An int or a float, NaN when not finite; a bool for a switch; for an enumeration the text of number and label,
"2 - Narrow forward"; a list for an array; None when there is no value."""


@dataclasses.dataclass(frozen=True)
class Setting:
    """A setting or a measurement of the engine."""

    name: str
    path: str
    """Its place in the property tree, "diags/basic/seout_gain_q10"."""
    type: str
    """"Int16", "UInt32", "Int40", "Float32", "Enum", "Bool", "none", ..."""
    elements: int
    """1: a single value; else an array, which can only be read."""
    writable: bool
    lowest: float
    """The range of values that can be set."""
    highest: float
    help: str

    def value_of(self, text: str) -> Value:
        """The library's text as a value."""
        number = float if self.type == "Float32" else int
        if self.elements > 1:
            return [number(element) for element in text.strip("[ ]").split(",") if element] if text != "none" else None
        if text == "none":
            return math.nan if self.type == "Float32" else None
        return _TEXTS.get(self.type, number)(text)

    def text_of(self, value: Any) -> str:
        """A value as text for the library, which says what it does not take. fails: TypeError."""
        if isinstance(value, str) or self.elements > 1 or not self.writable:
            return str(value)
        try:
            return repr(float(value)) if self.type == "Float32" else str(int(operator.index(value)))
        except TypeError:
            number = "a number" if self.type == "Float32" else "a whole number"
            raise TypeError(f"'{self.name}' takes {number}, not {type(value).__name__}") from None


# Of the types that are not numbers.
_TEXTS: dict[str, Callable[[str], Value]] = {"Enum": str, "Bool": lambda text: text == "1"}


def setting_of(raw: _layout.Setting) -> Setting:
    return Setting(decoded(raw.name), decoded(raw.path), decoded(raw.type), raw.elements, bool(raw.writable),
                   raw.lowest, raw.highest, decoded(raw.help))
