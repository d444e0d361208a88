#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Fails when a Markdown document links to a file that is not there: check-links.py PATH ...

A PATH is a document or a folder of documents; addresses on the web are not looked up.
"""

import re
import sys
from pathlib import Path

LINK = re.compile(r"\]\(([^)#\s]+)(?:#[^)\s]*)?\)")
CODE = re.compile(r"^```.*?^```", re.MULTILINE | re.DOTALL)


def documents(path: Path) -> list[Path]:
    return sorted(path.rglob("*.md")) if path.is_dir() else [path]


def broken_links(document: Path) -> list[str]:
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
