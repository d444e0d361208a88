# SPDX-License-Identifier: MIT
"""Masks: what zelctl says of files, makes around traces, and finds in records."""

import json
import os
import tempfile
import unittest

from support import PROJECT, run

PULSE = os.path.join(PROJECT, "examples/masks/pulse.xml")

# A pulse that the example lets pass, in V, every 0.1 us from the left edge of its screen.
POINTS = [(-5e-6 + i * 1e-7, 2.0 if 46 <= i <= 54 else 0.0) for i in range(101)]


class Masks(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.wave = os.path.join(folder.name, "pulse.csv")
        self.mask = os.path.join(folder.name, "made.xml")

    def write(self, changed=None):
        points = [(time, (changed or {}).get(i, level)) for i, (time, level) in enumerate(POINTS)]
        with open(self.wave, "w", encoding="utf-8") as file:
            file.write("time (s),C1 (V)\n")
            file.writelines(f"{time:.8g},{level}\n" for time, level in points)

    def test_says_what_is_wrong_with_a_file(self):
        good = run("mask", "check", PULSE)
        self.assertEqual((good.returncode, good.stderr), (0, ""))
        self.assertIn("6 points above, 6 below", good.stdout)
        with open(PULSE, encoding="utf-8") as file:
            whole = file.read()
        with open(self.mask, "w", encoding="utf-8") as file:
            file.write(whole.replace('Y="2.5"', 'Y="2.6"'))
        bad = run("mask", "check", self.mask)
        self.assertEqual(bad.returncode, 2)
        self.assertIn(f"{self.mask}:19:5: it is not what was saved", bad.stderr)

    def test_finds_the_places_of_violations(self):
        self.write()
        passes = run("mask", "test", PULSE, self.wave)
        self.assertEqual((passes.returncode, passes.stdout), (0, "C1 passes\n"), passes.stderr)
        self.write({10: 0.75, 50: 0.5, 51: 1.0})
        fails = run("--json", "mask", "test", PULSE, self.wave, "--channel", "C1")
        self.assertEqual(fails.returncode, 1)
        answer = json.loads(fails.stdout)
        self.assertFalse(answer["passed"])
        self.assertEqual(answer["violations"],
                         [{"line": "upper", "first": 10, "last": 10, "worst": 10, "excess": 0.25},
                          {"line": "lower", "first": 50, "last": 51, "worst": 50, "excess": 1.0}])
        self.assertEqual(run("mask", "test", self.wave, PULSE).returncode, 2)

    def test_makes_a_mask_that_its_trace_passes(self):
        self.write()
        made = run("mask", "make", "--width-x", "0", "--width-y", "0", "-o", self.mask, self.wave)
        self.assertEqual(made.returncode, 0, made.stderr)
        self.assertEqual(run("mask", "test", self.mask, self.wave).returncode, 0)
        self.write({0: 0.01})
        self.assertEqual(run("mask", "test", self.mask, self.wave).returncode, 1)
        refused = run("mask", "make", "--width-y=-1", "-o", self.mask, self.wave)
        self.assertEqual(refused.returncode, 2)

    def test_draws_both_lines(self):
        drawing = run("mask", "show", PULSE).stdout
        self.assertGreaterEqual(sum("⠤" in line or "⠒" in line for line in drawing.splitlines()), 2)
        svg = os.path.join(os.path.dirname(self.mask), "m.svg")
        self.assertEqual(run("mask", "show", PULSE, "--svg", svg).returncode, 0)
        with open(svg, encoding="utf-8") as file:
            self.assertIn("<svg", file.read())


if __name__ == "__main__":
    unittest.main()
