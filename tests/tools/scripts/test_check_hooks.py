# SPDX-License-Identifier: MIT
"""The hook check must find what it is there for: each row is a class of a small tree."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[3]
STAYS = "**Hooks that stay**: `CPgSaved::OnFileFunction`,\nand no other.\n\n`CPgOther::UpdateGroup`\n"
SAVED = "class CPgSaved : public CPgSavedBase\n{\n    int OnFileFunction(int function) override;\n};\n"

# Name of a file, what it holds, what is expected: nothing, or a part of the complaint.
ROWS = (
    ("PgRow.h", "t_Couplings Rules() const override;", None),
    ("PgRow.h", "/** As void OnPropertySet(x) */ // void UpdateGroup();", None),
    ("PgRow.h", "void OnFunctionEnded(int x); void MyOnFunction();", None),
    ("PgRow.cpp", "void F() { group.UpdateGroup(); return UpdateGroup(); }", None),
    ("PgRow.h", "KW_ACCEPTANCE OnPropertySet(const CDbPropBase* written) override;",
     "PgRow.h:3: CPgRow::OnPropertySet is a hook"),
    ("PgRow.h", "KW_ACCEPTANCE\n    OnFunction(const CDbFunction* run);", "PgRow.h:4: CPgRow::OnFun"),
    ("PgRow.cpp", "void UpdateGroup() final {}", "PgRow.cpp:3: CPgRow::UpdateGroup is a hook"),
    ("PgRow.h", "std::optional<KW_ACCEPTANCE> OnFileFunction(const CDbFunction* f) override;",
     "CPgRow::OnFileFunction is a hook"),
    ("PgSaved.h", "int nothing;", "docs/decisions.md: nobody overrides CPgSaved::OnFileFunction"),
)


class CHooksTest(unittest.TestCase):
    def test_overrider_is_found_and_named_and_nothing_else_is(self) -> None:
        for name, line, expected in ROWS:
            with self.subTest(line=line), tempfile.TemporaryDirectory() as folder:
                root = Path(folder)
                header = "database/CommonDatabase/Nodes/DbPropertyGroup.h"
                files = {
                    header: (ROOT / header).read_text(encoding="utf-8"),
                    "docs/decisions.md": STAYS,
                    "src/Saved/PgSaved.h": SAVED,
                    f"src/Saved/{name}": f"class CPgRow : public CPgRowBase\n{{\n{line}\n}};\n",
                }
                for path, text in files.items():
                    (root / path).parent.mkdir(parents=True, exist_ok=True)
                    (root / path).write_text(text, encoding="utf-8")
                result = subprocess.run(
                    [sys.executable, ROOT / "scripts/check-hooks.py", "--root", root],
                    capture_output=True, text=True, check=False)
                self.assertEqual((result.returncode, result.stdout == ""),
                                 (int(expected is not None), expected is None), result)
                self.assertIn(expected or "", result.stdout)


if __name__ == "__main__":
    unittest.main()
