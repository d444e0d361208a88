# SPDX-License-Identifier: MIT
"""The schema of masks takes what the library writes and refuses what it refuses."""

import re
import subprocess
import tempfile
import unittest
from pathlib import Path

_PROJECT = Path(__file__).resolve().parents[3]
_SCHEMA = _PROJECT / "examples/masks/mask.xsd"
_EXAMPLE = _PROJECT / "examples/masks/pulse.xml"
_DOCUMENT = _PROJECT / "docs/masks.md"

# What spoils the example, which a test of the library reads and writes.
_SPOILT = [
    ("Version", 'Version="1.0"', 'Version="2.0"'),
    ("Unit", ' Unit="LEVEL_V"', ""),
    ("Scale", 'TimeScale="1e-06"', 'TimeScale="0"'),
    ("Infinity", 'Y="0.5"', 'Y="INF"'),
    ("FarAway", 'X="10"', 'X="1e7"'),
    ("Attribute", 'Y="0.5"', 'Z="0.5"'),
    ("Element", "<Lower>", "<Under>"),
    ("Digest", 'Value="', 'Value="x'),
]


def validate(path):
    return subprocess.run(["xmllint", "--noout", "--schema", str(_SCHEMA), str(path)],
                          capture_output=True, text=True, check=False)


class MaskSchema(unittest.TestCase):
    def test_takes_what_is_written(self):
        answer = validate(_EXAMPLE)
        self.assertEqual(answer.returncode, 0, answer.stderr)

    def test_refuses_what_is_spoilt(self):
        whole = _EXAMPLE.read_text("utf-8")
        with tempfile.TemporaryDirectory() as folder:
            for name, old, new in _SPOILT:
                self.assertIn(old, whole, name)
                path = Path(folder, name + ".xml")
                path.write_text(whole.replace(old, new, 1), "utf-8")
                self.assertNotEqual(validate(path).returncode, 0, name)

    def test_has_no_name_that_is_not_documented(self):
        document = _DOCUMENT.read_text("utf-8")
        for name in re.findall(r'<xs:(?:element|attribute) name="(\w+)"', _SCHEMA.read_text("utf-8")):
            self.assertIn(f"`{name}`", document)


if __name__ == "__main__":
    unittest.main()
