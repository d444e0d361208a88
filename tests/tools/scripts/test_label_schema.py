# SPDX-License-Identifier: MIT
"""The schema of label lists takes what the library writes, and knows the names that it writes."""

import re
import subprocess
import tempfile
import tomllib
import unittest
from pathlib import Path

_PROJECT = Path(__file__).resolve().parents[3]
_SCHEMA = _PROJECT / "examples/labels/label-list.xsd"
_ALL_FIELDS = _PROJECT / "tests/labels/files/everything.xml"
_DOCUMENT = _PROJECT / "docs/label-files.md"

# What spoils the file that has all fields.
_SPOILT = [
    ("Protocol", ' Protocol="CAN"', ""),
    ("ProtocolName", 'Protocol="CAN"', 'Protocol="can"'),
    ("NewerMajor", 'Version="1.0"', 'Version="2.0"'),
    ("Length", ' Length="64"', ""),
    ("Identifier", 'Identifier="0x100"', 'Identifier="100h"'),
    ("CycleTime", 'CycleTime="0.01"', 'CycleTime="0"'),
    ("Factor", 'Factor="0.25"', 'Factor="0,25"'),
    ("Infinity", 'Factor="0.25"', 'Factor="INF"'),
    ("BitLength", 'BitLength="16"', 'BitLength="65"'),
    ("ValueType", 'ValueType="FLOAT"', 'ValueType="Float"'),
    ("SelectedBy", 'SelectedBy="0"', 'SelectedBy="0-"'),
    ("LabelValue", 'Label Value="0"', 'Label Value="Off"'),
    ("Attribute", 'Unit="rpm"', 'Units="rpm"'),
    ("Element", "<Sender", "<Sends"),
]


def validate(path):
    return subprocess.run(["xmllint", "--noout", "--schema", str(_SCHEMA), str(path)],
                          capture_output=True, text=True, check=False)


class LabelSchema(unittest.TestCase):
    def test_takes_what_is_written(self):
        files = sorted((_PROJECT / "examples/labels").glob("*.xml"))
        self.assertEqual(len(files), 6)
        for path in [*files, _ALL_FIELDS]:
            answer = validate(path)
            self.assertEqual(answer.returncode, 0, answer.stderr)

    def test_refuses_what_is_spoilt(self):
        whole = _ALL_FIELDS.read_text("utf-8")
        with tempfile.TemporaryDirectory() as folder:
            for name, old, new in _SPOILT:
                self.assertIn(old, whole, name)
                path = Path(folder, name + ".xml")
                path.write_text(whole.replace(old, new, 1), "utf-8")
                self.assertEqual(validate(path).returncode, 3, name)

    def test_has_the_names_of_the_model(self):
        model = tomllib.loads((_PROJECT / "database/Enumerations/SerialBus.toml").read_text("utf-8"))
        schema = _SCHEMA.read_text("utf-8")
        for kind, table in [("Protocol", "KW_ZEL_SERIALBUS_PROTOCOL"), ("Endianness", "KW_ENDIANNESS"),
                            ("ValueType", "KW_SIGNAL_TRANSLATION_VALUE_TYPE")]:
            part = schema.split(f'<xs:simpleType name="{kind}">')[1].split("</xs:simpleType>")[0]
            self.assertEqual(re.findall(r'value="(\w+)"', part),
                             [value["serial"] for value in model[table]["values"]])

    def test_has_no_name_that_is_not_documented(self):
        document = _DOCUMENT.read_text("utf-8")
        for name in re.findall(r'<xs:(?:element|attribute) name="(\w+)"', _SCHEMA.read_text("utf-8")):
            self.assertIn(f"`{name}`", document)


if __name__ == "__main__":
    unittest.main()
