# SPDX-License-Identifier: MIT
"""The comparison of counts must see what got worse, and nothing where counts say nothing."""

import contextlib
import io
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[3] / "bench"))
from instructions import Counts, read, report, write  # noqa: E402

STORED = Counts("GCC 1", {"Read": 10.0, "Write": 1000.0})

# What was counted, by whom, all rows or some; status and a part of what is said, or None.
ROWS = (
    ({"Read": 10.0, "Write": 1020.0}, "GCC 1", True, 0, None),
    ({"Read": 10.0, "Write": 1020.1}, "GCC 1", True, 1, "Write: 1020.1, stored are 1000.0"),
    ({"Read": 10.0, "Write": 980.0}, "GCC 1", True, 0, None),
    ({"Read": 10.0, "Write": 979.9}, "GCC 1", True, 0, "fewer than stored: Write"),
    ({"Read": 10.0}, "GCC 1", True, 1, "Write: stored, but no longer counted"),
    ({"Read": 10.0}, "GCC 1", False, 0, None),
    ({"Read": 10.0, "Write": 1000.0, "Poll": 1.0}, "GCC 1", True, 1, "Poll: no count is stored"),
    ({"Read": 99.0, "Write": 9999.0}, "GCC 2", True, 0, "with GCC 2: not compared"),
)


class CInstructionsTest(unittest.TestCase):
    def test_a_change_is_missed_or_seen_where_there_is_none(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder) / "counts.txt"
            write(path, STORED)
            for rows, made_with, whole, status, said in ROWS:
                with self.subTest(rows=rows, made_with=made_with, whole=whole):
                    output = io.StringIO()
                    with contextlib.redirect_stdout(output), contextlib.redirect_stderr(output):
                        answer = report(read(path), Counts(made_with, rows), whole)
                    self.assertEqual((answer, output.getvalue() == ""), (status, said is None))
                    self.assertIn(said or "", output.getvalue())


if __name__ == "__main__":
    unittest.main()
