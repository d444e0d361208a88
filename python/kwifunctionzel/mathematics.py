# SPDX-License-Identifier: MIT
"""Mathematics over records: operations, filters and expressions such as "(C1 - C2) * 2.5V"."""

from __future__ import annotations

from . import _core
from ._core import Expression, Mathematics, MathematicsCurve, Record

__all__ = ["Expression", "Mathematics", "MathematicsCurve", "compute", "find_scale"]


def compute(record: Record, expression: str, reference: Record | None = None) -> Record:
    """The curve of an expression, once, as a record of one trace of 32-bit floats. Who computes
    one after the other takes a `Mathematics`, which keeps its memory."""
    once = _core.Mathematics(1)
    once.configure(expression, format=1)
    return once.compute(record, reference)


def find_scale(lowest: float, highest: float) -> tuple[float, float] | None:
    """The finest scale and its position that show values so low and so high; None where there are
    none."""
    return _core.find_math_scale(lowest, highest)
