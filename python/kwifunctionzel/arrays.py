# SPDX-License-Identifier: MIT
"""Arrays over what the module computed or recorded, without a copy."""

from __future__ import annotations

from typing import Any


def view(buffer: Any) -> Any:
    """An array of numpy over an object of the buffer protocol; where numpy is not installed, a
    memoryview. numpy is imported with the first array: it takes longer than the package."""
    try:
        import numpy
    except ImportError:
        return memoryview(buffer)
    return numpy.asarray(buffer)
