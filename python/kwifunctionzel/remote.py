# SPDX-License-Identifier: MIT
"""A living tree of another process, by the service's JSON over HTTP: the same nodes as those of this
process. Every read asks the service, so it costs some hundred microseconds; what a group consists of
is asked once."""

from __future__ import annotations

import base64
import hashlib
import math
import operator
from typing import TYPE_CHECKING, Any
from urllib.parse import quote

from . import api, enumerations, enums, errors
from .errors import Code
from .link import Link, check, code_of, details_of

if TYPE_CHECKING:
    from collections.abc import Callable

_AVAILABILITY = {"available": 0, "read only": 1, "not available": 2}
_WHOLE = {"int16": (-2**15, 2**15 - 1), "uint16": (0, 2**16 - 1),
          "int32": (-2**31, 2**31 - 1), "uint32": (0, 2**32 - 1),
          "int64": (-2**63, 2**63 - 1), "uint64": (0, 2**64 - 1)}
"""Limits of types, which the service leaves out."""
_EXACT = 2**53 - 1
"""Greatest whole number that JSON's readers keep; others travel as texts."""


def _unavailable(what: str, node: Any) -> errors.Refused:
    return errors.refusal(Code.NOT_AVAILABLE, None, None, [f"{what} is for the tree of this process"])


class _Node:
    """What all nodes have: where they are."""

    _link: Link
    _path: str

    def __init__(self, link: Link, path: str) -> None:
        object.__setattr__(self, "_link", link)
        object.__setattr__(self, "_path", path)

    def _state(self, **parameters: object) -> Any:
        return self._link.get("/tree", path=self._path, **parameters)

    def _full(self) -> Any:
        return self._state(detail="full", depth=0)

    @property
    def path(self) -> str:
        return self._path

    @property
    def name(self) -> str:
        name: str = self._full()["name"]
        return name

    @property
    def meaning(self) -> str:
        meaning: str = self._full()["meaning"]
        return meaning

    @property
    def remote_name(self) -> str:
        name: str = self._full()["remote"]
        return name

    @property
    def _availability(self) -> int:
        return _AVAILABILITY[self._state(depth=0)["availability"]]

    def __eq__(self, other: object) -> bool:
        return isinstance(other, _Node) and (self._link, self._path) == (other._link, other._path)

    def __hash__(self) -> int:
        return hash(self._path)


def _member(kind: str, text: object) -> Any:
    """The member of an enumeration that a text names."""
    made = getattr(enums, kind)
    number = int(str(text)) if str(text).isdecimal() else -1
    return made.__members__.get(enumerations.member_name(str(text), number), number)


def _is_number(kind: str) -> bool:
    return kind == "double" or kind in _WHOLE


class Property(_Node, api.PropertyApi):
    """A property of the living tree."""

    __doc__ = api.MeaningDoc(__doc__)  # type: ignore[assignment]

    def _from(self, value: Any, kind: str) -> Any:
        if kind == "double":
            return math.nan if value is None else float(value)
        if kind in _WHOLE:
            return int(value)
        if kind == "blob":
            return base64.b64decode(value)
        return _member(kind, value) if kind.startswith("KW_") else value or ""

    def _to(self, value: Any) -> Any:
        """As JSON has it."""
        if isinstance(value, enumerations.Enumeration):
            if type(value).__name__ != self.type_name:
                raise errors.refusal(Code.WRONG_KIND, self, value, [])
            return value.serial or str(int(value))
        if isinstance(value, (bytes, bytearray, memoryview)):
            return base64.b64encode(value).decode()
        if isinstance(value, Group):
            return value.path
        if value is None and self.type_name == "reference":
            return ""
        if isinstance(value, (bool, str)):
            return value
        if hasattr(value, "__index__"):  # numpy's numbers too
            whole = operator.index(value)
            kind = self.type_name
            if kind.startswith("KW_"):
                members = list(getattr(enums, kind))
                if not 0 <= whole < len(members):
                    raise errors.refusal(Code.UNKNOWN_VALUE, self, value, [])
                return members[whole].serial or str(whole)
            return whole if abs(whole) <= _EXACT else str(whole)
        if hasattr(value, "__float__"):
            number = float(value)
            return number if math.isfinite(number) else repr(number)
        raise TypeError(f"{self.path}: a {type(value).__name__} is no value of a setting")

    def _write(self, write: dict[str, Any], value: object) -> None:
        batch = getattr(self._link.batch, "writes", None)
        if batch is not None:
            batch.append({"path": self._path, **write})
            return
        _written(self._link, [{"path": self._path, **write}], "", {self._path: value})

    @property
    def value(self) -> Any:
        """What stands. Writing sets it."""
        state = self._state()
        return self._from(state["value"], state["type"])

    @value.setter
    def value(self, value: Any) -> None:
        self._write({"value": self._to(value)}, value)

    def set(self, value: Any) -> None:
        """As writing `value`."""
        self.value = value

    def reset(self) -> None:
        """Sets the default."""
        self._write({"default": True}, None)

    def step(self, steps: int = 1) -> None:
        """Steps up, or down with a negative count."""
        self._write({"steps": steps}, steps)

    def set_limited(self, value: float | str) -> None:
        """Not of a living tree."""
        raise _unavailable("set_limited", self)

    def set_user_value(self, value: float | str) -> None:
        """Not of a living tree."""
        raise _unavailable("set_user_value", self)

    def deliver(self, value: Any) -> None:
        """Not of a living tree: its own process delivers."""
        raise _unavailable("deliver", self)

    def _limit(self, name: str) -> Any:
        state = self._state()
        return None if state[name] is None else self._from(state[name], state["type"])

    @property
    def min(self) -> Any:
        limit = self._limit("minimum")
        return _WHOLE.get(self.type_name, (None, None))[0] if limit is None else limit

    @property
    def max(self) -> Any:
        limit = self._limit("maximum")
        if limit is None:
            limit = _WHOLE.get(self.type_name, (None, None))[1]
        return self._full().get("maximumLength") if limit is None else limit

    @property
    def step_size(self) -> Any:
        state = self._state()
        if state["step"] is None:  # of a number: it has none of its own
            return 1 if state["type"] in _WHOLE else 0.0 if state["type"] == "double" else None
        return self._from(state["step"], state["type"])

    @property
    def default(self) -> Any:
        state = self._full()
        return self._from(state["default"], state["type"])

    @property
    def user_value(self) -> Any:
        state = self._full()
        if not _is_number(state["type"]):
            return None
        wish = state.get("userValue")
        return self._from(state["value"] if wish is None else wish, state["type"])

    @property
    def values(self) -> list[Any]:
        state = self._state()
        return [self._from(value, state["type"]) for value in state["selectable"]]

    @property
    def unit_text(self) -> str:
        text: str = self._state()["unit"]
        return text

    @property
    def type_name(self) -> str:
        name: str = self._state()["type"]
        return name

    @property
    def text(self) -> str:
        text: str = self._state()["text"]
        return text

    @property
    def shown(self) -> str:
        text: str = self._state()["shown"]
        return text

    @property
    def form(self) -> str:
        form: str = self._full().get("form", "")
        return form

    @property
    def is_valid(self) -> bool:
        return bool(self._state()["valid"])

    @property
    def is_secret(self) -> bool:
        return bool(self._state()["secret"])

    @property
    def is_result(self) -> bool:
        return bool(self._state()["result"])

    @property
    def _saved_with(self) -> int:
        saved = self._full()["saved"]
        return ("settings" in saved) + 2 * ("system" in saved)


class _Then(Property):
    """A property as a report shows it, when it was refused."""

    def __init__(self, link: Link, report: dict[str, Any]) -> None:
        super().__init__(link, report["path"])
        object.__setattr__(self, "_report", report)

    def _state(self, **_: object) -> Any:
        return self._report["now"]  # type: ignore[attr-defined]

    def _full(self) -> Any:
        return {**self._state(), **{key: self._report[key]  # type: ignore[attr-defined]
                                    for key in ("form", "maximumLength")
                                    if key in self._report}}  # type: ignore[attr-defined]


def _written(link: Link, writes: list[dict[str, Any]], text: str, asked: dict[str, object]) -> None:
    """Sends writes, all or nothing, and answers for them."""
    body: dict[str, Any] = {"writes": writes}
    if text:
        body["text"] = text
    answer = link.post("/write", body)
    reports = answer.get("writes", [])
    for report in reports:
        value = asked.get(report["path"])
        node: Any = Property(link, report["path"])
        if report["code"] > Code.WARNING:
            node = _Then(link, report) if "now" in report else None
        check(report, node, value)
    if not answer.get("kept", False):
        raise errors.refusal(code_of(answer, 200), None, None, details_of(answer))


class Action(_Node, api.ActionApi):
    """An action of the living tree; calling it runs it."""

    __doc__ = api.MeaningDoc(__doc__)  # type: ignore[assignment]

    def __call__(self) -> None:
        self._link.ask("/run", {"path": self._path}, self)

    @property
    def is_operation(self) -> bool:
        return bool(self._state()["kind"] == "operation")


class Group(_Node, api.GroupApi):
    """A group of the living tree."""

    __doc__ = api.MeaningDoc(__doc__)  # type: ignore[assignment]

    _poll_seconds = 0.05

    def __getattr__(self, name: str) -> Any:
        member = self._member(name) if name[:1].isupper() else None
        if member is None:
            raise AttributeError(f"{self.path or 'the root'} has no {name!r}")
        return member.value if isinstance(member, Property) else member

    def __setattr__(self, name: str, value: Any) -> None:
        member = self._member(name) if name[:1].isupper() else None
        if member is None:
            if not hasattr(type(self), name):
                raise AttributeError(f"{self.path or 'the root'} has no {name!r}")
            object.__setattr__(self, name, value)
        elif isinstance(member, Property):
            member.value = value
        else:
            raise TypeError(f"{name} can not be set")

    def _members(self) -> dict[str, Any]:
        known: dict[str, Any] | None = self.__dict__.get("_known")
        if known is None:
            state = self._state(depth=1)
            known = {name: Property(self._link, one["path"])
                     for name, one in state["properties"].items()}
            known.update((name, _group(self._link, one)) for name, one in state["groups"].items())
            known.update((name, Action(self._link, one["path"]))
                         for name, one in state["actions"].items())
            object.__setattr__(self, "_known", known)
        return dict(known)

    def _member(self, name: str) -> Any:
        return self._members().get(name)

    def _has_changed(self, counter: int) -> tuple[bool, int]:
        """The tree's own counter does not travel: what stands is compared."""
        status, body = self._link.read(f"/tree?path={quote(self._path, safe='')}")
        digest = int.from_bytes(hashlib.sha1(body + bytes([status & 0xFF])).digest()[:8], "big")
        return digest != counter, digest

    def _couplings(self) -> list[tuple[str, int, str, list[str], str, list[str], str]]:
        rows = self._link.get("/couplings", path=self._path)["rows"]
        return [(row["group"], row["row"], row["word"], row["sources"], row["what"], row["steps"],
                 row["when"]) for row in rows if row["group"] == self._path]


class _Container(Group):
    def _count(self) -> int:
        return int(self._state(depth=0)["count"])

    def _max_count(self) -> int:
        return int(self._state(depth=0)["maximumCount"])

    def _is_dynamic(self) -> bool:
        return bool(self._state(depth=0)["dynamic"])

    def _active(self) -> str:
        active: str = self._state(depth=0)["active"]
        return active

    def _items(self) -> list[Any]:
        return [_group(self._link, one) for one in self._state(depth=1)["items"]]

    def _item_at(self, position: int) -> Any:
        return self._items()[position]

    def _all_items(self) -> list[Any]:
        return self._items()

    def _names(self) -> list[str]:
        return [item.path[len(self._path) + 1:-1] for item in self._items()]

    def _item_of(self, name: str) -> Any:
        return dict(zip(self._names(), self._items())).get(name)

    def _key_of_name(self, name: str) -> int | None:
        raise _unavailable("a numeric key", self)

    def _name_of_key(self, key: int) -> str | None:
        raise _unavailable("a numeric key", self)

    def _change(self, do: str, key: str, to: str | None = None) -> None:
        change = {"path": self._path, "do": do, **({"key": key} if key or do == "activate" else {}),
                  **({} if to is None else {"to": to})}
        self._link.ask("/items", change, self, key or None)

    def _insert(self, key: str) -> None:
        self._change("insert", key)

    def _remove(self, key: str) -> None:
        self._change("remove", key)

    def _rename(self, key: str, name: str) -> None:
        self._change("rename", key, name)

    def _copy(self, key: str, name: str) -> None:
        self._change("copy", key, name)

    def _set_active(self, key: str) -> None:
        self._change("activate", key)


class Array(_Container, api.ArrayApi[Any]):
    """An array of the living tree, as a list."""

    __doc__ = api.MeaningDoc(__doc__)  # type: ignore[assignment]


class Map(_Container, api.MapApi[Any]):
    """A map of the living tree, as a dict."""

    __doc__ = api.MeaningDoc(__doc__)  # type: ignore[assignment]

    def __contains__(self, name: object) -> bool:
        return name in self._names()


class _Batch:
    """The writes of a transaction, which go together when it ends."""

    def __init__(self, link: Link, text: str) -> None:
        self._link, self._text = link, text
        if getattr(link.batch, "writes", None) is not None:
            raise errors.refusal(Code.IN_TRANSACTION, None, None, [])
        link.batch.writes = []

    def end(self, node: Any, keep: bool = True) -> None:
        writes, self._link.batch.writes = self._link.batch.writes, None
        if keep and writes:
            _written(self._link, writes, self._text, {})


class Root(Group, api.RootApi):
    """The root of a living tree."""

    __doc__ = api.MeaningDoc(__doc__)  # type: ignore[assignment]

    def close(self) -> None:
        """Ends the connection; nodes are refused from then on."""
        self._link.close()

    @property
    def is_open(self) -> bool:
        """Whether it was not closed."""
        return self._link.is_open

    def __enter__(self) -> Root:
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def _start_transaction(self, text: str) -> _Batch:
        return _Batch(self._link, text)

    def _history(self) -> tuple[list[str], list[str]]:
        known = self._link.get("/history")
        return known["undoSteps"], known["redoSteps"]

    def _undo(self, steps: int) -> None:
        self._link.ask(f"/undo?steps={steps:d}", {}, None)

    def _redo(self, steps: int) -> None:
        self._link.ask(f"/redo?steps={steps:d}", {}, None)

    def _preset(self, factory: bool) -> None:
        self._link.ask("/preset", {"factory": factory}, None)

    def _save(self, name: str) -> None:
        self._link.ask("/save", {"file": name}, None, name)

    def _recall(self, name: str) -> None:
        self._link.ask("/recall", {"file": name}, None, name)


def _refuses(what: str) -> Callable[..., Any]:
    def refuse(self: Root, *_: object) -> Any:
        raise _unavailable(what, self)
    return refuse


for _name in ("_start_reading", "_start_writing", "_enable_history", "_update_all",
              "_settings_folder", "_set_settings_folder", "_control_mode", "_set_control_mode"):
    setattr(Root, _name, _refuses(_name.removeprefix("_")))

_KINDS: dict[str, type[Group]] = {"group": Group, "array": Array, "map": Map}


def _group(link: Link, state: Any) -> Group:
    return _KINDS[state["kind"]](link, state["path"])


def connect(host: str = "127.0.0.1", port: int = 5026, token: str | None = None,
            timeout: float = 30.0) -> Any:
    """The root of the tree that a service serves."""
    link = Link(host, port, token, timeout)
    root = Root(link, "")
    root.members()  # who is no service is told so at once
    return root
