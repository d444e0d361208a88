#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Fails when a document links to a file that is not there: check-links.py PATH ...

A PATH is a document in Markdown, a page in HTML, or a folder of them. Of pages, places in other
pages must be there, too, and nothing may come from elsewhere. Addresses on the web are not looked
up.
"""

import re
import sys
from functools import cache
from html.parser import HTMLParser
from pathlib import Path

LINK = re.compile(r"\]\(([^)#\s]+)(?:#[^)\s]*)?\)")
CODE = re.compile(r"^```.*?^```", re.MULTILINE | re.DOTALL)


class Page(HTMLParser):
    """What a page links to, what it needs, and the places in it."""

    def __init__(self, path: Path) -> None:
        super().__init__()
        self.links: list[str] = []
        self.needs: list[str] = []
        self.places: set[str] = {""}
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag: str, attrs: list[tuple[str, str | None]]) -> None:
        for name, value in attrs:
            if name == "id":
                self.places.add(value or "")
            elif name == "src" or (name == "href" and tag == "link"):
                self.needs.append(value or "")
            elif name in ("href", "action"):
                self.links.append(value or "")


@cache
def page(path: Path) -> Page:
    return Page(path)


def broken_places(document: Path) -> list[str]:
    """Of a page in HTML."""
    found = [need for need in page(document).needs
             if "//" in need or not (document.parent / need).is_file()]
    for link in dict.fromkeys(page(document).links):
        if "://" in link:
            continue
        file, _, place = link.partition("#")
        target = (document.parent / file).resolve() if file else document
        is_there = target.is_file() and (target.suffix != ".html" or place in page(target).places)
        if not is_there:
            found.append(link)
    return found


def documents(path: Path) -> list[Path]:
    if not path.is_dir():
        return [path]
    return sorted(p for p in path.rglob("*") if p.suffix in (".md", ".html"))


def broken_links(document: Path) -> list[str]:
    if document.suffix == ".html":
        return broken_places(document.resolve())
    text = CODE.sub("", document.read_text(encoding="utf-8"))
    targets = dict.fromkeys(LINK.findall(text))
    return [target for target in targets
            if "://" not in target and not (document.parent / target).exists()]


def main(arguments: list[str]) -> int:
    found = [f"{document}: {target}" for argument in arguments
             for document in documents(Path(argument)) for target in broken_links(document)]
    print("\n".join(found), end="\n" if found else "")
    return 1 if found or not arguments else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
