# SPDX-License-Identifier: MIT
"""Label lists: the messages and signals of a bus, files of them, frames decoded by them."""

from __future__ import annotations

import os
import warnings
from collections.abc import Iterator
from typing import Any, NamedTuple

from . import _core
from ._core import LabelList, LabelMessage, LabelSignal
from .errors import Reported
from .nodes import Group

__all__ = [
    "DecodedMessage", "DecodedSignal", "Decoder", "Frame", "LabelList", "LabelMessage",
    "LabelSignal", "from_tree", "read", "read_log",
]


class DecodedSignal(NamedTuple):
    """A signal of a frame."""

    name: str
    value: float
    """Physical value; NaN of one that can not be read."""
    unit: str
    label: str | None
    """Of the raw value."""
    raw: int
    """Its bits, the highest not sign-extended."""


class DecodedMessage(NamedTuple):
    """A frame that a label list knows."""

    name: str
    signals: list[DecodedSignal]
    """Those that are there, in the order of the list."""

    def value(self, name: str) -> float:
        """Physical value of a signal; KeyError where it is not there."""
        for signal in self.signals:
            if signal.name == name:
                return signal.value
        raise KeyError(name)


class Frame(NamedTuple):
    """A frame of a log."""

    time: int | None
    """Nanoseconds since 1970, or since the log began."""
    bus: str
    identifier: int
    is_extended: bool
    """Identifier of 29 bits, else 11."""
    is_fd: bool
    is_remote: bool
    is_error: bool
    payload: bytes


class Decoder:
    """A label list, compiled: frames in, signals out. Any number of threads may use one."""

    def __init__(self, labels: LabelList) -> None:
        self._decoder = _core.Decoder(labels)

    def decode(self, identifier: int, payload: Any, identifier_length: int = 11
               ) -> DecodedMessage | None:
        """The signals of a frame, whose bytes anything with the buffer protocol may hold. None for
        a message that the list has not."""
        found = self._decoder.decode(identifier, payload, identifier_length)
        if found is None:
            return None
        name, signals = found
        return DecodedMessage(name, [DecodedSignal(*signal) for signal in signals])

    def decode_frame(self, frame: Frame) -> DecodedMessage | None:
        """The same of a frame of a log."""
        return self.decode(frame.identifier, frame.payload, 29 if frame.is_extended else 11)


def read(file: str | os.PathLike[str], *, skip_bad_messages: bool = False) -> LabelList:
    """Reads a file: a CAN database (".dbc"), XML or CSV, by the end of its name. Refused as a
    whole, or without its bad messages; warns of what is to be said, each with line and column."""
    return _core.read_labels(os.fspath(file), skip_bad_messages)


def from_tree(settings: Group) -> LabelList:
    """The list of a bus, such as root.SerialBus.CANBusSettings.LabelListSettings. Its method `put`
    is the way back."""
    return _core.get_labels(settings)


def read_log(file: str | os.PathLike[str]) -> Iterator[Frame]:
    """The frames of a log, as `candump` or ".asc" has it; warns of lines that are not understood."""
    reader = _core.LogReader()
    with open(file, "rb") as lines:
        for number, line in enumerate(lines, 1):
            found = reader.read(line)
            if found is False:
                text = f"{os.fspath(file)}:{number}: not understood"
                warnings.warn(Reported(text), stacklevel=2)
            elif found is not None:
                yield Frame(*found)
