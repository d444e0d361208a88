# SPDX-License-Identifier: MIT
"""The classes of groups, for editors and type checkers. Python walks the tree: at run time all
groups are of one class, which the names of this module stand for."""

from typing import Any

from .nodes import Group, Root


def __getattr__(name: str) -> Any:
    if not name[:1].isupper():
        raise AttributeError(f"there is no class {name!r}")
    return Root if name == "ZEL" else Group
