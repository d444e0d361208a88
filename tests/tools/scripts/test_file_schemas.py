# SPDX-License-Identifier: MIT
"""The schemas of files take what the library writes and refuse what it refuses."""

import re
import subprocess
import tempfile
import tomllib
import unittest
from pathlib import Path
from typing import NamedTuple

_PROJECT = Path(__file__).resolve().parents[3]
_INVALID = 3  # of xmllint: the document was read, and is not what the schema says


class Schema(NamedTuple):
    path: str
    document: str  # describes all names
    valid: tuple[str, ...]
    whole: str  # a valid file, which a test of the library reads and writes too
    spoilt: tuple[tuple[str, str, str], ...]  # name of the fault, what stands there, what instead


_LABELS = Schema(
    "examples/labels/label-list.xsd", "docs/label-files.md",
    ("examples/labels/*.xml", "tests/labels/files/everything.xml"),
    "tests/labels/files/everything.xml",
    (("Protocol", ' Protocol="CAN"', ""),
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
     ("Element", "<Sender", "<Sends")))

_MASKS = Schema(
    "examples/masks/mask.xsd", "docs/masks.md", ("examples/masks/*.xml",), "examples/masks/pulse.xml",
    (("Version", 'Version="1.0"', 'Version="2.0"'),
     ("Unit", ' Unit="LEVEL_V"', ""),
     ("Scale", 'TimeScale="1e-06"', 'TimeScale="0"'),
     ("Infinity", 'Y="0.5"', 'Y="INF"'),
     ("FarAway", 'X="10"', 'X="1e7"'),
     ("Attribute", 'Y="0.5"', 'Z="0.5"'),
     ("Element", "<Point ", "<Corner "),
     ("Digest", 'Value="', 'Value="x')))

_SCHEMAS = (_LABELS, _MASKS)


def read(path: str) -> str:
    return (_PROJECT / path).read_text("utf-8")


def validate(schema: Schema, path: Path) -> subprocess.CompletedProcess:
    return subprocess.run(["xmllint", "--noout", "--schema", str(_PROJECT / schema.path), str(path)],
                          capture_output=True, text=True, check=False)


class FileSchemas(unittest.TestCase):
    def test_takes_what_is_written(self):
        for schema in _SCHEMAS:
            for pattern in schema.valid:
                files = sorted(_PROJECT.glob(pattern))
                self.assertTrue(files, pattern)
                for path in files:
                    answer = validate(schema, path)
                    self.assertEqual(answer.returncode, 0, answer.stderr)

    def test_refuses_what_is_spoilt(self):
        for schema in _SCHEMAS:
            whole = read(schema.whole)
            with tempfile.TemporaryDirectory() as folder:
                for name, old, new in schema.spoilt:
                    self.assertIn(old, whole, name)
                    path = Path(folder, name + ".xml")
                    path.write_text(whole.replace(old, new, 1), "utf-8")
                    self.assertEqual(validate(schema, path).returncode, _INVALID, name)

    def test_has_no_name_that_is_not_documented(self):
        for schema in _SCHEMAS:
            document = read(schema.document)
            for name in re.findall(r'<xs:(?:element|attribute) name="(\w+)"', read(schema.path)):
                self.assertIn(f"`{name}`", document)

    def test_labels_have_the_names_of_the_model(self):
        model = tomllib.loads(read("database/Enumerations/SerialBus.toml"))
        schema = read(_LABELS.path)
        for kind, table in [("Protocol", "KW_ZEL_SERIALBUS_PROTOCOL"), ("Endianness", "KW_ENDIANNESS"),
                            ("ValueType", "KW_SIGNAL_TRANSLATION_VALUE_TYPE")]:
            part = schema.split(f'<xs:simpleType name="{kind}">')[1].split("</xs:simpleType>")[0]
            self.assertEqual(re.findall(r'value="(\w+)"', part),
                             [value["serial"] for value in model[table]["values"]])


if __name__ == "__main__":
    unittest.main()
