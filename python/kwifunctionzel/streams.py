# SPDX-License-Identifier: MIT
"""Records of samples, and streams of them. Arrays of samples are views of a record's own memory:
they are read-only and keep it, and a record that is kept takes room from its stream."""

from __future__ import annotations

import enum
from typing import Any

from . import _core
from ._core import Reader, Record, Stream, TraceInfo, Writer

__all__ = [
    "Reader", "Record", "SampleFormat", "Stream", "TraceInfo", "Writer", "make_record", "values",
]


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


def make_record(traces: list[TraceInfo], samples: list[Any], *, number: int = 1,
                trigger_time: int = 0) -> Record:
    """A record of memory of its own, from arrays of the type that each trace's format says."""
    return _core.make_record(traces, samples, number, trigger_time)


def values(record: Record, trace: int) -> Any:
    """Physical values of a trace, computed: sample × scale + offset, invalid points as NaN. Needs
    numpy."""
    import numpy

    info = record.trace(trace)
    if info.format == SampleFormat.LINES:
        raise TypeError("digital lines have no physical values")
    samples = record.samples(trace)
    physical = numpy.asarray(samples, dtype=float) * info.scale + info.offset
    if info.format != SampleFormat.FLOAT:
        physical[samples == -32768] = numpy.nan
    return physical
