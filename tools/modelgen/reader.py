# SPDX-License-Identifier: MIT
"""First stage: model files to raw tables that know their lines. Knows TOML, not what keys mean."""

import re
import tomllib
from dataclasses import dataclass, field
from pathlib import Path
from typing import Any

from .diagnostics import Diagnostics, Location

_TOKEN = re.compile(
    r'(?P<text>"""(?:\\.|[^\\])*?"""|\'\'\'.*?\'\'\''
    r'|"(?:\\.|[^"\\\n])*"|\'[^\'\n]*\')'
    r"|(?P<comment>#[^\n]*)"
    r"|(?P<newline>\n)"
    r"|(?P<open>[\[{])"
    r"|(?P<close>[\]}])"
    r"|(?P<key>[A-Za-z0-9_-]+(?=[ \t]*=))",
    re.DOTALL,
)
_HEADER = re.compile(r"[ \t]*\[+[ \t\"']*([^\]\n]*?)[ \t\"']*\]+")
_SYNTAX_LINE = re.compile(r" \(at line (\d+), column \d+\)$")


@dataclass
class Entry:
    """One `{ … }` of a list."""

    location: Location
    data: dict[str, Any]


@dataclass
class Table:
    """One `[Name]` with its keys; lists of inline tables stand in `lists`, the rest in `data`."""

    name: str
    location: Location
    data: dict[str, Any] = field(default_factory=dict)
    lists: dict[str, list[Entry]] = field(default_factory=dict)
    key_lines: dict[str, int] = field(default_factory=dict)

    def where(self, key: str) -> Location:
        """The line of a key, or of the table's header when the key is not there."""
        return Location(self.location.file, self.key_lines.get(key, self.location.line))


@dataclass
class ModelFile:
    """One model file. `stem` names what is made from it, in the room of its folder."""

    path: str
    room: str
    """Its folder below the one that was read; empty for a file in that itself."""
    stem: str
    tables: list[Table]


@dataclass
class _TableLines:
    """Where the parts of a table stand. tomllib gives values only, so the lines are found apart."""

    name: str
    line: int
    keys: dict[str, int] = field(default_factory=dict)
    entries: dict[str, list[int]] = field(default_factory=dict)


class _Scanner:
    """Finds headers, keys and list entries by their brackets; everything else is tomllib's."""

    def __init__(self, text: str) -> None:
        self._text = text
        self._line = 1
        self._depth = 0
        self._key = ""
        self.top = _TableLines("", 1)
        """Keys before the first header."""
        self.tables: list[_TableLines] = []

    def run(self) -> "_Scanner":
        position = 0
        at_line_start = True
        while position < len(self._text):
            if at_line_start and self._depth == 0:
                header = _HEADER.match(self._text, position)
                if header:
                    self.tables.append(_TableLines(header.group(1), self._line))
                    position = header.end()
            token = _TOKEN.search(self._text, position)
            if not token:
                break
            self._take(token)
            at_line_start = token.lastgroup == "newline"
            position = token.end()
        return self

    def _take(self, token: re.Match[str]) -> None:
        kind = token.lastgroup
        table = self.tables[-1] if self.tables else self.top
        self._line += token.group().count("\n")
        if kind == "open":
            if token.group() == "{" and self._depth == 1:
                table.entries.setdefault(self._key, []).append(self._line)
            self._depth += 1
        elif kind == "close":
            self._depth -= 1
        elif kind == "key" and self._depth == 0:
            self._key = token.group()
            table.keys[self._key] = self._line


def _parse(file: str, raw: bytes, diagnostics: Diagnostics) -> tuple[str, dict[str, Any]] | None:
    """Text and values of a file, or None after a report."""
    try:
        # Only the two line ends that the file format knows: others stand inside texts.
        text = raw.decode("utf-8").replace("\r\n", "\n")
        return text, tomllib.loads(text)
    except UnicodeDecodeError as error:
        line = raw.count(b"\n", 0, error.start) + 1
        diagnostics.report(Location(file, line), "the file is not UTF-8")
    except tomllib.TOMLDecodeError as error:
        found = _SYNTAX_LINE.search(str(error))
        line = int(found.group(1)) if found else max(1, len(raw.splitlines()))
        diagnostics.report(Location(file, line), _SYNTAX_LINE.sub("", str(error)))
    return None


def _repeated_headers(file: str, raw: bytes, diagnostics: Diagnostics) -> bool:
    """Reports tables that stand twice in a file; tomllib's own text for it names no other line."""
    seen: dict[str, int] = {}
    before = len(diagnostics.found)
    text = raw.decode("utf-8", "replace").replace("\r\n", "\n")
    for table in _Scanner(text).run().tables:
        if table.name in seen:
            first = Location(file, seen[table.name])
            diagnostics.report(
                Location(file, table.line), f"duplicate [{table.name}], first at {first}"
            )
        seen.setdefault(table.name, table.line)
    return len(diagnostics.found) > before


def _is_entry_list(value: Any) -> bool:
    return isinstance(value, list) and bool(value) and all(isinstance(v, dict) for v in value)


def _make_table(file: str, lines: _TableLines, values: dict[str, Any]) -> Table:
    table = Table(lines.name, Location(file, lines.line), key_lines=lines.keys)
    for key, value in values.items():
        if not _is_entry_list(value):
            table.data[key] = value
            continue
        places = lines.entries.get(key, [])
        table.lists[key] = [
            Entry(Location(file, places[i] if i < len(places) else lines.line), data)
            for i, data in enumerate(value)
        ]
    return table


def _line_of_stray(scan: _Scanner, name: str) -> int:
    """Where a top-level key, a list of tables or a table inside a table stands."""
    for table in scan.tables:
        if table.name.split(".")[0].strip(" \t\"'") == name:
            return table.line
    return scan.top.keys.get(name, 1)


def read_file(path: Path, room: str, diagnostics: Diagnostics) -> ModelFile:
    """Reads one file. Syntax errors are reported and leave the file without tables."""
    file = str(path)
    result = ModelFile(file, room, path.stem, [])
    raw = path.read_bytes()
    if _repeated_headers(file, raw, diagnostics):
        return result
    parsed = _parse(file, raw, diagnostics)
    if not parsed:
        return result
    text, values = parsed
    scan = _Scanner(text).run()
    lines = {table.name: table for table in scan.tables}
    for name, value in values.items():
        if name in lines and isinstance(value, dict):
            result.tables.append(_make_table(file, lines[name], value))
        else:
            place = _line_of_stray(scan, name)
            diagnostics.report(Location(file, place), f"'{name}' is no table of the form [Name]")
    return result


def read_folder(folder: Path, diagnostics: Diagnostics) -> list[ModelFile]:
    """Reads all model files at and below a folder in the order of their names. No folder reads as
    empty."""
    files = [(path, path.parent.relative_to(folder).as_posix())
             for path in sorted(folder.rglob("*.toml"))]
    return [read_file(path, "" if room == "." else room, diagnostics) for path, room in files]
