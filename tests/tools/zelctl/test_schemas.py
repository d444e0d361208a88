#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Schemas hold what zelctl really writes, and refuse what it never would: test_schemas.py ZELCTL"""

import json
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

try:
    import jsonschema
except ImportError: # scripts/setup.sh ci installs it
    jsonschema = None

PROJECT = Path(__file__).resolve().parents[3]
ZELCTL = sys.argv.pop(1)
CHANGES = """
insert SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem "Engine & <gears>"
activate SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem "Engine & <gears>"
set Trigger/Type RUNT
set Horizontal/Scale 2ms
set Vertical/Channel[1]/Enabled OFF
set Cursor/X1 8ms
set Horizontal/Scale 1us
"""


class Schemas(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        cls.folder = tempfile.TemporaryDirectory()
        cls.out = Path(cls.folder.name)
        subprocess.run([sys.executable, "-B", PROJECT / "tools/modelgen", "--enumerations",
                        PROJECT / "database/Enumerations", "--groups", PROJECT / "src", "--out",
                        cls.out, "--site", PROJECT / "docs/settings/couplings"], check=True)
        (cls.out / "changes.zel").write_text(CHANGES + f"save {cls.out}/settings.xml\n")
        subprocess.run([ZELCTL, "run", cls.out / "changes.zel"], check=True, capture_output=True)

    @classmethod
    def tearDownClass(cls) -> None:
        cls.folder.cleanup()

    def is_valid(self, file: str) -> bool:
        done = subprocess.run(["xmllint", "--noout", "--relaxng", self.out / "settings.rng",
                               self.out / file], capture_output=True, text=True)
        self.messages = done.stderr[-1000:]
        return done.returncode == 0

    def test_a_saved_file_is_valid(self) -> None:
        self.assertIn(' User="', (self.out / "settings.xml").read_text())
        self.assertTrue(self.is_valid("settings.xml"), msg=self.messages)

    def test_what_no_file_holds_is_not(self) -> None:
        text = (self.out / "settings.xml").read_text()
        for old, new in (('Name="OperationMode" Value="SCOPE_YT"', 'Name="OperationMode" Value="X"'),
                         ('Name="GridIntensity" Value="40"', 'Name="GridIntensity" Value="101"'),
                         ('Name="GridIntensity"', 'Name="GridBrightness"'),
                         ('Name="AcquisitionTime" Value="1', 'Name="AcquisitionTime" Value="1 s'),
                         ('<ArrayItem Name="0">', '<MapItem Name="0">')):
            self.assertIn(old, text)
            (self.out / "other.xml").write_text(text.replace(old, new, 1))
            self.assertFalse(self.is_valid("other.xml"), msg=new)

    @unittest.skipUnless(jsonschema, "python3-jsonschema is not installed")
    def test_the_tree_in_json_is_valid_and_other_values_are_not(self) -> None:
        schema = json.loads((self.out / "tree.schema.json").read_text())
        jsonschema.Draft202012Validator.check_schema(schema)
        validator = jsonschema.Draft202012Validator(schema)
        load = [ZELCTL, "--json", "--load", self.out / "settings.xml"]
        for command in (["tree", "Trigger"], ["tree", "SerialBus/CANBusSettings"], ["tree", "Setup"],
                        ["get", "Horizontal"], ["get", "Vertical/Channel[0]"], ["get", "Cursor/X1"],
                        ["find", "scale"]):
            done = subprocess.run([*load, *command], check=True, capture_output=True, text=True)
            answer = json.loads(done.stdout.splitlines()[-1])
            validator.validate(answer)
        answer = json.loads(subprocess.run([ZELCTL, "--json", "get", "Trigger/Type"], check=True,
                                           capture_output=True, text=True).stdout)
        for name, value in (("value", "SIDEWAYS"), ("unit", "parsec"), ("type", "KW_NOTHING"),
                            ("availability", "perhaps"), ("more", 1)):
            broken = json.loads(json.dumps(answer))
            broken["properties"][0][name] = value
            self.assertFalse(validator.is_valid(broken), msg=name)


if __name__ == "__main__":
    unittest.main()
