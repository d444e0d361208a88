# SPDX-License-Identifier: MIT
"""Enumerations: classes that are made when they are first asked for, and those that never change."""

from __future__ import annotations

import enum
from typing import Any

from . import _core


class Enumeration(enum.IntEnum):
    """Base of the enumerations of the tree. Members are named by their serial names, the names that
    stand in files; an "N" stands in front of those that begin with a digit. Properties take any
    name of a member, in any case."""

    @property
    def display(self) -> str | None:
        """Shown to the user."""
        return _tables[type(self).__name__].display(int(self))

    @property
    def short(self) -> str | None:
        """For narrow displays."""
        return _tables[type(self).__name__].short(int(self))

    @property
    def remote(self) -> str | None:
        """Mnemonic of remote control."""
        return _tables[type(self).__name__].remote(int(self))

    @property
    def serial(self) -> str | None:
        """Written to files."""
        return _tables[type(self).__name__].serial(int(self))

    @property
    def number(self) -> float | None:
        """The number that the value stands for, such as a bit rate in bit/s."""
        return _tables[type(self).__name__].number(int(self))


_tables: dict[str, _core.EnumTable] = {}


def member_name(serial: str | None, number: int) -> str:
    """What a value is called in Python."""
    text = serial or str(number)
    return f"N{text}" if text[0].isdigit() else text


def make(table: _core.EnumTable) -> type[Enumeration]:
    """The class of a table. Pickled members name the module that finds the class again."""
    members = [(member_name(table.serial(i), i), i) for i in range(len(table))]
    name = table.type
    _tables[name] = table
    base: Any = Enumeration
    made: type[Enumeration] = base(name, members, module=f"{__package__}.enums", qualname=name)
    made.__doc__ = table.doc
    return made


class Availability(enum.IntEnum):
    """What can be done with a node. The strictest of its own and those of its parents counts."""

    AVAILABLE = 0
    READ_ONLY = 1
    """Shown, but writes are refused."""
    NOT_AVAILABLE = 2
    """Neither shown nor writable."""


class ControlMode(enum.IntEnum):
    """Who may write."""

    LOCAL = 0
    REMOTE = 1
    LOCAL_LOCKOUT = 2
    """Only writes inside of `writing(remote=True)` are taken."""


class SavedWith(enum.IntFlag):
    """Files that carry a property."""

    NONE = 0
    SETTINGS = 1
    """The user's settings: save, recall and preset."""
    SYSTEM = 2
    """State of the instrument: shutdown, startup and factory preset."""
    ALL = 3
