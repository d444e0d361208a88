# SPDX-License-Identifier: MIT
"""Writes the files of the bundle as C++: bytes as they are, and compressed for who accepts that.

embed.py OUTPUT FILE...
"""

import gzip
import hashlib
import sys
from pathlib import Path

TYPES = {".html": "text/html; charset=utf-8", ".js": "text/javascript; charset=utf-8",
         ".css": "text/css; charset=utf-8", ".svg": "image/svg+xml",
         ".txt": "text/plain; charset=utf-8"}

HEAD = """// Made by service/panel/embed.py: do not edit.
#include "PanelFiles.h"

namespace
{
"""


def array(name: str, data: bytes) -> str:
    lines = (",".join(map(str, data[i:i + 32])) for i in range(0, len(data), 32))
    return f"constexpr unsigned char {name}[] = {{\n" + ",\n".join(lines) + "};\n"


def main() -> None:
    output, *names = sys.argv[1:]
    arrays, rows = [], []
    for number, path in enumerate(map(Path, names)):
        plain = path.read_bytes()
        target = "/" if path.name == "index.html" else "/" + path.name
        tag = hashlib.sha256(plain).hexdigest()[:32]
        arrays.append(array(f"kPlain{number}", plain))
        arrays.append(array(f"kZipped{number}", gzip.compress(plain, 9, mtime=0)))
        rows.append(f'    {{"{target}", "{path.name}", "{TYPES[path.suffix]}", "{tag}", '
                    f"kPlain{number}, kZipped{number}}},\n")
    Path(output).write_text(
        HEAD + "".join(arrays) + "constexpr t_PanelFile kFiles[] = {\n" + "".join(rows)
        + "};\n} // namespace\n\n"
        "std::span<const t_PanelFile> NPanel::Bundle()\n{\n    return kFiles;\n}\n",
        encoding="ascii")


if __name__ == "__main__":
    main()
