# SPDX-License-Identifier: MIT
"""One model per diagnostic: the mistake is told with its file and line, and nothing else is."""

import unittest

from support import CWorkspace

_UNITS = """[KW_UNIT]
brief = "Unit."
values = [ { remote = "NONE", serial = "NONE" }, { remote = "VOLT", serial = "VOLT" } ]

[KW_ONOFF]
brief = "Switch."
values = [
  { remote = "OFF", serial = "OFF" },
  { remote = "ON", serial = "ON" },
]
"""

_A = '[KW_A]\nbrief = "A."\n'
_ONE = 'values = [ { remote = "A", serial = "A" } ]\n'
_TOP = '[Top]\nroot = true\nbrief = "B."\n'
# Line 4 of the file is the row's own line.
_PROPERTY_FRAME = _TOP + "properties = [ {} ]\n"
_CHILD_FRAME = _TOP + 'children = [ {} ]\n[Sub]\nbrief = "B."\n'
_ACTION_FRAME = _TOP + "actions = [ {} ]\n"
_VALUE_FRAME = '[KW_X]\nbrief = "X."\nvalues = [\n  {}\n]\n'

# Whole enumerations/E.toml, and lines of it with what is wrong there.
_ENUM_FILES = [
    ('[KW_A]\nbrief "A."\n', "2: Expected '=' after a key in a key/value pair"),
    (_A + "values = [\n", "3: Invalid value (at end of document)"),
    (b'[KW_A]\nbrief = "\xff"\n', "2: the file is not UTF-8"),
    ('\nbrief = "A."\n', "2: 'brief' is no table of the form [Name]"),
    ('"A\\u2028\\u001b" = 1\n', "1: 'A\\u2028\\x1b' is no table of the form [Name]"),
    ('# text\n[[KW_A]]\nbrief = "A."\n', "2: 'KW_A' is no table of the form [Name]"),
    (_A + _ONE + "\n[KW_A]\n", "5: duplicate [KW_A], first at enumerations/E.toml:1"),
    ('\n[KW_ONOFF]\nbrief = "A."\n' + _ONE, "enumerations/Z_Units.toml:5: duplicate enumeration "
     "KW_ONOFF, first at enumerations/E.toml:2"),
    (_A + 'values = [ { remote = "B_C", serial = "B_C" } ]\n[KW_A_B]\nbrief = "A."\nvalues = [\n'
     '  { remote = "D", serial = "D" },\n  { remote = "C", serial = "C" } ]\n',
     "8: duplicate enumerator 'eKW_A_B_C', first at enumerations/E.toml:3"),
    ("[KW_A]\n" + _ONE, "1: enumeration KW_A needs the key 'brief'"),
    ('[KW_A]\nbrief = " "\n' + _ONE, "1: 'brief' must not be blank"),
    ("\n" + _A, "2: enumeration KW_A has no values"),
    (_A + "unit = 1\n" + _ONE, "1: unknown key 'unit' of enumeration KW_A"),
    (_A + 'remote_exempt = "R."\nvalues = [ { serial = "A" },\n { remote = "B", serial = "B" } ]\n',
     "5: remote name 'B' in a type that has none"),
    (_A + 'values = [ { remote = "A", serial = "A", value = 2 }, { remote = "B", serial = "B" },'
     ' { remote = "C", serial = "C", value = 3 }, { remote = "D", serial = "D", value = 1 } ]\n',
     "1: the numbers are in no order: 'steps_by_number' must say what steps follow"),
    (_A + 'steps_by_number = true\nvalues = [ { remote = "A", serial = "A", value = 2 },'
     ' { remote = "B", serial = "B", value = 2 } ]\n',
     "1: 'steps_by_number' needs different numbers"),
    ('[Rate]\nbrief = "A."\n' + _ONE, "1: 'Rate' is no name of an enumeration (KW_…)"),
]

# One value in line 4 of enumerations/E.toml, and what is wrong with it.
_VALUES = [
    ('{ remote = "A", serial = "A" }, { remote = "A", serial = "A" }',
     "duplicate serial 'A', first at enumerations/E.toml:4"),
    ('{ remote = "A", serial = "A" }, { remote = "B", serial = "B", enumerator = "A" }',
     "duplicate enumerator 'eKW_X_A', first at enumerations/E.toml:4"),
    ('{ remote = "A", serial = "A-B" }', "'eKW_X_A-B' is no identifier of C++"),
    ('{ remote = "", serial = "" }', "'eKW_X_' is no identifier of C++"),
    ('{ remote = "A" }', "a value needs the key 'serial'"),
    ('{ remote = "A", serial = "A", shrt = "a" }', "unknown key 'shrt' of a value"),
    ('{ remote = "A", serial = "A", display = 1 }', "'display' must be a text"),
    ('{ remote = "A", serial = "A", display = "a\\u0001" }',
     "'display' must not hold control characters"),
    ('{ remote = "A", serial = "A", value = "1" }', "'value' must be a number"),
    ('{ serial = "A" }', "a value needs the key 'remote'"),
    ('{ remote = "Ab", serial = "A" }, { remote = "aB", serial = "B" }',
     "duplicate remote 'aB', first at enumerations/E.toml:4"),
    ('{ remote = "1A", serial = "A", remote_exempt = " " }',
     "'remote_exempt' must name the reason"),
    ('{ remote = "A", serial = "A", remote_exempt = "R." }',
     "'remote_exempt' where nothing is against the remote name"),
    ('{ remote = "A", serial = "A", value = nan }', "'value' must be a number"),
    *[(f'{{ remote = "{name}", serial = "A" }}',
       f"remote name '{name}' is no letter with up to 11 letters, digits and '_' behind")
      for name in ("", "1NS", "_A", "A-B", "A B", "Ä", "ABCDEFGHIJKLM")],
    *[(f'{{ remote = "{name}", serial = "A" }}',
       f"remote name '{name}' is a remote protocol's word for a limit, default or step")
      for name in ("MIN", "Max", "DEF", "UP", "down", "MINIMUM", "MAXIMUM", "DEFAULT")],
]

# Properties in line 4 of groups/G.toml, and what is wrong with them.
_PROPERTIES = [
    ('{ name = "P", type = "int32" }', "property 'P' needs the key 'brief'"),
    ('{ type = "int32", brief = "B." }', "a property needs the key 'name'"),
    ('{ name = "P", brief = "B." }', "property 'P' needs the key 'type'"),
    ('{ name = "1P", type = "int32", brief = "B." }', "'1P' is no name of a node"),
    *[(f'{{ name = "P", type = "{kind}", brief = "B." }}', f"unknown type '{kind}'")
      for kind in ("int8", "enum")],
    ('{ name = "P", brief = "B.", type = "blob" }, { name = "P", brief = "B.", type = "blob" }',
     "duplicate name 'P' in Top, first at groups/G.toml:4"),
    ('{ name = "Train", brief = "B.", type = "blob" },'
     ' { name = "Trained", brief = "B.", type = "blob" }',
     "remote name 'TRA' of 'Trained' is one of 'Train', too (groups/G.toml:4): the key 'remote' "
     "must tell them apart"),
    ('{ name = "Play", brief = "B.", type = "blob" },'
     ' { name = "Playing", brief = "B.", type = "blob" }',
     "remote name 'PLAY' of 'Playing' is one of 'Play', too (groups/G.toml:4): the key 'remote' "
     "must tell them apart"),
    ('{ name = "NumberOfFaultyFrames", brief = "B.", type = "blob" }',
     "remote short form 'NUMBOFFAULFRAM' of 'NumberOfFaultyFrames' has more than 12 characters: "
     "the key 'remote' must give another"),
    ('{ name = "System", brief = "B.", type = "blob" }',
     "remote name 'SYST' of 'System' is a command of remote control",
     "remote name 'SYSTEM' of 'System' is a command of remote control"),
    ('{ name = "State", brief = "B.", type = "blob", remote = "STATus" }',
     "remote 'STATus' is not 'State' with the letters of its short form as capitals"),
    ('{ name = "Y1", brief = "B.", type = "blob", remote = "y1" }',
     "remote short form '1' begins with no letter"),
]

# Type and facets of a property, and what is wrong with it.
_FACETS = [
    ("int32", "mim = 1", "unknown key 'mim' of property 'P'"),
    ("KW_ONOFF", 'unit = "VOLT"', "key 'unit' does not apply to type KW_ONOFF"),
    ("int32", 'enabled = ["ON"]', "key 'enabled' does not apply to type int32"),
    ("blob", 'default = "a"', "key 'default' does not apply to type blob"),
    ("string", 'folder = "a"', "key 'folder' does not apply to type string"),
    ("double", 'step = 1, unit = "OHM"', "unknown unit 'OHM'"),
    ("double", 'step = 1, step_mode = "log"',
     "unknown step_mode 'log', must be one of linear, factor, ladder125, ladder1245, list"),
    ("double", 'step = 1, step_behaviour = "stop"',
     "unknown step_behaviour 'stop', must be one of limit, wrap, refuse"),
    ("double", 'step = 1, format = "octal"',
     "unknown format 'octal', must be one of decimal, scientific, engineering, hex, binary"),
    ("double", 'step = 1, format = "hex"', "format 'hex' does not apply to type double"),
    ("bitpattern", 'format = "decimal"', "unknown format 'decimal', must be one of hex, binary"),
    ("int32", "bits = 4", "'bits' needs the format hex or binary"),
    ("int32", 'format = "hex", bits = 65', "'bits' must be a whole number of 1 to 64"),
    ("int32", 'step_mode = "list"', "step mode 'list' needs the key 'values'"),
    ("int32", "step_factor = 2", "'step_factor' needs the step mode 'factor'"),
    ("int32", 'step_mode = "factor", step_factor = 1', "'step_factor' must be greater than 1"),
    ("int32", "step = 0", "'step' must be greater than 0"),
    ("double", 'step_mode = "linear"',
     "the user's setting 'P' needs the key 'step' or 'values', or the step mode factor or "
     "ladder125 or ladder1245"),
    ("double", "step = 1, resolution = -0.1", "'resolution' must be greater than 0"),
    ("int32", "min = 2, max = 1, default = 2", "default 2 is above max 1",
     "min 2 is greater than max 1"),
    ("double", "step = 1, min = 1, default = 0.5", "default 0.5 is below min 1.0"),
    ("double", "step = 1, max = 1, default = 1.5", "default 1.5 is above max 1.0"),
    ("int32", "min = 1", "default (none is given) 0 is below min 1"),
    ("double", "values = [1, 2], default = 1.5", "default 1.5 is not in the value list"),
    ("string", 'values = ["a"]', "default (none is given) '' is not in the value list"),
    ("int32", "values = [0, 3], max = 2", "value 3 is above max 2"),
    ("int32", "values = [0, 1.5]", "'values' must be a list of int32"),
    ("double", "values = [0, 0.0]", "'values' names a value twice"),
    ("int16", "default = 32768", "default 32768 is no int16"),
    ("uint64", "default = -1", "default -1 is no uint64"),
    ("int32", "default = 1.0", "default 1.0 is no int32"),
    ("int32", "default = true", "default True is no int32"),
    ("double", 'step = 1, default = "1"', "default '1' is no double"),
    ("double", "step = 1, max = inf", "max inf is no double"),
    ("double", "step = 1, max = 9007199254740993", "max 9007199254740993 is no double"),
    ("KW_ONOFF", "default = 2", "default: KW_ONOFF has no value 2"),
    ("KW_ONOFF", "default = -1", "default: KW_ONOFF has no value -1"),
    ("KW_ONOFF", 'default = "Off"', "default: KW_ONOFF has no value 'Off'"),
    ("KW_ONOFF", "default = true", "default: KW_ONOFF has no value True"),
    ("KW_ONOFF", 'enabled = ["OFF", "OPEN"]', "enabled: KW_ONOFF has no value 'OPEN'"),
    ("KW_ONOFF", 'default = 1, enabled = ["OFF"]', "default 'ON' is not in the enabled list"),
    ("KW_ONOFF", 'enabled = ["ON"]', "default (none is given) 'OFF' is not in the enabled list"),
    ("KW_ONOFF", 'enabled = ["OFF", "OFF"]', "'enabled' names a value twice"),
    ("KW_ONOFF", 'enabled = "OFF"', "'enabled' must be a list of texts"),
    ("bitpattern", 'default = "012"', "default '012' is no pattern of 0, 1 and X"),
    ("bitpattern", 'length = 2, default = "011"', "default '011' is longer than length 2"),
    ("string", 'length = 1, values = ["", "ab"]', "value 'ab' is longer than length 1"),
    ("bitpattern", 'form = "mask"', "key 'form' does not apply to type bitpattern"),
    ("string", "values = [1]", "'values' must be a list of texts"),
    ("filepath", 'open = [""]', "'open' must be a list of texts"),
    ("filepath", 'save_as = [".csv"]', "extension '.csv' must stand without its dot"),
    ("int32", "result = 1", "'result' must be true or false"),
    ("int32", "removed = true", "'Top/P' was never released: its entry can go"),
    ("int32", "result = true, confirm = true",
     "result 'P' can not be confirmed: no client writes it"),
    ("int32", 'result = true, measured = "guess"',
     "unknown measured 'guess', must be one of reading, count"),
    ("int32", 'measured = "reading"', "setting 'P' can not be measured, only a result"),
    ("int32", "save = 3", "'save' must be a whole number of 0 to 2"),
    *[("string", f"secret = true{save}",
       "a secret can not be saved with the user's settings, only with save = 2 or 0")
      for save in ("", ", save = 1")],
    *[(kind, f'{facets}, item_defaults = {wanted}', wrong) for kind, facets, wanted, wrong in [
        ("int32", "min = 0", "[]", "'item_defaults' must be a list that is not empty"),
        ("int32", "min = 0", "1", "'item_defaults' must be a list that is not empty"),
        ("int32", "min = 0", "[1, 0.5]", "item_defaults: 0.5 is no int32"),
        ("int32", "min = 0", "[0, -1]", "item default -1 is below min 0"),
        ("int32", "max = 2", "[2, 3]", "item default 3 is above max 2"),
        ("int32", "values = [0, 2]", "[2, 1]", "item default 1 is not in the value list"),
        ("KW_ONOFF", "save = 0", '["OFF", "UP"]', "item_defaults: KW_ONOFF has no value 'UP'"),
        ("KW_ONOFF", 'enabled = ["OFF"]', "[0, 1]",
         "item default 'ON' is not in the enabled list")]],
]

# Children in line 4 of groups/G.toml; the group Sub stands in line 5.
_CHILDREN = [
    ('{ name = "Sub" }, { name = "None" }', "no file defines the group None"),
    ('{ name = "Sub" }, { name = "A", group = "B" }', "no file defines the group B"),
    ('{ name = "Sub" }, { group = "Sub" }', "a child needs the key 'name'"),
    ('{ name = "sub", group = "Sub" }', "'sub' is no name of a group"),
    ('{ name = "Sub", size = 1 }', "unknown key 'size' of child 'Sub'"),
    ('{ name = "Sub", array = 1, map = true }', "a child is an array or a map, not both"),
    ('{ name = "Sub", array = -1 }', "'array' must be a whole number of 0 to 2147483647"),
    ('{ name = "Sub", array = 4, max = 3 }', "array size 4 is greater than max 3"),
    ('{ name = "Sub", max = 3 }', "key 'max' applies to array and map only"),
    ('{ name = "Sub", map = true, dynamic = true }', "key 'dynamic' applies to array only"),
    ('{ name = "Sub", array = 1, pattern = "a%1" }', "key 'pattern' applies to map only"),
    ('{ name = "Sub", map = true, pattern = "a" }', "'pattern' must hold %1 once"),
    ('{ name = "Sub", array = 2 }, { name = "Sub2", group = "Sub" }',
     "remote name 'SUB2' of 'Sub2' is that of an item of 'Sub' (groups/G.toml:4)"),
    ('{ name = "Sub" }, { name = "Sub" }', "duplicate name 'Sub' in Top, first at groups/G.toml:4"),
]

_ACTIONS = [
    ('{ name = "A" }', "action 'A' needs the key 'brief'"),
    ('{ brief = "B." }', "an action needs the key 'name'"),
    ('{ name = "A B", brief = "B." }', "'A B' is no name of a node"),
    ('{ name = "A", brief = "B.", kind = "event" }',
     "unknown kind 'event', must be one of function, operation"),
    ('{ name = "A", brief = "B.", code = 1 }', "unknown key 'code' of action 'A'"),
]

# Whole groups/G.toml.
_GROUP_FILES = [
    ('[Top]\n\nbrief = "B\n', "3: Illegal character '\\n'"),
    ('\n[Top]\nbrief = "B."\nchildren = [ { name = "A" } ]\n[A]\nbrief = "B."\n',
     "2: group Top is a child of no group", "2: no group is marked as the root"),
    (_TOP + '[Other]\nroot = true\nbrief = "B."\n',
     "4: a second root Other, the first is at groups/G.toml:1"),
    (_TOP + '\n[Lost]\nbrief = "B."\n', "5: group Lost is a child of no group"),
    (_TOP + 'children = [ { name = "A" } ]\n[A]\nbrief = "B."\nchildren = [ { name = "B" } ]\n[B]\n'
     'brief = "B."\nchildren = [\n  { name = "A", array = 0 },\n]\n',
     "11: groups contain each other: A > B > A"),
    (_TOP + 'children = [ { name = "A" } ]\n[A]\nbrief = "B."\nchildren = [ { name = "Top" } ]\n',
     "7: groups contain each other: Top > A > Top", "7: the root Top can be no child"),
    ("[Top]\nroot = true\n", "1: group Top needs the key 'brief'"),
    (_TOP + "kinds = []\n", "1: unknown key 'kinds' of group Top"),
    ('[top]\nroot = true\nbrief = "B."\n', "1: 'top' is no name of a group"),
    (_TOP + "save = -1\n", "1: 'save' must be a whole number of 0 to 2"),
    (_TOP + 'properties = [ "A" ]\n', "4: 'properties' must be a list of { … } entries"),
    (_TOP + 'properties = [ { name = "A", type = "blob", brief = "B." } ]\nchildren = [\n'
     '  # a } and a "\n  { name = "A" } ]\nactions = [ { name = "A", brief = "B." } ]\n[A]\n'
     'brief = "B."\n', "7: duplicate name 'A' in Top, first at groups/G.toml:4",
     "8: duplicate name 'A' in Top, first at groups/G.toml:4"),
    (_TOP + 'children = [ { name = "A", map = true } ]\n[A]\nbrief = "B."\n'
     'actions = [ { name = "Item", brief = "B." } ]\n',
     "7: remote name 'ITEM' of 'Item' is a command of remote control"),
    (_TOP + 'rules = true\nchildren = [ { name = "TopBase" } ]\n[TopBase]\nbrief = "B."\n',
     "6: the class CPgTopBase is taken by the rules of Top"),
    (_TOP.replace("\n", "\r\n") + 'properties = [\r\n  { name = "P" } ]\r\n',
     "5: property 'P' needs the key 'brief'", "5: property 'P' needs the key 'type'"),
    ('[Top]\nroot = true\nbrief = """a\nb"""\n[Lost]\nbrief = "B."\n',
     "1: 'brief' must not hold control characters", "5: group Lost is a child of no group"),
    (_TOP + 'properties = [\n'
     '  { name = "A", type = "int32", default = { a = 1 }, brief = "B." },\n\n'
     '  { name = "B", type = "int16", values = [\n 0, 1], default = 2, brief = "B." },\n'
     '  { name = "C", type = "text", brief = "[ {" },\n]\n', "5: default {'a': 1} is no int32",
     "7: default 2 is not in the value list", "9: unknown type 'text'"),
]

# A list of what was released, its lines, and what is wrong with the model then.
_RELEASED = [
    ("groups/accessors.txt", "Top/Q property int32",
     "groups/accessors.txt:1: 'Top/Q' was released: its entry in the model stays until the "
     "next major version, with removed = true"),
    ("groups/accessors.txt", "Sub/Q property int32",
     "groups/accessors.txt:1: the group Sub was released: it stays in the model until the "
     "next major version"),
    ("groups/accessors.txt", "Top/P property double",
     "groups/G.toml:4: 'Top/P' is a property int32 and was released as property double "
     "(groups/accessors.txt:1), which it stays until the next major version: a new one needs "
     "a name of its own"),
    ("groups/accessors.txt", "Top/P property int32\nTop/P property int32",
     "groups/accessors.txt:2: 'Top/P' stands here a second time, first at "
     "groups/accessors.txt:1"),
    ("groups/accessors.txt", "Top/P int32",
     "groups/accessors.txt:1: not of the form 'Group/Member kind type'"),
    ("groups/accessors.txt", b'\xff', "groups/accessors.txt:1: the file is not UTF-8"),
    ("enumerations/values.txt", "KW_UNIT NONE\n\nKW_ONOFF ON",
     "enumerations/Z_Units.toml:8: 'OFF' has the number 0, with which 'ON' was released "
     "(enumerations/values.txt:3): released values stay as they are, new ones go to the end"),
    ("enumerations/values.txt", "KW_UNIT NONE VOLT AMPERE",
     "enumerations/Z_Units.toml:1: value 'AMPERE' was released with the number 2 "
     "(enumerations/values.txt:1): it stays until the next major version"),
    ("enumerations/values.txt", "KW_GONE A",
     "enumerations/values.txt:1: the enumeration KW_GONE was released: it stays in the model "
     "until the next major version"),
    ("enumerations/values.txt", "KW_UNIT, NONE",
     "enumerations/values.txt:1: not of the form 'KW_TYPE VALUE …'"),
]


class DiagnosticsTest(unittest.TestCase):
    maxDiff = None

    def _check(self, files: dict[str, str | bytes], wanted: list[str]) -> None:
        with self.subTest(files), CWorkspace() as workspace:
            workspace.write("enumerations/Z_Units.toml", _UNITS)
            for path, content in files.items():
                workspace.write(path, content)
            status, _, mistakes = workspace.run()
            self.assertEqual(mistakes, wanted)
            self.assertEqual(status, 1)
            self.assertFalse(workspace.out.exists(), "a faulty model was emitted")

    def test_mistake_in_a_file_passes(self) -> None:
        for path, rows in ("enumerations/E.toml", _ENUM_FILES), ("groups/G.toml", _GROUP_FILES):
            for content, *texts in rows:
                self._check({path: content},
                            [f"{path}:{text}" if text[0].isdigit() else text for text in texts])

    def test_mistake_in_an_entry_passes(self) -> None:
        facets = [(f'{{ name = "P", brief = "B.", type = "{kind}", {facets} }}', *texts)
                  for kind, facets, *texts in _FACETS]
        for path, frame, rows in [("enumerations/E.toml", _VALUE_FRAME, _VALUES),
                                  ("groups/G.toml", _PROPERTY_FRAME, _PROPERTIES),
                                  ("groups/G.toml", _PROPERTY_FRAME, facets),
                                  ("groups/G.toml", _CHILD_FRAME, _CHILDREN),
                                  ("groups/G.toml", _ACTION_FRAME, _ACTIONS)]:
            for content, *texts in rows:
                self._check({path: frame.replace("{}", content)},
                            [f"{path}:4: {text}" for text in texts])

    def test_change_of_what_was_released_passes(self) -> None:
        entry = '{ name = "P", brief = "B.", type = "int32" }'
        for path, lines, wanted in _RELEASED:
            self._check({"groups/G.toml": _PROPERTY_FRAME.replace("{}", entry), path: lines},
                        [wanted])

    def test_mistake_of_several_files_passes(self) -> None:
        self._check({"groups/A.toml": _TOP, "groups/B.toml": _TOP},
                    ["groups/B.toml:1: duplicate group Top, first at groups/A.toml:1"])
        # What uses a damaged enumeration is not wrong as well.
        user = '{ name = "P", brief = "B.", type = "KW_A", unit = "VOLT" }'
        self._check({"enumerations/E.toml": _A,
                     "groups/G.toml": _PROPERTY_FRAME.replace("{}", user)},
                    ["enumerations/E.toml:1: enumeration KW_A has no values"])
        for stem in ("index", "enumerations", "My File"):
            self._check({f"groups/{stem}.toml": _TOP},
                        [f"groups/{stem}.toml:1: '{stem}' can not name a model file"])


if __name__ == "__main__":
    unittest.main()
