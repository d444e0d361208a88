# SPDX-License-Identifier: MIT
"""A fault that is not seeded, or counted wrongly, would pass for one that no test notices."""

import contextlib
import importlib.util
import io
import tempfile
import unittest
from pathlib import Path

SCRIPT = Path(__file__).resolve().parents[3] / "scripts" / "seed-faults.py"
SPEC = importlib.util.spec_from_file_location("seed_faults", SCRIPT)
seeds = importlib.util.module_from_spec(SPEC)
SPEC.loader.exec_module(seeds)

SOURCE = "limit = 1;\nif (a > limit)\nif (b > limit)\n"

# File, old and new text, what is said of the row: nothing, or a part of it.
ROWS = (
    ("rule.cpp", "a > limit", "a >= limit", None),
    ("rule.cpp", "c > limit", "c >= limit", "has its old text 0 times: mend it"),
    ("rule.cpp", "> limit", ">= limit", "has its old text 2 times: mend it"),
    ("rule.cpp", "a > limit", "a > limit", "changes nothing"),
    ("gone.cpp", "a > limit", "a >= limit", "there is no gone.cpp: mend the row"),
)


def fault(name: str, file: str, old: str, new: str):
    return seeds.Row(name, file, old, new, "a promise")


class CSeedFaultsTest(unittest.TestCase):
    def test_a_row_that_can_not_be_seeded_is_missed(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            (Path(folder) / "rule.cpp").write_text(SOURCE, encoding="utf-8")
            for file, old, new, said in ROWS:
                with self.subTest(file=file, old=old, new=new):
                    found = "\n".join(seeds.problems([fault("Row", file, old, new)], Path(folder)))
                    self.assertEqual(found == "", said is None)
                    self.assertIn(said or "", found)
            twice = [fault("Row", "rule.cpp", "a > limit", "a >= limit")] * 2
            self.assertIn("several rows", "\n".join(seeds.problems(twice, Path(folder))))

    def test_a_fault_that_does_not_compile_counts_or_a_survivor_is_not_named(self) -> None:
        row = fault("Row", "rule.cpp", "a", "b")
        verdicts = [seeds.Verdict(row, "Test.Name"), seeds.Verdict(row, "Test.Other"),
                    seeds.Verdict(row, None), seeds.Verdict(row, None, "does not compile")]
        output = io.StringIO()
        with contextlib.redirect_stdout(output):
            status = seeds.summarise(verdicts)
        self.assertEqual(status, 1)
        self.assertIn("2 of 3 killed, 66.7 %", output.getvalue())
        self.assertIn("SURVIVES  Row: rule.cpp: a promise", output.getvalue())
        self.assertEqual(seeds.judged(output.getvalue()), {"Row"})


if __name__ == "__main__":
    unittest.main()
