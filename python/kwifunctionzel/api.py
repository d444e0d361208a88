# SPDX-License-Identifier: MIT
"""What nodes can do, whatever tree they are of: everything here is made of the few calls that a
tree has to offer (the names with an underscore in front, and those that `nodes.py` takes over).
The tree of this process offers them in `_core`; another one needs those calls and no more."""

from __future__ import annotations

import contextlib
import operator
import time
from collections.abc import Iterator
from typing import TYPE_CHECKING, Any, Generic, NamedTuple, TypeVar, overload

from .enumerations import Availability, ControlMode, SavedWith

if TYPE_CHECKING:
    import os

    from .nodes import Action, Group, Property

_G = TypeVar("_G", bound="Group")


class Coupling(NamedTuple):
    """A row of a group's rules: what starts it, and the steps that run then."""

    group: str
    """Path of the group that the row belongs to."""
    number: int
    """Place in the group's table, from 1."""
    word: str
    """"On", "OnAny", "Delivered", "Changed", "Items", "Fresh", "Twins"; empty: only when everything
    is computed."""
    sources: list[str]
    """Paths of the settings that start it; "[each]" stands for all items of a container."""
    what: str
    """"Do", "Derive" or "Settle"."""
    steps: list[str]
    """Names of what runs, in this order."""
    when: str
    """As the table reads: "Changed(FFT/State)"."""


class History(NamedTuple):
    """The texts that name steps, the next one first."""

    undo: tuple[str, ...]
    redo: tuple[str, ...]


class NodeApi:
    """What all nodes have."""

    __slots__ = ()

    if TYPE_CHECKING:
        @property
        def name(self) -> str: ...
        @property
        def path(self) -> str: ...
        @property
        def meaning(self) -> str: ...
        @property
        def _availability(self) -> int: ...

    @property
    def availability(self) -> Availability:
        """What can be done with the node now."""
        return Availability(self._availability)

    @property
    def is_available(self) -> bool:
        """Whether it is shown and may be written or run."""
        return self._availability == Availability.AVAILABLE


class MeaningDoc:
    """What help() tells: of a node its meaning, of a class what was written."""

    def __init__(self, text: str | None) -> None:
        self._text = text

    def __get__(self, node: NodeApi | None, owner: object = None) -> str | None:
        return self._text if node is None else node.meaning


class PropertyApi(NodeApi):
    """What properties have beside their values and limits."""

    __slots__ = ()

    if TYPE_CHECKING:
        @property
        def shown(self) -> str: ...
        @property
        def _saved_with(self) -> int: ...

    @property
    def saved_with(self) -> SavedWith:
        """The files that carry it."""
        return SavedWith(self._saved_with)

    def __repr__(self) -> str:
        return f"<{self.path}: {self.shown}>"


class ActionApi(NodeApi):
    """What actions have beside being called."""

    __slots__ = ()

    def __repr__(self) -> str:
        return f"<{self.path}()>"


class Changes:
    """Tells whether anything at or below a group has changed since it was last asked. Each has a
    counter of its own. Cheap, and never waits for a writer."""

    __slots__ = ("_counter", "_group")

    def __init__(self, group: GroupApi) -> None:
        self._group = group
        self._counter = 0
        self.has_changed()

    def has_changed(self) -> bool:
        """Whether something changed since the last call, or since this was made."""
        changed, self._counter = self._group._has_changed(self._counter)
        return changed

    def wait(self, timeout: float | None = None) -> bool:
        """Waits until something changes, at most `timeout` seconds; without end for None. False
        when the time is up."""
        end = None if timeout is None else time.monotonic() + timeout
        while not self.has_changed():
            left = self._group._poll_seconds if end is None else end - time.monotonic()
            if left <= 0:
                return False
            time.sleep(min(left, self._group._poll_seconds))
        return True


class GroupApi(NodeApi):
    """What groups have beside their members."""

    __slots__ = ()
    _poll_seconds = 0.002
    """Between two looks of who waits: a changed tree is seen within a display's picture."""

    if TYPE_CHECKING:
        def _members(self) -> dict[str, Property | Group | Action]: ...
        def _member(self, name: str) -> Property | Group | Action | None: ...
        def _has_changed(self, counter: int) -> tuple[bool, int]: ...
        def _couplings(self) -> list[tuple[str, int, str, list[str], str, list[str], str]]: ...

    def changes(self) -> Changes:
        """A poller for this group and all below it."""
        return Changes(self)

    def wait(self, timeout: float | None = None) -> bool:
        """Waits until something at or below this group changes, at most `timeout` seconds. What
        changed before the call does not count: keep a `changes()` to miss nothing."""
        return Changes(self).wait(timeout)

    def node(self, path: str) -> Property | Group | Action:
        """The node of a path such as "Vertical/Channel[1]/Scale", itself instead of its value; the
        empty path is the group. KeyError where there is none."""
        node: Any = self
        for step in path.split("/") if path else ():
            name, bracket, key = step.partition("[")
            child = node._member(name) if isinstance(node, GroupApi) else None
            if child is None:
                raise KeyError(path)
            node = child
            if bracket:
                if not isinstance(child, GroupApi) or not key.endswith("]"):
                    raise KeyError(path)
                node = child._step(key[:-1])
                if node is None:
                    raise KeyError(path)
        return node  # type: ignore[no-any-return]

    def _step(self, key: str) -> Group | None:
        """The item of a key as paths write it."""
        return None

    def members(self) -> dict[str, Property | Group | Action]:
        """Properties, child groups and actions by name, themselves instead of their values, in the
        order of their declaration."""
        return self._members()

    def walk(self) -> Iterator[Property | Group | Action]:
        """All nodes below the group: members, then those of each child group and item."""
        for member in self._members().values():
            yield member
            if isinstance(member, GroupApi):
                yield from member.walk()
        for item in self._all_items():
            yield item
            yield from item.walk()

    def _all_items(self) -> list[Any]:
        return []

    def couplings(self) -> list[Coupling]:
        """The rows of the group's rules, in their order."""
        return [Coupling(*row) for row in self._couplings()]

    def __dir__(self) -> list[str]:
        return sorted({*super().__dir__(), *self._members()})

    def __repr__(self) -> str:
        return f"<{type(self).__name__} {self.path!r}>"


class ContainerApi(GroupApi, Generic[_G]):
    """What arrays and maps have in common. Clients insert and remove where `is_dynamic` says so;
    each change is a step for undo."""

    __slots__ = ()

    if TYPE_CHECKING:
        def _count(self) -> int: ...
        def _max_count(self) -> int: ...
        def _is_dynamic(self) -> bool: ...
        def _active(self) -> str: ...
        def _item_at(self, position: int) -> Any: ...
        def _item_of(self, name: str) -> Any: ...
        def _name_of_key(self, key: int) -> str | None: ...
        def _key_of_name(self, name: str) -> int | None: ...
        def _names(self) -> list[str]: ...
        def _insert(self, key: str) -> None: ...
        def _remove(self, key: str) -> None: ...
        def _rename(self, key: str, name: str) -> None: ...
        def _copy(self, key: str, name: str) -> None: ...
        def _set_active(self, key: str) -> None: ...

    def __len__(self) -> int:
        return self._count()

    def __bool__(self) -> bool:
        return self._count() > 0

    @property
    def max_count(self) -> int:
        """Items with which it is full."""
        return self._max_count()

    @property
    def is_dynamic(self) -> bool:
        """Whether items may be inserted, removed and renamed."""
        return self._is_dynamic()

    def _all_items(self) -> list[Any]:
        items: list[Any] = []
        # Another thread may remove some meanwhile.
        with contextlib.suppress(IndexError):
            items.extend(self._item_at(i) for i in range(self._count()))
        return items


class ArrayApi(ContainerApi[_G]):
    """An array of groups, as a list."""

    __slots__ = ()

    def _step(self, key: str) -> _G | None:
        try:
            return self[int(key)] if key.isdecimal() else None
        except IndexError:
            return None

    def _place(self, index: int) -> int:
        count = self._count()
        place = index + count if index < 0 else index
        if not 0 <= place < count:
            raise IndexError(f"{self.path} has {count} items, none of index {index}")
        return place

    @overload
    def __getitem__(self, index: int) -> _G: ...
    @overload
    def __getitem__(self, index: slice) -> list[_G]: ...
    def __getitem__(self, index: int | slice) -> _G | list[_G]:
        if isinstance(index, slice):
            items: list[_G] = self._all_items()
            return items[index]
        place = operator.index(index)
        item: _G = self._item_at(place if place >= 0 else self._place(place))
        return item

    def __iter__(self) -> Iterator[_G]:
        i = 0
        while i < self._count():
            try:
                item: _G = self._item_at(i)
            except IndexError:
                return
            yield item
            i += 1

    def __reversed__(self) -> Iterator[_G]:
        return iter(self._all_items()[::-1])

    def __contains__(self, item: object) -> bool:
        return any(own == item for own in self._all_items())

    def index(self, item: object) -> int:
        """Place of an item; ValueError when it is none of these."""
        return self._all_items().index(item)

    def append(self) -> _G:
        """Inserts an item at the end and gives it."""
        self._insert("")
        return self[-1]

    def insert(self, index: int) -> _G:
        """Inserts an item before an index and gives it; beyond the ends at the ends, as of a
        list."""
        count = self._count()
        place = max(index + count, 0) if index < 0 else min(index, count)
        self._insert(str(place))
        return self[place]

    def copy(self, index: int, to: int) -> _G:
        """Inserts an item before `to` with the contents of another and gives it."""
        self._copy(str(self._place(index)), str(to))
        return self[to]

    def __delitem__(self, index: int) -> None:
        self._remove(str(self._place(index)))

    def remove(self, item: object) -> None:
        """Removes an item; ValueError when it is none of these."""
        del self[self.index(item)]

    @property
    def active(self) -> int | None:
        """Index of the active item, which moves with the item; None when none is."""
        text = self._active()
        return int(text) if text not in ("", "-1") else None

    @active.setter
    def active(self, index: int) -> None:
        self._set_active(str(self._place(index)))


class MapApi(ContainerApi[_G]):
    """A map of groups by unique names, as a dict in the order of the numeric keys."""

    __slots__ = ()

    def _step(self, key: str) -> _G | None:
        return self.get(key)

    def __getitem__(self, name: str) -> _G:
        item: _G | None = self._item_of(name)
        if item is None:
            raise KeyError(name)
        return item

    def get(self, name: str, default: _G | None = None) -> _G | None:
        """The item of a name, or `default`."""
        item: _G | None = self._item_of(name)
        return default if item is None else item

    def __iter__(self) -> Iterator[str]:
        return iter(self._names())

    def __contains__(self, name: object) -> bool:
        return isinstance(name, str) and self._key_of_name(name) is not None

    def keys(self) -> list[str]:
        """Names in the order of the numeric keys."""
        return self._names()

    def values(self) -> list[_G]:
        """Items in the order of the numeric keys."""
        return self._all_items()

    def items(self) -> list[tuple[str, _G]]:
        """Names and items in the order of the numeric keys; those that another thread removes
        meanwhile are left out."""
        found = ((name, self._item_of(name)) for name in self._names())
        return [(name, item) for name, item in found if item is not None]

    def insert(self, name: str = "") -> _G:
        """Inserts an item and gives it; without a name one is made from the pattern."""
        if name:
            self._insert(name)
            return self[name]
        before = set(self._names())
        self._insert("")
        made = next((own for own in self._names() if own not in before), "")
        return self[made]  # KeyError where another thread has removed it meanwhile

    def rename(self, name: str, new_name: str) -> None:
        """Gives an item another name; its numeric key stays."""
        self._rename(name, new_name)

    def copy(self, name: str, new_name: str) -> _G:
        """Inserts an item with the contents of another and gives it."""
        self._copy(name, new_name)
        return self[new_name]

    def __delitem__(self, name: str) -> None:
        if name not in self:
            raise KeyError(name)
        self._remove(name)

    def by_key(self, key: int) -> _G:
        """The item of a numeric key; KeyError where there is none."""
        name = self._name_of_key(key)
        if name is None:
            raise KeyError(key)
        return self[name]

    def numeric_key(self, name: str) -> int:
        """Unique number of an item, ≥ 0, which stays when its name changes."""
        key = self._key_of_name(name)
        if key is None:
            raise KeyError(name)
        return key

    @property
    def active(self) -> str | None:
        """Name of the active item; None when none is."""
        return self._active() or None

    @active.setter
    def active(self, name: str | None) -> None:
        self._set_active(name or "")


class RootApi(GroupApi):
    """What the root has: files, undo, brackets, access."""

    __slots__ = ()

    if TYPE_CHECKING:
        def _start_reading(self) -> Any: ...
        def _start_writing(self, remote: bool) -> Any: ...
        def _start_transaction(self, text: str) -> Any: ...
        def _save(self, name: str) -> None: ...
        def _recall(self, name: str) -> None: ...
        def _preset(self, factory: bool) -> None: ...
        def _undo(self, steps: int) -> None: ...
        def _redo(self, steps: int) -> None: ...
        def _history(self) -> tuple[list[str], list[str]]: ...
        def _enable_history(self, on: bool) -> None: ...
        def _update_all(self) -> None: ...
        def _settings_folder(self) -> str: ...
        def _set_settings_folder(self, folder: str) -> None: ...
        def _control_mode(self) -> int: ...
        def _set_control_mode(self, mode: int) -> None: ...

    @contextlib.contextmanager
    def transaction(self, text: str) -> Iterator[None]:
        """Several writes as one step for undo, which `text` names; an exception that leaves it
        takes them back. Keeps out the writes of other threads, and ends in its own thread."""
        bracket = self._start_transaction(text)
        keep = False
        try:
            yield
            keep = True
        finally:
            bracket.end(self, keep)

    @contextlib.contextmanager
    def reading(self) -> Iterator[None]:
        """Reads values that belong together: no write comes between. Keep it short."""
        bracket = self._start_reading()
        try:
            yield
        finally:
            bracket.end(self)

    @contextlib.contextmanager
    def writing(self, *, remote: bool = False) -> Iterator[None]:
        """Writes on behalf of the local user or of remote control; results that are delivered
        inside are seen together."""
        bracket = self._start_writing(remote)
        try:
            yield
        finally:
            bracket.end(self)

    def save(self, name: str | os.PathLike[str]) -> None:
        """Writes the user's settings: CSV when the name ends in ".csv", XML otherwise."""
        self._save(_path(name))

    def recall(self, name: str | os.PathLike[str]) -> None:
        """Reads and checks a file, then applies it as one step for undo. Warns of what was left
        out."""
        self._recall(_path(name))

    def preset(self, *, factory: bool = False) -> None:
        """Sets the defaults of the user's settings, or of everything that is saved."""
        self._preset(factory)

    def undo(self, steps: int = 1) -> None:
        """Steps back, all of them or none; refused where there are fewer, and inside of a
        bracket."""
        self._undo(steps)

    def redo(self, steps: int = 1) -> None:
        """Steps forward."""
        self._redo(steps)

    @property
    def history(self) -> History:
        """The steps that can be undone and redone."""
        undo, redo = self._history()
        return History(tuple(undo), tuple(redo))

    @property
    def undo_text(self) -> str | None:
        """Names the step that undo takes back; None where there is none."""
        return next(iter(self.history.undo), None)

    @property
    def redo_text(self) -> str | None:
        """Names the step that redo does again; None where there is none."""
        return next(iter(self.history.redo), None)

    def enable_history(self, on: bool) -> None:
        """Switches the recording of steps; off forgets all of them."""
        self._enable_history(on)

    def update_all(self) -> None:
        """Computes every group that carries out measurements again."""
        self._update_all()

    @property
    def settings_folder(self) -> str:
        """Folder of the actions that save and recall."""
        return self._settings_folder()

    @settings_folder.setter
    def settings_folder(self, folder: str | os.PathLike[str]) -> None:
        self._set_settings_folder(_path(folder))

    @property
    def control_mode(self) -> ControlMode:
        """Who may write."""
        return ControlMode(self._control_mode())

    @control_mode.setter
    def control_mode(self, mode: ControlMode) -> None:
        self._set_control_mode(int(ControlMode(mode)))


def _path(name: str | os.PathLike[str]) -> str:
    path = name if isinstance(name, str) else name.__fspath__()
    if "\0" in path:
        raise ValueError("a name of a file holds no zero character")
    return path
