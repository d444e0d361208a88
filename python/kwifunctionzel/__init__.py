# SPDX-License-Identifier: MIT
"""The function database of a handheld measuring instrument: one tree of settings and results.

    import kwifunctionzel as kwi

    root = kwi.root()
    root.Horizontal.Scale = "2 ms/div"
"""

from __future__ import annotations

from typing import TYPE_CHECKING

from . import enums, errors, helpers, labels, masks, mathematics, meter, nodes, streams, tree
from .api import Changes, Coupling, History
from .enumerations import Availability, ControlMode, Enumeration, SavedWith
from .errors import Code, Limited, NotFound, Refused, RefusedValue, Reported
from .nodes import Action, Array, Group, Map, Property, Root

if TYPE_CHECKING:
    import os

__all__ = [
    "Action", "Array", "Availability", "Changes", "Code", "ControlMode", "Coupling",
    "Enumeration", "Group", "History", "Limited", "Map", "NotFound", "Property", "Refused",
    "RefusedValue", "Reported", "Root", "SavedWith", "connect", "enums", "errors", "helpers",
    "labels", "masks", "mathematics", "meter", "root", "seal", "streams", "tree",
]


def root() -> tree.ZEL:
    """The root of the tree of this process, which is built when nobody has it yet. The same object
    as long as somebody holds it or a node of it."""
    made: tree.ZEL = nodes.root()
    return made


def connect(host: str = "127.0.0.1", port: int = 5026, *, token: str | None = None,
            timeout: float = 30.0) -> tree.ZEL:
    """The root of a living tree that a service (`zelhost`, `CKWService`) serves as JSON, with the
    nodes of `root()`. The writes of a transaction are sent together when it ends, all or nothing.
    What only the tree's own process can do is refused with Code.NOT_AVAILABLE: results, the other
    brackets, access, files by paths."""
    from . import remote

    made: tree.ZEL = remote.connect(host, port, token, timeout)
    return made


def seal(name: str | os.PathLike[str]) -> None:
    """Accepts a settings file that was changed on purpose: gives it the digest of what it holds
    now."""
    from . import _core

    _core.seal(name if isinstance(name, str) else name.__fspath__())
