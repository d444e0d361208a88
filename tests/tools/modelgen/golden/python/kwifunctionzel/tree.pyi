# SPDX-License-Identifier: MIT
# Generated from the model: change the model, not this file.
"""The classes of groups, for editors and type checkers."""

from typing import Generic, NoReturn, TypeVar

import kwifunctionzel.tree as _tree
from kwifunctionzel import enums
from kwifunctionzel.enumerations import Enumeration
from kwifunctionzel.nodes import Action, Array, Group, Map, Root

_E = TypeVar("_E", bound=Enumeration)

# How members read and are written: results not at all. Texts of numbers may have a prefix and a
# unit: "2 ms/div".

class _NumberResult:
    def __get__(self, group: object, owner: object = ...) -> float: ...
    def __set__(self, group: object, value: NoReturn) -> None: ...

class _Number(_NumberResult):
    def __set__(self, group: object, value: float | str) -> None: ...

class _WholeResult:
    def __get__(self, group: object, owner: object = ...) -> int: ...
    def __set__(self, group: object, value: NoReturn) -> None: ...

class _Whole(_WholeResult):
    def __set__(self, group: object, value: int | str) -> None: ...

class _ChoiceResult(Generic[_E]):
    def __get__(self, group: object, owner: object = ...) -> _E: ...
    def __set__(self, group: object, value: NoReturn) -> None: ...

class _Choice(_ChoiceResult[_E]):
    def __set__(self, group: object, value: _E | str) -> None: ...

class _SwitchResult:
    def __get__(self, group: object, owner: object = ...) -> enums.KW_ONOFF: ...
    def __set__(self, group: object, value: NoReturn) -> None: ...

class _Switch(_SwitchResult):
    def __set__(self, group: object, value: enums.KW_ONOFF | bool | str) -> None: ...

class _TextResult:
    def __get__(self, group: object, owner: object = ...) -> str: ...
    def __set__(self, group: object, value: NoReturn) -> None: ...

class _Text(_TextResult):
    def __set__(self, group: object, value: str) -> None: ...

class _BytesResult:
    def __get__(self, group: object, owner: object = ...) -> bytes: ...
    def __set__(self, group: object, value: NoReturn) -> None: ...

class _Bytes(_BytesResult):
    def __set__(self, group: object, value: bytes | bytearray | memoryview) -> None: ...

class _ReferenceResult(_TextResult): ...

class _Reference(_ReferenceResult):
    def __set__(self, group: object, value: str | Group | None) -> None: ...

class Demo(Root):
    """Root of the demonstration."""
    State: _Choice[enums.KW_PROBE]
    """A selector with the frame's default. Default: x1."""

    @property
    def Channel(self) -> Array[_tree.Channel]:
        """Array (4 items at first, at most 15): One input."""

    @property
    def Label(self) -> Map[_tree.Texts]:
        """Map (at most 100 items): All kinds of texts; the name | pipe is part of this."""

    @property
    def Texts(self) -> _tree.Texts:
        """All kinds of texts; the name | pipe is part of this."""

    @property
    def Preset(self) -> Action:
        """Action: Sets the defaults."""

    @property
    def Stop(self) -> Action:
        """Operation: Stops the acquisition."""

class Channel(Group):
    """One input."""
    Scale: _Number
    """Time per division. Unit: s/div. Values: 1e-9, 0.001, 100. Default: 0.001."""

    Gain: _Whole
    """Gain. Range: ≤ 100. Default: 2, 4, 6 for the items in turn."""

    Rate: _Choice[enums.KW_RATE]
    """Rate. Values: 10 k, 2.5 µ\\s. Default: 10 k, 2.5 µ\\s for the items in turn."""

    Mask: _Whole
    """Mask. Range: -9223372036854775808 … 5. Default: -1."""

    Reading: _WholeResult
    """Result: Last reading."""

class Texts(Group):
    """All kinds of texts; the name | pipe is part of this."""
    Title: _Text
    """Title. Values: "a "b" µ", "two". Default: "a "b" µ"."""

    Phrase: _Text
    """Secret: Phrase. Range: 8 … 63 printable ASCII characters, or 64 hex digits."""

    Pattern: _Text
    """Pattern. Range: at most 8 bits. Default: "01X"."""

    File: _Text
    """File. Range: extensions csv, bin."""
