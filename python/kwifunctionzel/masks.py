# SPDX-License-Identifier: MIT
"""Masks: a line above and a line below a trace, in divisions of the screen, and tests by them. A
point is (x, y) or (x, y, whether a gap follows); masks and frames stay as they are made."""

from __future__ import annotations

import os

from . import _core
from ._core import Mask, MaskEvent, MaskFrame, MaskRun, MaskViolation, PlacedMask, Record
from .nodes import Group

__all__ = [
    "Mask", "MaskEvent", "MaskFrame", "MaskRun", "MaskViolation", "PlacedMask", "around",
    "from_tree", "read",
]


def around(record: Record, trace: int, frame: MaskFrame, width_x: float, width_y: float) -> Mask:
    """A mask around what a screen shows of a trace, at least so many divisions away from it."""
    return _core.make_mask(record, trace, frame, width_x, width_y)


def read(file: str | os.PathLike[str]) -> Mask:
    """Reads a file, whole or not at all."""
    return _core.read_mask(os.fspath(file))


def from_tree(setup: Group) -> Mask:
    """The mask of a channel, such as root.Mask.MaskChannelSetup[0], as it was made or loaded. Its
    method `put` is the way back."""
    return _core.get_mask(setup)
