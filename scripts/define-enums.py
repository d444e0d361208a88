#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Makes an enumeration that some source only declares ("enum KW_UNIT : INT32;") the defined one of
that name, in a binary interface that abidw has written: define-enums.py FILE. Which sources are
compiled as one decides who sees the definition; else any new source could look like a break."""

import re
import sys
from pathlib import Path

ENUM = re.compile(
    r"^ *<enum-decl name='(?P<name>[^']+)' [^>]*?id='(?P<id>[^']+)'[^>]*>\n(?P<body>.*?)"
    r"^ *</enum-decl>\n", re.MULTILINE | re.DOTALL)


def main(file: Path) -> None:
    text = file.read_text(encoding="utf-8")
    enums = list(ENUM.finditer(text))
    defined = {e["name"]: e["id"] for e in enums if "<enumerator" in e["body"]}
    opaque = {e["id"]: defined[e["name"]] for e in enums
              if "<enumerator" not in e["body"] and e["name"] in defined}
    text = ENUM.sub(lambda e: "" if e["id"] in opaque else e[0], text)
    text = re.sub(r"(?<=')type-id-\d+(?=')", lambda i: opaque.get(i[0], i[0]), text)
    file.write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main(Path(sys.argv[1]))
