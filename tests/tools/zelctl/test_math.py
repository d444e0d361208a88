# SPDX-License-Identifier: MIT
"""Curves that zelctl computes from files, and what it says of expressions."""

import json
import os
import tempfile
import unittest

from support import PROJECT, run

BURST = os.path.join(PROJECT, "examples/waves/burst.csv")


class Math(unittest.TestCase):
    def compute(self, *words, status=0):
        with tempfile.TemporaryDirectory() as folder:
            file = os.path.join(folder, "curve.csv")
            answer = run("--json", "math", *words, "-o", file)
            self.assertEqual(answer.returncode, status, answer.stderr)
            with open(file, encoding="utf-8") as text:
                lines = [line for line in text if line[:1].isdigit() or line[:1] == "-"]
            return json.loads(answer.stdout), [float(line.split(",")[1]) for line in lines]

    def test_points_are_those_of_the_sources(self):
        with open(BURST, encoding="utf-8") as text:
            rows = [line.split(",") for line in text if line[:1].isdigit() or line[:1] == "-"]
        answer, values = self.compute("C1*C2", BURST, "--float")
        self.assertEqual(answer["sources"], ["C1: C1 of burst.csv", "C2: C2 of burst.csv"])
        self.assertEqual(answer["traces"][0]["unit"], "W")
        self.assertEqual(len(values), len(rows))
        for value, row in zip(values, rows):
            power = float(row[1]) * float(row[2]) * 1e-3  # of V and mA
            self.assertAlmostEqual(value, power, delta=2e-4)

    def test_traces_of_several_files_are_numbered_on(self):
        answer, values = self.compute("C3-C1", BURST, BURST)
        self.assertEqual(answer["sources"][2], "C3: C1 of burst.csv")
        self.assertEqual(set(values), {0.0})

    def test_filter_keeps_slow_and_takes_fast(self):
        fast, _ = self.compute("HIGH_PASS", BURST, "--frequency", "10Hz")
        slow, _ = self.compute("LOW_PASS", BURST, "--frequency", "10Hz")
        self.assertGreater(fast["traces"][0]["maximum"], 0.9)
        self.assertLess(slow["traces"][0]["maximum"], 0.1)

    def test_caret_stands_where_it_is_wrong(self):
        answer = run("math", "--check", "C1 + x")
        self.assertEqual(answer.returncode, 1)
        self.assertEqual(answer.stdout.splitlines(), ["C1 + x", "     ^"])
        self.assertIn("column 6: no element begins with \"x\"", answer.stderr)

    def test_elements_and_unit(self):
        answer = json.loads(run("--json", "math", "--check", "sqr(C1)/50Ohm").stdout)
        self.assertTrue(answer["isValid"])
        self.assertEqual(answer["unit"], "W")
        self.assertEqual([element["text"] for element in answer["elements"]],
                         ["sqr", "(", "C1", ")", "/", "50Ohm"])

    def test_refusals_say_what_to_do(self):
        for words, says in ((["C3", BURST], "there is C1: C1 of burst.csv"),
                            (["C1"], "a file with samples is missing"),
                            (["--check", "ADD"], "is an operation"),
                            (["C1", BURST, BURST, BURST], "more than five traces"),
                            (["LOW_PASS", BURST, "--frequency", "0Hz"], "below the minimum")):
            answer = run("math", *words)
            self.assertEqual(answer.returncode, 2, words)
            self.assertIn(says, answer.stderr)


if __name__ == "__main__":
    unittest.main()
