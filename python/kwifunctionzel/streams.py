# SPDX-License-Identifier: MIT
"""Records of samples, and streams of them. Arrays of samples are views of a record's own memory:
they are read-only and keep it, and a record that is kept takes room from its stream."""

from __future__ import annotations

import enum
import os
from typing import Any

from . import _core
from ._core import Acquisition, Armed, Reader, Record, Stream, TraceInfo, Writer

__all__ = [
    "COUNTS_PER_DIVISION", "Acquisition", "Armed", "FrameFlag", "MaskResult", "Reader", "Record",
    "SampleFormat", "Stream", "TraceInfo", "TracePlace", "Writer", "frame_type", "from_bytes",
    "make_record", "read", "values",
]

COUNTS_PER_DIVISION: float = _core.COUNTS_PER_DIVISION
"""Of samples of an analog input; 0 is the middle of the screen."""


class SampleFormat(enum.IntEnum):
    """How a point stands in memory."""

    INT16 = 0
    """-32768 is an invalid point."""
    FLOAT = 1
    """32 bits; NaN is an invalid point."""
    MINMAX = 2
    """Two of 16 bits, minimum and maximum: an array of two columns."""
    LINES = 3
    """8 bits, one for each digital line."""
    FRAMES = 4
    """Frames of a bus: an array of `frame_type`."""


class FrameFlag(enum.IntFlag):
    """Flags of a frame of a bus."""

    FD = 1
    BIT_RATE_SWITCH = 2
    REMOTE = 4
    READ = 8
    ERROR = 16
    BAD_CHECKSUM = 32
    NO_ACKNOWLEDGE = 64
    CUT = 128


class MaskResult(enum.IntEnum):
    """Result of the mask test of a record."""

    NOT_TESTED = 0
    PASSED = 1
    FAILED = 2


class TracePlace(enum.IntEnum):
    """Places of the traces in a record of an acquisition."""

    C1 = 0
    C2 = 1
    C3 = 2
    C4 = 3
    LINES = 4


def frame_type() -> Any:
    """The numpy type of a frame of a bus; a trace of frames is an array of it."""
    import numpy

    return numpy.dtype([
        ("time", "f8"), ("duration", "f8"), ("identifier", "u4"), ("flags", "u4"),
        ("protocol", "i4"), ("identifier_length", "u1"), ("bus", "u1"), ("length", "u1"),
        ("reserved", "u1"), ("bytes", "u1", (64,)),
    ])


def make_record(traces: list[TraceInfo], samples: list[Any], *, number: int = 1,
                trigger_time: int = 0) -> Record:
    """A record of memory of its own, from arrays of the type that each trace's format says."""
    return _core.make_record(traces, samples, number, trigger_time)


def read(file: str | os.PathLike[str]) -> Record:
    """Reads a record file, whole or not at all; `Record.write` writes one."""
    return _core.read_record(os.fspath(file))


def from_bytes(data: Any) -> Record:
    """The same of the bytes of a file; `Record.to_bytes` gives them."""
    return _core.record_from_bytes(data)


def values(record: Record, trace: int) -> Any:
    """Physical values of a trace, computed: sample × scale + offset, invalid points as NaN. Needs
    numpy."""
    import numpy

    info = record.trace(trace)
    if info.format in (SampleFormat.LINES, SampleFormat.FRAMES):
        raise TypeError("digital lines and frames have no physical values")
    samples = record.samples(trace)
    physical = numpy.asarray(samples, dtype=float) * info.scale + info.offset
    if info.format != SampleFormat.FLOAT:
        physical[samples == -32768] = numpy.nan
    return physical
