#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Fails when a class of src/ overrides a hook of its group instead of stating a row of its table.

Hooks are the virtual functions of CDbPropertyGroup, all but its table. The row "Hooks that stay" of
docs/decisions.md names those that are overridden all the same; one that nobody overrides any more
has to leave the row.
"""

import argparse
import re
import sys
from pathlib import Path

GROUP = "database/CommonDatabase/Nodes/DbPropertyGroup.h"
DECISIONS = "docs/decisions.md"
TABLE = "Rules"

CLASS = re.compile(r"\b(?:class|struct) (\w+)[^;{]*\{")
# A type in front of the name: neither a call nor a definition outside of its class.
DECLARATION = r"(?<!\breturn)(?<!\belse)(?<=[\w>&*])\s+[&*]?({hooks})\s*\("


def without_comments(text: str) -> str:
    """Comments become blanks, so that lines keep their numbers."""
    return re.sub(r"//[^\n]*|/\*.*?\*/", lambda found: re.sub(r"[^\n]", " ", found[0]), text,
                  flags=re.DOTALL)


def hooks_of(header: str) -> set[str]:
    return set(re.findall(r"\bvirtual\b[^;(~]*?(\w+)\(", without_comments(header))) - {TABLE}


def allowed_by(decisions: str) -> set[str]:
    row = re.search(r"^\*\*Hooks that stay\*\*.*?(?=\n\n|\Z)", decisions, re.DOTALL | re.MULTILINE)
    return set(re.findall(r"`(\w+::\w+)`", row[0])) if row else set()


def overriders(path: Path, hooks: set[str]) -> list[tuple[int, str]]:
    """Line and "class::hook" of each declaration."""
    text = without_comments(path.read_text(encoding="utf-8"))
    classes = [(found.start(), found[1]) for found in CLASS.finditer(text)]
    found = []
    for match in re.finditer(DECLARATION.format(hooks="|".join(sorted(hooks))), text):
        own = [name for start, name in classes if start < match.start()]
        line = text.count("\n", 0, match.start(1)) + 1
        found.append((line, f"{own[-1] if own else '?'}::{match[1]}"))
    return found


def check(root: Path) -> list[str]:
    hooks = hooks_of((root / GROUP).read_text(encoding="utf-8"))
    allowed = allowed_by((root / DECISIONS).read_text(encoding="utf-8"))
    stale = set(allowed)
    found = []
    for path in sorted((root / "src").rglob("*")):
        for line, hook in overriders(path, hooks) if path.suffix in (".h", ".cpp") else []:
            stale.discard(hook)
            if hook not in allowed:
                found.append(f"{path.relative_to(root)}:{line}: {hook} is a hook: state a row in "
                             f"{TABLE}(), or name it in {DECISIONS}")
    return found + [f"{DECISIONS}: nobody overrides {hook}" for hook in sorted(stale)]


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--root", type=Path, default=Path(__file__).resolve().parent.parent)
    found = check(parser.parse_args().root)
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
