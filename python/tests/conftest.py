# SPDX-License-Identifier: MIT
import warnings
from collections.abc import Iterator

import pytest

import kwifunctionzel as kwi


@pytest.fixture
def root() -> Iterator["kwi.tree.ZEL"]:
    """A tree of its own."""
    with kwi.root() as tree:
        yield tree


@pytest.fixture(autouse=True)
def no_silent_warnings() -> Iterator[None]:
    """What a test does not expect to be limited is a fault."""
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        yield
