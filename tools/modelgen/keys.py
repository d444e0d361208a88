# SPDX-License-Identifier: MIT
"""Checked access to the keys of one table or entry."""

import re
from typing import Any

from .diagnostics import Diagnostics, Location
from .reader import ModelFile

IDENTIFIER = re.compile(r"[A-Za-z_][A-Za-z0-9_]*")
_CONTROL = re.compile(r"[\x00-\x1f\x7f]")


def check_stem(
    file: ModelFile, diagnostics: Diagnostics, reserved: tuple[str, ...] = ()
) -> None:
    """A model file's name becomes part of file names that the build lists."""
    if not IDENTIFIER.fullmatch(file.stem) or file.stem in reserved:
        diagnostics.report(Location(file.path, 1), f"'{file.stem}' can not name a model file")


class CKeys:
    """Takes keys one by one; every access names the type it wants and reports another one."""

    def __init__(
        self, data: dict[str, Any], location: Location, diagnostics: Diagnostics, what: str
    ) -> None:
        self._data = data
        self.location = location
        self._diagnostics = diagnostics
        self._what = what

    def fail(self, text: str) -> None:
        """Reports a mistake at this place."""
        self._diagnostics.report(self.location, text)

    def names(self) -> list[str]:
        return list(self._data)

    def has(self, key: str) -> bool:
        return key in self._data

    def raw(self, key: str) -> Any:
        return self._data.get(key)

    def allow(self, *known: str) -> None:
        """Reports every key that is not known."""
        for key in self._data:
            if key not in known:
                self.fail(f"unknown key '{key}' of {self._what}")

    def require(self, *needed: str) -> bool:
        """Reports every missing key; true when all are there."""
        missing = [key for key in needed if key not in self._data]
        for key in missing:
            self.fail(f"{self._what} needs the key '{key}'")
        return not missing

    def text(self, key: str) -> str | None:
        """A text without control characters; None when the key is not there."""
        value = self._data.get(key)
        if value is None:
            return None
        if not isinstance(value, str):
            self.fail(f"'{key}' must be a text")
            return None
        if _CONTROL.search(value):
            self.fail(f"'{key}' must not hold control characters")
            return None
        return value

    def brief(self) -> str:
        """The one-line description, which must not be blank where it is given."""
        value = self.text("brief")
        if value is not None and not value.strip():
            self.fail("'brief' must not be blank")
        return value or ""

    def flag(self, key: str, default: bool = False) -> bool:
        value = self._data.get(key, default)
        if not isinstance(value, bool):
            self.fail(f"'{key}' must be true or false")
            return default
        return value

    def whole(self, key: str, low: int, high: int, default: int | None = None) -> int | None:
        """A whole number of low … high."""
        value = self._data.get(key)
        if value is None:
            return default
        if isinstance(value, bool) or not isinstance(value, int) or not low <= value <= high:
            self.fail(f"'{key}' must be a whole number of {low} to {high}")
            return default
        return value

    def choice(self, key: str, choices: tuple[str, ...], default: str | None = None) -> str | None:
        """One of several words."""
        value = self.text(key)
        if value is None:
            return default
        if value not in choices:
            self.fail(f"unknown {key} '{value}', must be one of {', '.join(choices)}")
            return default
        return value

    def text_list(self, key: str, blank: bool = False) -> tuple[str, ...]:
        """A list of texts; one of them may be blank only with `blank`."""
        value = self._data.get(key)
        if value is None:
            return ()
        if not isinstance(value, list) or not value or not all(
            isinstance(v, str) and (blank or v.strip()) and not _CONTROL.search(v) for v in value
        ):
            self.fail(f"'{key}' must be a list of texts")
            return ()
        return tuple(value)
