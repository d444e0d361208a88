# SPDX-License-Identifier: MIT
"""What was observed of couplings, from the pages that scripts/couplings.sh writes."""

import re
from dataclasses import dataclass
from pathlib import Path

_CELL = re.compile(r"(?<!\\)\|")
_ITEM = re.compile(r"\[[^\]]*\]")


@dataclass(frozen=True)
class Coupling:
    """A setting that moves another, by the paths of the items that were observed."""

    source: str
    target: str
    what: str
    """Value, minimum, maximum …, as the pages say it."""
    effect: str
    condition: str
    """What had to be written before; empty where nothing had."""


def any_item(path: str) -> str:
    """The path without the keys of its items: the same for all items of a container."""
    return _ITEM.sub("[]", path)


def _cells(line: str) -> list[str]:
    cells = [cell.strip() for cell in _CELL.split(line.strip())[1:-1]]
    return [re.sub(r"\\(.)", r"\1", cell).replace("`", "") for cell in cells]


def read_page(text: str) -> list[Coupling]:
    """Of a page, what its settings move; the other way round stands on the pages of the others."""
    found: list[Coupling] = []
    source, reading = "", False
    for line in text.splitlines():
        if line.startswith("## "):
            reading = line.startswith("## What the settings")
        if not reading or not line.startswith("| ") or line.startswith(("| Setting ", "| ---")):
            continue
        cells = _cells(line)
        source = cells[0] or source
        found.append(Coupling(source, cells[1], cells[2], cells[4], cells[5]))
    return found


def read_couplings(folder: Path) -> list[Coupling]:
    """Of all pages in a folder, each pair of paths once: items of a container do the same."""
    known: dict[tuple[str, str], Coupling] = {}
    for page in sorted(folder.glob("*.md")):
        for coupling in read_page(page.read_text(encoding="utf-8")):
            known.setdefault((any_item(coupling.source), any_item(coupling.target)), coupling)
    return list(known.values())
