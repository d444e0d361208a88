# SPDX-License-Identifier: MIT
"""The meter's catalogue: how its path is set up for each measurement and range."""

from __future__ import annotations

from collections.abc import Mapping
from typing import Any, NamedTuple

from . import _core
from ._core import MeterRange

__all__ = ["Measurement", "MeterRange", "catalogue", "range_of", "range_value"]


class Measurement(NamedTuple):
    """What the catalogue has of one type of measurement."""

    name: str
    """Of remote control, such as "VOLT:DC"."""
    input: int
    """Selection of the input."""
    path: int
    """Of the converter: 1 for types that are measured through the AC path."""
    ranges: Mapping[Any, MeterRange]
    """By members of enums.KW_ZEL_METER_RANGE."""


def catalogue() -> dict[Any, Measurement]:
    """All measurements, by members of enums.KW_ZEL_DMM_MEAS_TYPE."""
    return {kind: Measurement(*row) for kind, row in _core.meter_catalogue().items()}


def range_value(range: int | str) -> float:
    """Nominal value of a range; 0 with a warning where there is none."""
    return _core.meter_range_value(range)


def range_of(value: float) -> Any:
    """The range of a nominal value, a member of enums.KW_ZEL_METER_RANGE; -1 with a warning where
    there is none."""
    return _core.meter_range_of(value)
