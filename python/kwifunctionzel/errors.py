# SPDX-License-Identifier: MIT
"""What a refusal tells, and what is told of an accepted call."""

from __future__ import annotations

import enum
import sys
import warnings
from typing import Any

from . import _core


class Code(enum.IntEnum):
    """Answers to writes, changes of containers and actions: 0 and 1 are taken, others refused."""

    OK = 0
    WARNING = 1
    BELOW_MINIMUM = 2
    ABOVE_MAXIMUM = 3
    NOT_A_NUMBER = 4
    NOT_IN_VALUE_LIST = 5
    UNKNOWN_VALUE = 6
    NOT_ENABLED = 7
    AMBIGUOUS_NAME = 8
    BAD_TEXT = 9
    TOO_LONG = 10
    LIMITS_CROSSED = 11
    OUTSIDE_DECLARED = 12
    READ_ONLY = 13
    NOT_AVAILABLE = 14
    NO_WRITE_ACCESS = 15
    DETACHED = 16
    BAD_INDEX = 17
    BAD_NAME = 18
    NAME_IN_USE = 19
    NOT_FOUND = 20
    CONTAINER_FULL = 21
    FIXED_SIZE = 22
    CAN_NOT_SHRINK = 23
    NOTHING_TO_DO = 24
    IN_TRANSACTION = 25
    FILE_NOT_READABLE = 26
    FILE_NOT_WRITABLE = 27
    FILE_NOT_UNDERSTOOD = 28
    WRONG_KIND = 29
    TIMEOUT = 30
    OPERATION_FAILED = 31
    INTERNAL = 32
    NOTHING_TO_ACT_ON = 33

    @property
    def text(self) -> str:
        """A sentence, such as "above the maximum"."""
        return _core.acceptance_text(int(self))


class Refused(Exception):
    """A call that was refused: nothing has changed.

    Attributes tell what stood when it was refused; those that the node has not are None.
    """

    code: Code
    text: str
    """The sentence of the code."""
    path: str
    """Of the node that was asked; empty for the root and where no node was."""
    value: Any
    """What was asked for."""
    limits: tuple[float, float] | None
    """Of a number, at that time: (minimum, maximum)."""
    values: list[Any]
    """What could be selected at that time: members of an enumeration, entries of a value list."""
    reports: list[str]
    """What the library reported meanwhile."""

    def __init__(self, code: Code, message: str) -> None:
        super().__init__(message)
        self.code = code
        self.text = code.text
        self.path = ""
        self.value = None
        self.limits = None
        self.values = []
        self.reports = []

    def __reduce__(self) -> tuple[Any, ...]:
        return (type(self), (self.code, str(self)), self.__dict__)


class RefusedValue(Refused, ValueError):
    """The value is none of those that the property takes now."""


class NotFound(Refused, LookupError):
    """No item has the index or name."""


class Limited(UserWarning):
    """A call was taken, but what stands is not what was asked for: limited, rounded, moved or
    taken back by a rule, or with settings of a file left out."""


class Reported(UserWarning):
    """The library reported something about a call that it took."""


_VALUE_CODES = frozenset(range(Code.BELOW_MINIMUM, Code.OUTSIDE_DECLARED + 1)) | {Code.BAD_NAME}


def _is_property(node: object) -> bool:
    return hasattr(node, "is_secret")


def _asked(node: Any, value: object) -> str:
    if value is None:
        return ""
    return ": asked for a secret" if _is_property(node) and node.is_secret else f": asked for {value!r}"


def refusal(code: int, node: Any, value: object, reports: list[str]) -> Refused:
    """The exception of a refused call; `node` is a node of a tree or None."""
    known = Code(code)
    kind: type[Refused] = Refused
    if known in _VALUE_CODES:
        kind = RefusedValue
    elif known in (Code.BAD_INDEX, Code.NOT_FOUND):
        kind = NotFound
    path = node.path if node is not None else ""
    limits = None
    values: list[Any] = []
    note = ""
    if _is_property(node):
        values = node.values
        if code == Code.BAD_TEXT and node.form:
            note = f": {node.form}"
        if isinstance(node.min, (int, float)):
            limits = (node.min, node.max)
            note = note or f" ({limits[0]} … {limits[1]} {node.unit_text}".rstrip() + ")"
    message = f"{known.text}{_asked(node, value)}{note}"
    exception = kind(known, f"{path}: {message}" if path else message)
    exception.path = path
    exception.value = None if _is_property(node) and node.is_secret else value
    exception.limits = limits
    exception.values = values
    exception.reports = reports
    return exception


def _user_level() -> int:
    """How far up the first caller outside of the package stands, as warnings.warn counts."""
    level = 2
    frame = sys._getframe(2)
    while frame.f_back is not None and frame.f_globals.get("__name__", "").startswith(__package__):
        frame = frame.f_back
        level += 1
    return level


def warn(code: int, node: Any, value: object, reports: list[str]) -> bool:
    """Warns of a call that was taken with code 1 or a report."""
    path = node.path if node is not None else ""
    level = _user_level()
    for report in reports:
        warnings.warn(Reported(report), stacklevel=level)
    if code == Code.WARNING:
        stands = f", {node.shown} stands" if _is_property(node) else ""
        text = f"{Code(code).text}{_asked(node, value)}{stands}"
        warnings.warn(Limited(f"{path}: {text}" if path else text), stacklevel=level)
    return True
