# SPDX-License-Identifier: MIT
"""What clients were built with: lists beside the model that are only ever appended to."""

import re
import textwrap
from dataclasses import dataclass, field
from pathlib import Path

from . import naming
from .cpptext import WIDTH
from .diagnostics import Diagnostics, Location
from .model import Model

ACCESSORS = "accessors.txt"
"""Beside the groups: "Group/Member kind type", in the order of the virtual tables."""
VALUES = "values.txt"
"""Beside the enumerations: "KW_TYPE VALUE VALUE …", in the order of their numbers; a type may have
several lines."""

_HEADS = {
    ACCESSORS: "# Accessors of released client interfaces, in the order in which they came into "
               "being: programs that\n# were built find them by their place.\n",
    VALUES: "# Released values of the enumerations, in the order of their numbers, by which files "
            "and programs\n# know them.\n",
}
_FOOT = "# scripts/check-abi.sh --keep appends what is new in a release; nothing else changes a line.\n"
_ACCESSOR_LINE = re.compile(r"(\w+)/(\w+) (\w+ \w+)", re.ASCII)
_VALUES_LINE = re.compile(r"(KW_\w+)((?: \w+)+)", re.ASCII)


@dataclass(frozen=True)
class Entry:
    """One accessor, with what it answers; or one value of an enumeration, where `form` is empty."""

    name: str
    form: str
    location: Location


@dataclass
class Released:
    """By group and by enumeration, in the order of the lists."""

    accessors: dict[str, list[Entry]] = field(default_factory=dict)
    values: dict[str, list[Entry]] = field(default_factory=dict)


def _lines(path: Path, diagnostics: Diagnostics) -> list[tuple[Location, str]]:
    if not path.is_file():
        return []
    try:
        lines = path.read_bytes().decode("utf-8").split("\n")
    except UnicodeDecodeError:
        diagnostics.report(Location(str(path), 1), "the file is not UTF-8")
        return []
    numbered = [(Location(str(path), i + 1), line.rstrip()) for i, line in enumerate(lines)]
    return [(where, line) for where, line in numbered if line and not line.startswith("#")]


def _add(
    lists: dict[str, list[Entry]], owner: str, entry: Entry, diagnostics: Diagnostics
) -> None:
    first = next((e for e in lists.get(owner, []) if e.name == entry.name), None)
    if first:
        text = f"'{owner}/{entry.name}' stands here a second time, first at {first.location}"
        diagnostics.report(entry.location, text)
    else:
        lists.setdefault(owner, []).append(entry)


def read_released(enumerations: Path, groups: Path, diagnostics: Diagnostics) -> Released:
    """Reads both lists; one that does not exist reads as empty."""
    released = Released()
    for where, line in _lines(groups / ACCESSORS, diagnostics):
        found = _ACCESSOR_LINE.fullmatch(line)
        if not found:
            diagnostics.report(where, "not of the form 'Group/Member kind type'")
            continue
        _add(released.accessors, found[1], Entry(found[2], found[3], where), diagnostics)
    for where, line in _lines(enumerations / VALUES, diagnostics):
        found = _VALUES_LINE.fullmatch(line)
        if not found:
            diagnostics.report(where, "not of the form 'KW_TYPE VALUE …'")
            continue
        for name in found[2].split():
            _add(released.values, found[1], Entry(name, "", where), diagnostics)
    return released


def _new_accessors(model: Model, released: Released) -> list[str]:
    lines = []
    for group in model.groups.values():
        known = {entry.name for entry in released.accessors.get(group.name, [])}
        forms = naming.forms(group)
        lines += [f"{group.name}/{name} {forms[name]}" for name in group.accessors
                  if name not in known]
    return lines


def _new_values(model: Model, released: Released) -> list[str]:
    lines = []
    for enum in model.enums.values():
        known = len(released.values.get(enum.name, []))
        names = [naming.value_name(enum, value) for value in enum.values[known:]]
        lines += [f"{enum.name} {line}" for line in textwrap.wrap(
            " ".join(names), max(1, WIDTH - len(enum.name) - 1), break_long_words=False)]
    return lines


def _append(path: Path, version: str, lines: list[str], anew: bool) -> None:
    old = "" if anew or not path.is_file() else path.read_text(encoding="utf-8")
    if lines:
        head = old or f"# SPDX-License-Identifier: MIT\n{_HEADS[path.name]}{_FOOT}"
        path.write_text("\n".join([f"{head}\n# {version}", *lines, ""]), encoding="utf-8")


def release(
    enumerations: Path, groups: Path, version: str, model: Model, released: Released
) -> None:
    """Appends what is not yet in the lists; a new major version begins them anew."""
    anew = begins_anew(version)
    _append(groups / ACCESSORS, version, _new_accessors(model, released), anew)
    _append(enumerations / VALUES, version, _new_values(model, released), anew)


def begins_anew(version: str) -> bool:
    """Whether the version need not care for clients of older ones."""
    return version.endswith(".0.0")
