# SPDX-License-Identifier: MIT
"""The nodes of the tree in this process. A node keeps the tree until `Root.close`; after that it
answers its last value and refuses writes with Code.DETACHED."""

from __future__ import annotations

import atexit
import weakref
from typing import Any, TypeVar

from . import _core, api, arrays, enumerations, errors

_G = TypeVar("_G", bound="Group")
_R = TypeVar("_R", bound="Root")


class Property(_core.Property, api.PropertyApi):
    """A property itself: what `group.Name` reads and writes, with all that belongs to it."""

    __slots__ = ()
    __doc__ = api.MeaningDoc(__doc__)  # type: ignore[assignment]


class Action(_core.Action, api.ActionApi):
    """An action; calling it runs it."""

    __slots__ = ()
    __doc__ = api.MeaningDoc(__doc__)  # type: ignore[assignment]


class Group(_core.Group, api.GroupApi):
    """A group: its members are attributes. Reading one of a property gives the value, writing sets
    it. `node("Name")` is the property itself."""

    __slots__ = ()
    __doc__ = api.MeaningDoc(__doc__)  # type: ignore[assignment]


class Array(Group, api.ArrayApi[_G]):
    """An array of groups, as a list."""

    __slots__ = ()
    __doc__ = api.MeaningDoc(__doc__)  # type: ignore[assignment]


class Map(Group, api.MapApi[_G]):
    """A map of groups, as a dict."""

    __slots__ = ()
    __doc__ = api.MeaningDoc(__doc__)  # type: ignore[assignment]


class Root(Group, api.RootApi):
    """The root of the tree."""

    __slots__ = ()
    __doc__ = api.MeaningDoc(__doc__)  # type: ignore[assignment]

    def close(self) -> None:
        """Lets the tree go, whatever else holds nodes of it; it goes when nobody else in the
        process has it."""
        self._close()

    @property
    def is_open(self) -> bool:
        """Whether it was not closed."""
        return self._is_open

    def __enter__(self: _R) -> _R:
        return self

    def __exit__(self, *_: object) -> None:
        self.close()


def root() -> Any:
    """The root of the tree of this process, which is built when nobody has it yet. The same object
    as long as somebody holds it or a node of it."""
    known = _present()
    if known is not None:
        return known
    made = _core.open_root()
    known = _present()  # of another thread that was quicker
    if known is not None:
        return known
    globals()["_known"] = weakref.ref(made)
    return made


def _present() -> Root | None:
    known = _known() if _known is not None else None
    return known if known is not None and known.is_open else None


_known: weakref.ref[Root] | None = None

_core.register({
    "property": Property, "action": Action, "group": Group, "array": Array, "map": Map,
    "root": Root, "refusal": errors.refusal, "warn": errors.warn,
    "enumeration": enumerations.make, "view": arrays.view,
})
# Threads that still run when the process ends may have the tree's lock for ever.
atexit.register(_core._set_ending)
