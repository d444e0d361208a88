# SPDX-License-Identifier: MIT
"""The room check must find what it is there for: each row puts one file into an empty tree."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SCRIPT = Path(__file__).resolve().parents[3] / "scripts" / "check-rooms.py"

# The files that the rows include.
TREE = (
    "ifc/KWTypes.h", "ifc/IDbObject.h", "ifc/LabelList/LabelListSignal.h",
    "support/LockManager.h", "database/CommonDatabase/Nodes/DbObject.h",
    "database/CommonDatabase/Files/DbSettings.h",
    "src/Channels/PgScale.h",
    "tools/shared/PropertyMarks.h", "tools/zelctl/Session.h", "service/JsonHub.h",
    "generated/ifc/KWEnumerations.h", "generated/ifc/KWEnumerationsUnits.h",
    "generated/ifc/KWEnumerationsScale.h",
    "generated/ifc/IKWFunctionScale.h", "generated/src/Channels/PgScaleBase.h",
)

# Folder, source line, what is expected: nothing, or a part of the complaint.
ROWS = (
    ("support", '#include "KWTypes.h"', None),
    ("support", '#include "IDbObject.h"', "support may not include ifc of the frame"),
    ("support", '#include "CommonDatabase/Nodes/DbObject.h"', "support may not include frame"),
    ("database/CommonDatabase", '#include "LockManager.h"', None),
    ("database/CommonDatabase/Nodes", '#include "DbObject.h"', None),
    ("database/CommonDatabase/Files", '#include "CommonDatabase/Nodes/DbObject.h"', None),
    ("database/CommonDatabase/Nodes", '#include "CommonDatabase/Files/DbSettings.h"',
     "Nodes may not include Files"),
    ("database/CommonDatabase/Cellar", '#include "CommonDatabase/Nodes/DbObject.h"',
     "database/CommonDatabase/Cellar is no folder"),
    ("database/CommonDatabase", '#include "Channels/PgScale.h"', "frame may not include rules"),
    ("database/CommonDatabase", '#include <Channels/PgScale.h>', "frame may not include rules"),
    ("database/CommonDatabase", '#include "Channels/PgScaleBase.h"', "frame may not include rules"),
    ("database/CommonDatabase", '#include "IKWFunctionScale.h"', "frame may not include ifc"),
    ("database/CommonDatabase", '  #  include "LabelList/LabelListSignal.h"', "frame may not"),
    ("database/CommonDatabase", '#include "KWEnumerationsUnits.h"', None),
    ("database/CommonDatabase", '#include "KWEnumerationsScale.h"', "frame may not include ifc"),
    ("generated/database", '#include "KWEnumerationsScale.h"', None),
    ("src/Trigger", '#include "KWEnumerationsScale.h"', None),
    ("src/Trigger", '#include "KWEnumerations.h"', "rules may not include all enumerations"),
    ("tools/zelctl", '#include "KWEnumerations.h"', "tools may not include all enumerations"),
    ("generated/ifc", '#include <KWEnumerations.h>', "ifc may not include all enumerations"),
    ("examples/client", '#include "KWEnumerations.h"', None),
    ("src/Root", '#include "Channels/PgScaleBase.h"', None),
    ("src/Analysis", '#include "Channels/PgScale.h"', None),
    ("src/Trigger", '#include "Channels/PgScaleBase.h"', "Trigger may not include Channels"),
    ("generated/src/Trigger", '#include "Channels/PgScale.h"', "Trigger may not include Channels"),
    ("src/Cellar", '#include "Channels/PgScale.h"', "src/Cellar is no folder"),
    ("src", '#include <boost/math/special_functions/round.hpp>', None),
    ("src", '#include <gtest/gtest.h>', "rules may not use <gtest/gtest.h>"),
    ("src", '#include "../tests/Fixture.h"', "no file is named"),
    ("ifc", '#include <boost/format.hpp>', "ifc may not use <boost/format.hpp>"),
    ("ifc", '#include "LockManager.h"', "ifc may not include support"),
    ("ifc/LabelList", '#include "IKWFunctionScale.h"', None),
    ("tools/zelctl", '#include <CLI/CLI.hpp>', None),
    ("tools/zelctl", '#include "PropertyMarks.h"', None),
    ("tools/zelctl", '#include "JsonHub.h"', "tools may not include service"),
    ("service", '#include "PropertyMarks.h"', None),
    ("service", '#include "Session.h"', "service may not include tools"),
    ("tools/shared", '#include "IDbObject.h"', None),
    ("tools/shared", '#include "Session.h"', "shared may not include tools"),
    ("tools/shared", '#include "JsonHub.h"', "shared may not include service"),
    ("tools/zelctl", '#include "CommonDatabase/Nodes/DbObject.h"', "tools may not include frame"),
    ("examples/client", '#include "LockManager.h"', "client may not include support"),
    ("tests/client", '#include "LockManager.h"', "client tests may not include support"),
    ("tests/database", '#include "Channels/PgScaleBase.h"', None),
    ("generated/ifc", '#include "CommonDatabase/Nodes/DbObject.h"', "ifc may not include frame"),
    ("database/Enumerations", "int x;", "the model is data, not code"),
)


def run(folder: str, line: str, further: dict[str, str] | None = None) -> tuple[int, str]:
    with tempfile.TemporaryDirectory() as name:
        root = Path(name)
        for path in (*TREE, f"{folder}/Row.cpp"):
            (root / path).parent.mkdir(parents=True, exist_ok=True)
            (root / path).write_text("#pragma once\n", encoding="utf-8")
        for path, text in {f"{folder}/Row.cpp": line, **(further or {})}.items():
            (root / path).write_text(f"{text}\n", encoding="utf-8")
        result = subprocess.run(
            [sys.executable, SCRIPT, "--root", root, "--generated", root / "generated"],
            capture_output=True, text=True, check=False)
    return result.returncode, result.stdout


class CRoomsTest(unittest.TestCase):
    def test_breach_is_found_and_named_and_nothing_else_is(self) -> None:
        for folder, line, expected in ROWS:
            with self.subTest(folder=folder, line=line):
                status, output = run(folder, line)
                self.assertEqual((status, output == ""), (int(expected is not None),
                                                          expected is None), output)
                self.assertIn(f"{folder}/Row.cpp:" if expected else "", output)
                self.assertIn(expected or "", output)

    def test_circle_of_modules_is_found_and_a_chain_is_none(self) -> None:
        for folder, name in (("src/Channels", "PgScale"), ("support", "LockManager"),
                             ("database/CommonDatabase/Nodes", "DbObject")):
            further = {f"{folder}/Row.h": "#pragma once",
                       f"{folder}/{name}.h": '#include "Row.h"'}
            with self.subTest(folder=folder):
                status, output = run(folder, f'#include "{name}.h"', further)
                self.assertEqual(status, 1)
                way = " -> ".join(f"{folder}/{n}" for n in sorted([name, "Row"]))
                self.assertEqual(output, f"files go round in a circle: {way} -> "
                                         f"{folder}/{min(name, 'Row')}\n")
                self.assertEqual(run(folder, '#include "Row.h"', further), (0, ""))


if __name__ == "__main__":
    unittest.main()
