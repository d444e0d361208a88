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

# Line 4 of the file is the row's own line.
_PROPERTY_FRAME = '[Top]\nroot = true\nbrief = "B."\nproperties = [ {} ]\n'
_CHILD_FRAME = '[Top]\nroot = true\nbrief = "B."\nchildren = [ {} ]\n[Sub]\nbrief = "B."\n'
_ACTION_FRAME = '[Top]\nroot = true\nbrief = "B."\nactions = [ {} ]\n'
_VALUE_FRAME = '[KW_X]\nbrief = "X."\nvalues = [\n  {}\n]\n'

_P = 'name = "P", brief = "B.", '

# Whole enumerations/E.toml.
_ENUM_FILES = [
    ("value without an equals sign", '[KW_A]\nbrief "A."\n',
     ["enumerations/E.toml:2: Expected '=' after a key in a key/value pair"]),
    ("list without its end", '[KW_A]\nbrief = "A."\nvalues = [\n',
     ["enumerations/E.toml:3: Invalid value (at end of document)"]),
    ("not UTF-8", b'[KW_A]\nbrief = "\xff"\n', ["enumerations/E.toml:2: the file is not UTF-8"]),
    ("key before the first table", '\nbrief = "A."\n',
     ["enumerations/E.toml:2: 'brief' is no table of the form [Name]"]),
    ("name with a line end", '"A\\u2028\\u001b" = 1\n',
     ["enumerations/E.toml:1: 'A\\u2028\\x1b' is no table of the form [Name]"]),
    ("list of tables", '# text\n[[KW_A]]\nbrief = "A."\n',
     ["enumerations/E.toml:2: 'KW_A' is no table of the form [Name]"]),
    ("type twice in a file",
     '[KW_A]\nbrief = "A."\nvalues = [ { remote = "A", serial = "A" } ]\n\n[KW_A]\nbrief = "B."\n',
     ["enumerations/E.toml:5: duplicate [KW_A], first at enumerations/E.toml:1"]),
    ("type in two files",
     '\n[KW_ONOFF]\nbrief = "A."\nvalues = [ { remote = "A", serial = "A" } ]\n',
     ["enumerations/Z_Units.toml:5: duplicate enumeration KW_ONOFF, "
      "first at enumerations/E.toml:2"]),
    ("enumerator in two types",
     '[KW_A]\nbrief = "A."\nvalues = [ { remote = "B_C", serial = "B_C" } ]\n'
     '[KW_A_B]\nbrief = "A."\nvalues = [\n  { remote = "D", serial = "D" },\n'
     '  { remote = "C", serial = "C" } ]\n',
     ["enumerations/E.toml:8: duplicate enumerator 'eKW_A_B_C', first at enumerations/E.toml:3"]),
    ("no brief", '[KW_A]\nvalues = [ { remote = "A", serial = "A" } ]\n',
     ["enumerations/E.toml:1: enumeration KW_A needs the key 'brief'"]),
    ("blank brief", '[KW_A]\nbrief = " "\nvalues = [ { remote = "A", serial = "A" } ]\n',
     ["enumerations/E.toml:1: 'brief' must not be blank"]),
    ("no values", '\n[KW_A]\nbrief = "A."\n',
     ["enumerations/E.toml:2: enumeration KW_A has no values"]),
    ("unknown key of a type",
     '[KW_A]\nbrief = "A."\nunit = 1\nvalues = [ { remote = "A", serial = "A" } ]\n',
     ["enumerations/E.toml:1: unknown key 'unit' of enumeration KW_A"]),
    ("remote name of a type without", '[KW_A]\nbrief = "A."\nremote_exempt = "R."\n'
     'values = [ { serial = "A" },\n { remote = "B", serial = "B" } ]\n',
     ["enumerations/E.toml:5: remote name 'B' in a type that has none"]),
    ("numbers in no order", '[KW_A]\nbrief = "A."\nvalues = [ { remote = "A", serial = "A", '
     'value = 2 }, { remote = "B", serial = "B" }, { remote = "C", serial = "C", value = 3 }, '
     '{ remote = "D", serial = "D", value = 1 } ]\n',
     ["enumerations/E.toml:1: the numbers are in no order: 'steps_by_number' must say what steps "
      "follow"]),
    ("steps by equal numbers", '[KW_A]\nbrief = "A."\nsteps_by_number = true\nvalues = [ '
     '{ remote = "A", serial = "A", value = 2 }, { remote = "B", serial = "B", value = 2 } ]\n',
     ["enumerations/E.toml:1: 'steps_by_number' needs different numbers"]),
    ("name of a type", '[Rate]\nbrief = "A."\nvalues = [ { remote = "A", serial = "A" } ]\n',
     ["enumerations/E.toml:1: 'Rate' is no name of an enumeration (KW_…)"]),
]

# One value in line 4 of enumerations/E.toml, and what is wrong with it.
_VALUES = [
    ("duplicate serial", '{ remote = "A", serial = "A" }, { remote = "A", serial = "A" }',
     ["duplicate serial 'A', first at enumerations/E.toml:4"]),
    ("duplicate enumerator",
     '{ remote = "A", serial = "A" }, { remote = "B", serial = "B", enumerator = "A" }',
     ["duplicate enumerator 'eKW_X_A', first at enumerations/E.toml:4"]),
    ("no identifier", '{ remote = "A", serial = "A-B" }', ["'eKW_X_A-B' is no identifier of C++"]),
    ("blank serial without enumerator", '{ remote = "", serial = "" }',
     ["'eKW_X_' is no identifier of C++"]),
    ("no serial", '{ remote = "A" }', ["a value needs the key 'serial'"]),
    ("unknown key", '{ remote = "A", serial = "A", shrt = "a" }',
     ["unknown key 'shrt' of a value"]),
    ("text of another type", '{ remote = "A", serial = "A", display = 1 }',
     ["'display' must be a text"]),
    ("control character", '{ remote = "A", serial = "A", display = "a\\u0001" }',
     ["'display' must not hold control characters"]),
    ("number of another type", '{ remote = "A", serial = "A", value = "1" }',
     ["'value' must be a number"]),
    ("no remote name", '{ serial = "A" }', ["a value needs the key 'remote'"]),
    ("duplicate remote but for case", '{ remote = "Ab", serial = "A" }, '
     '{ remote = "aB", serial = "B" }',
     ["duplicate remote 'aB', first at enumerations/E.toml:4"]),
    ("exemption without a reason", '{ remote = "1A", serial = "A", remote_exempt = " " }',
     ["'remote_exempt' must name the reason"]),
    ("exemption without need", '{ remote = "A", serial = "A", remote_exempt = "R." }',
     ["'remote_exempt' where nothing is against the remote name"]),
    *[(f"remote name '{name}'", f'{{ remote = "{name}", serial = "A" }}',
       [f"remote name '{name}' is no letter with up to 11 letters, digits and '_' behind"])
      for name in ("", "1NS", "_A", "A-B", "A B", "Ä", "ABCDEFGHIJKLM")],
    *[(f"remote name '{name}'", f'{{ remote = "{name}", serial = "A" }}',
       [f"remote name '{name}' is a remote protocol's word for a limit, default or step"])
      for name in ("MIN", "Max", "DEF", "UP", "down", "MINIMUM", "MAXIMUM", "DEFAULT")],
    ("not a number", '{ remote = "A", serial = "A", value = nan }', ["'value' must be a number"]),
]

# One property in line 4 of groups/G.toml, and what is wrong with it.
_PROPERTIES = [
    ("no brief", '{ name = "P", type = "int32" }', ["property 'P' needs the key 'brief'"]),
    ("no name", '{ type = "int32", brief = "B." }', ["a property needs the key 'name'"]),
    ("no type", '{ name = "P", brief = "B." }', ["property 'P' needs the key 'type'"]),
    ("name", '{ name = "1P", type = "int32", brief = "B." }', ["'1P' is no name of a node"]),
    ("unknown type", f'{{ {_P}type = "int8" }}', ["unknown type 'int8'"]),
    ("type of the model's own", f'{{ {_P}type = "enum" }}', ["unknown type 'enum'"]),
    ("unknown key", f'{{ {_P}type = "int32", mim = 1 }}', ["unknown key 'mim' of property 'P'"]),
    ("unit of an enumeration", f'{{ {_P}type = "KW_ONOFF", unit = "VOLT" }}',
     ["key 'unit' does not apply to type KW_ONOFF"]),
    ("enabled of a number", f'{{ {_P}type = "int32", enabled = ["ON"] }}',
     ["key 'enabled' does not apply to type int32"]),
    ("default of a blob", f'{{ {_P}type = "blob", default = "a" }}',
     ["key 'default' does not apply to type blob"]),
    ("folder of a string", f'{{ {_P}type = "string", folder = "a" }}',
     ["key 'folder' does not apply to type string"]),
    ("unknown unit", f'{{ {_P}type = "double", step = 1, unit = "OHM" }}', ["unknown unit 'OHM'"]),
    ("unknown step mode", f'{{ {_P}type = "double", step = 1, step_mode = "log" }}',
     ["unknown step_mode 'log', must be one of linear, factor, ladder125, list"]),
    ("unknown step behaviour", f'{{ {_P}type = "double", step = 1, step_behaviour = "stop" }}',
     ["unknown step_behaviour 'stop', must be one of limit, wrap, refuse"]),
    ("unknown format", f'{{ {_P}type = "double", step = 1, format = "octal" }}',
     ["unknown format 'octal', must be one of decimal, scientific, engineering, hex, binary"]),
    ("hex format of a double", f'{{ {_P}type = "double", step = 1, format = "hex" }}',
     ["format 'hex' does not apply to type double"]),
    ("decimal bit pattern", f'{{ {_P}type = "bitpattern", format = "decimal" }}',
     ["unknown format 'decimal', must be one of hex, binary"]),
    ("bits of a decimal", f'{{ {_P}type = "int32", bits = 4 }}',
     ["'bits' needs the format hex or binary"]),
    ("bits out of range", f'{{ {_P}type = "int32", format = "hex", bits = 65 }}',
     ["'bits' must be a whole number of 1 to 64"]),
    ("list mode without a list", f'{{ {_P}type = "int32", step_mode = "list" }}',
     ["step mode 'list' needs the key 'values'"]),
    ("factor in another mode", f'{{ {_P}type = "int32", step_factor = 2 }}',
     ["'step_factor' needs the step mode 'factor'"]),
    ("factor 1", f'{{ {_P}type = "int32", step_mode = "factor", step_factor = 1 }}',
     ["'step_factor' must be greater than 1"]),
    ("step 0", f'{{ {_P}type = "int32", step = 0 }}', ["'step' must be greater than 0"]),
    ("setting that a knob can not move", f'{{ {_P}type = "double", step_mode = "linear" }}',
     ["the user's setting 'P' needs the key 'step' or 'values', or the step mode factor or "
      "ladder125"]),
    ("negative resolution", f'{{ {_P}type = "double", step = 1, resolution = -0.1 }}',
     ["'resolution' must be greater than 0"]),
    ("min above max", f'{{ {_P}type = "int32", min = 2, max = 1, default = 2 }}',
     ["default 2 is above max 1", "min 2 is greater than max 1"]),
    ("default below min", f'{{ {_P}type = "double", step = 1, min = 1, default = 0.5 }}',
     ["default 0.5 is below min 1.0"]),
    ("default above max", f'{{ {_P}type = "double", step = 1, max = 1, default = 1.5 }}',
     ["default 1.5 is above max 1.0"]),
    ("start value below min", f'{{ {_P}type = "int32", min = 1 }}',
     ["default (none is given) 0 is below min 1"]),
    ("default not in the list", f'{{ {_P}type = "double", values = [1, 2], default = 1.5 }}',
     ["default 1.5 is not in the value list"]),
    ("start value not in the list", f'{{ {_P}type = "string", values = ["a"] }}',
     ["default (none is given) '' is not in the value list"]),
    ("list outside limits", f'{{ {_P}type = "int32", values = [0, 3], max = 2 }}',
     ["value 3 is above max 2"]),
    ("list of another type", f'{{ {_P}type = "int32", values = [0, 1.5] }}',
     ["'values' must be a list of int32"]),
    ("list with a value twice", f'{{ {_P}type = "double", values = [0, 0.0] }}',
     ["'values' names a value twice"]),
    ("too great for int16", f'{{ {_P}type = "int16", default = 32768 }}',
     ["default 32768 is no int16"]),
    ("negative for uint64", f'{{ {_P}type = "uint64", default = -1 }}',
     ["default -1 is no uint64"]),
    ("real for int32", f'{{ {_P}type = "int32", default = 1.0 }}', ["default 1.0 is no int32"]),
    ("truth for int32", f'{{ {_P}type = "int32", default = true }}', ["default True is no int32"]),
    ("text for a double", f'{{ {_P}type = "double", step = 1, default = "1" }}',
     ["default '1' is no double"]),
    ("infinite double", f'{{ {_P}type = "double", step = 1, max = inf }}',
     ["max inf is no double"]),
    ("whole number that a double rounds",
     f'{{ {_P}type = "double", step = 1, max = 9007199254740993 }}',
     ["max 9007199254740993 is no double"]),
    ("unknown index", f'{{ {_P}type = "KW_ONOFF", default = 2 }}',
     ["default: KW_ONOFF has no value 2"]),
    ("negative index", f'{{ {_P}type = "KW_ONOFF", default = -1 }}',
     ["default: KW_ONOFF has no value -1"]),
    ("unknown serial", f'{{ {_P}type = "KW_ONOFF", default = "Off" }}',
     ["default: KW_ONOFF has no value 'Off'"]),
    ("truth for an enumeration", f'{{ {_P}type = "KW_ONOFF", default = true }}',
     ["default: KW_ONOFF has no value True"]),
    ("unknown enabled value", f'{{ {_P}type = "KW_ONOFF", enabled = ["OFF", "OPEN"] }}',
     ["enabled: KW_ONOFF has no value 'OPEN'"]),
    ("default not enabled", f'{{ {_P}type = "KW_ONOFF", default = 1, enabled = ["OFF"] }}',
     ["default 'ON' is not in the enabled list"]),
    ("start value not enabled", f'{{ {_P}type = "KW_ONOFF", enabled = ["ON"] }}',
     ["default (none is given) 'OFF' is not in the enabled list"]),
    ("enabled twice", f'{{ {_P}type = "KW_ONOFF", enabled = ["OFF", "OFF"] }}',
     ["'enabled' names a value twice"]),
    ("enabled no list", f'{{ {_P}type = "KW_ONOFF", enabled = "OFF" }}',
     ["'enabled' must be a list of texts"]),
    ("pattern of other signs", f'{{ {_P}type = "bitpattern", default = "012" }}',
     ["default '012' is no pattern of 0, 1 and X"]),
    ("pattern too long", f'{{ {_P}type = "bitpattern", length = 2, default = "011" }}',
     ["default '011' is longer than length 2"]),
    ("list text too long", f'{{ {_P}type = "string", length = 1, values = ["", "ab"] }}',
     ["value 'ab' is longer than length 1"]),
    ("list of other things", f'{{ {_P}type = "string", values = [1] }}',
     ["'values' must be a list of texts"]),
    ("blank extension", f'{{ {_P}type = "filepath", open = [""] }}',
     ["'open' must be a list of texts"]),
    ("extension with a dot", f'{{ {_P}type = "filepath", save_as = [".csv"] }}',
     ["extension '.csv' must stand without its dot"]),
    ("result no truth", f'{{ {_P}type = "int32", result = 1 }}',
     ["'result' must be true or false"]),
    ("removed, but never released", f'{{ {_P}type = "int32", removed = true }}',
     ["'Top/P' was never released: its entry can go"]),
    ("confirmed result", f'{{ {_P}type = "int32", result = true, confirm = true }}',
     ["result 'P' can not be confirmed: no client writes it"]),
    ("save out of range", f'{{ {_P}type = "int32", save = 3 }}',
     ["'save' must be a whole number of 0 to 2"]),
    ("secret in the user's settings", f'{{ {_P}type = "string", secret = true }}',
     ["a secret can not be saved with the user's settings, only with save = 2 or 0"]),
    ("duplicate property", f'{{ {_P}type = "blob" }}, {{ {_P}type = "blob" }}',
     ["duplicate name 'P' in Top, first at groups/G.toml:4"]),
]

# Children in line 4 of groups/G.toml; the group Sub stands in line 5.
_CHILDREN = [
    ("not defined", '{ name = "Sub" }, { name = "None" }', ["no file defines the group None"]),
    ("class not defined", '{ name = "Sub" }, { name = "A", group = "B" }',
     ["no file defines the group B"]),
    ("no name", '{ name = "Sub" }, { group = "Sub" }', ["a child needs the key 'name'"]),
    ("name", '{ name = "sub", group = "Sub" }', ["'sub' is no name of a group"]),
    ("unknown key", '{ name = "Sub", size = 1 }', ["unknown key 'size' of child 'Sub'"]),
    ("array and map", '{ name = "Sub", array = 1, map = true }',
     ["a child is an array or a map, not both"]),
    ("negative size", '{ name = "Sub", array = -1 }',
     ["'array' must be a whole number of 0 to 2147483647"]),
    ("size above max", '{ name = "Sub", array = 4, max = 3 }',
     ["array size 4 is greater than max 3"]),
    ("max of a group", '{ name = "Sub", max = 3 }', ["key 'max' applies to array and map only"]),
    ("dynamic map", '{ name = "Sub", map = true, dynamic = true }',
     ["key 'dynamic' applies to array only"]),
    ("pattern of an array", '{ name = "Sub", array = 1, pattern = "a%1" }',
     ["key 'pattern' applies to map only"]),
    ("pattern without a number", '{ name = "Sub", map = true, pattern = "a" }',
     ["'pattern' must hold %1 once"]),
    ("duplicate child", '{ name = "Sub" }, { name = "Sub" }',
     ["duplicate name 'Sub' in Top, first at groups/G.toml:4"]),
]

_ACTIONS = [
    ("no brief", '{ name = "A" }', ["action 'A' needs the key 'brief'"]),
    ("no name", '{ brief = "B." }', ["an action needs the key 'name'"]),
    ("name", '{ name = "A B", brief = "B." }', ["'A B' is no name of a node"]),
    ("unknown kind", '{ name = "A", brief = "B.", kind = "event" }',
     ["unknown kind 'event', must be one of function, operation"]),
    ("unknown key", '{ name = "A", brief = "B.", code = 1 }', ["unknown key 'code' of action 'A'"]),
]

# Whole groups/G.toml.
_GROUP_FILES = [
    ("syntax", '[Top]\n\nbrief = "B\n', ["groups/G.toml:3: Illegal character '\\n'"]),
    ("no root", '\n[Top]\nbrief = "B."\nchildren = [ { name = "A" } ]\n[A]\nbrief = "B."\n',
     ["groups/G.toml:2: group Top is a child of no group",
      "groups/G.toml:2: no group is marked as the root"]),
    ("two roots", '[Top]\nroot = true\nbrief = "B."\n[Other]\nroot = true\nbrief = "B."\n',
     ["groups/G.toml:4: a second root Other, the first is at groups/G.toml:1"]),
    ("orphan", '[Top]\nroot = true\nbrief = "B."\n\n[Lost]\nbrief = "B."\n',
     ["groups/G.toml:5: group Lost is a child of no group"]),
    ("cycle",
     '[Top]\nroot = true\nbrief = "B."\nchildren = [ { name = "A" } ]\n'
     '[A]\nbrief = "B."\nchildren = [ { name = "B" } ]\n'
     '[B]\nbrief = "B."\nchildren = [\n  { name = "A", array = 0 },\n]\n',
     ["groups/G.toml:11: groups contain each other: A > B > A"]),
    ("root as a child",
     '[Top]\nroot = true\nbrief = "B."\nchildren = [ { name = "A" } ]\n'
     '[A]\nbrief = "B."\nchildren = [ { name = "Top" } ]\n',
     ["groups/G.toml:7: groups contain each other: Top > A > Top",
      "groups/G.toml:7: the root Top can be no child"]),
    ("no brief", '[Top]\nroot = true\n', ["groups/G.toml:1: group Top needs the key 'brief'"]),
    ("unknown key", '[Top]\nroot = true\nbrief = "B."\nchilds = []\n',
     ["groups/G.toml:1: unknown key 'childs' of group Top"]),
    ("name", '[top]\nroot = true\nbrief = "B."\n',
     ["groups/G.toml:1: 'top' is no name of a group"]),
    ("save", '[Top]\nroot = true\nsave = -1\nbrief = "B."\n',
     ["groups/G.toml:1: 'save' must be a whole number of 0 to 2"]),
    ("list of no entries", '[Top]\nroot = true\nbrief = "B."\nproperties = [ "A" ]\n',
     ["groups/G.toml:4: 'properties' must be a list of { … } entries"]),
    ("one namespace",
     '[Top]\nroot = true\nbrief = "B."\n'
     'properties = [ { name = "A", type = "blob", brief = "B." } ]\n'
     'children = [\n  # a } and a "\n  { name = "A" } ]\n'
     'actions = [ { name = "A", brief = "B." } ]\n[A]\nbrief = "B."\n',
     ["groups/G.toml:7: duplicate name 'A' in Top, first at groups/G.toml:4",
      "groups/G.toml:8: duplicate name 'A' in Top, first at groups/G.toml:4"]),
    ("class of the rules", '[Top]\nroot = true\nrules = true\nbrief = "B."\n'
     'children = [ { name = "TopBase" } ]\n[TopBase]\nbrief = "B."\n',
     ["groups/G.toml:6: the class CPgTopBase is taken by the rules of Top"]),
    ("line ends of another system",
     '[Top]\r\nroot = true\r\nbrief = "B."\r\nproperties = [\r\n  { name = "P" } ]\r\n',
     ["groups/G.toml:5: property 'P' needs the key 'brief'",
      "groups/G.toml:5: property 'P' needs the key 'type'"]),
    ("text of several lines",
     '[Top]\nroot = true\nbrief = """a\nb"""\n[Lost]\nbrief = "B."\n',
     ["groups/G.toml:1: 'brief' must not hold control characters",
      "groups/G.toml:5: group Lost is a child of no group"]),
    ("entry inside an entry",
     '[Top]\nroot = true\nbrief = "B."\nproperties = [\n'
     '  { name = "A", type = "int32", default = { a = 1 }, brief = "B." },\n'
     '  { name = "B", type = "int8", brief = "B." } ]\n',
     ["groups/G.toml:5: default {'a': 1} is no int32", "groups/G.toml:6: unknown type 'int8'"]),
    ("several mistakes",
     '[Top]\nroot = true\nbrief = "B."\nproperties = [\n'
     '  { name = "A", type = "int8", brief = "B." },\n\n'
     '  { name = "B", type = "int16", values = [\n 0, 1], default = 2, brief = "B." },\n'
     '  { name = "C", type = "text", brief = "[ {" },\n]\n',
     ["groups/G.toml:5: unknown type 'int8'",
      "groups/G.toml:7: default 2 is not in the value list",
      "groups/G.toml:9: unknown type 'text'"]),
]

# A list of what was released, and what is wrong with the model then.
_RELEASED = [
    ("member gone", "groups/accessors.txt", "Top/Q property int32",
     "groups/accessors.txt:1: 'Top/Q' was released: its entry in the model stays until the next "
     "major version, with removed = true"),
    ("group gone", "groups/accessors.txt", "Sub/Q property int32",
     "groups/accessors.txt:1: the group Sub was released: it stays in the model until the next "
     "major version"),
    ("another type", "groups/accessors.txt", "Top/P property double",
     "groups/G.toml:4: 'Top/P' is a property int32 and was released as property double "
     "(groups/accessors.txt:1), which it stays until the next major version: a new one needs a "
     "name of its own"),
    ("twice in the list", "groups/accessors.txt", "Top/P property int32\nTop/P property int32",
     "groups/accessors.txt:2: 'Top/P' stands here a second time, first at groups/accessors.txt:1"),
    ("no line of the list", "groups/accessors.txt", "Top/P int32",
     "groups/accessors.txt:1: not of the form 'Group/Member kind type'"),
    ("list in other letters", "groups/accessors.txt", b"\xff",
     "groups/accessors.txt:1: the file is not UTF-8"),
    ("value inserted", "enumerations/values.txt", "KW_UNIT NONE\n\nKW_ONOFF ON",
     "enumerations/Z_Units.toml:8: 'OFF' has the number 0, with which 'ON' was released "
     "(enumerations/values.txt:3): released values stay as they are, new ones go to the end"),
    ("last value gone", "enumerations/values.txt", "KW_UNIT NONE VOLT AMPERE",
     "enumerations/Z_Units.toml:1: value 'AMPERE' was released with the number 2 "
     "(enumerations/values.txt:1): it stays until the next major version"),
    ("enumeration gone", "enumerations/values.txt", "KW_GONE A",
     "enumerations/values.txt:1: the enumeration KW_GONE was released: it stays in the model until "
     "the next major version"),
    ("no line of the other list", "enumerations/values.txt", "KW_UNIT, NONE",
     "enumerations/values.txt:1: not of the form 'KW_TYPE VALUE …'"),
]


class DiagnosticsTest(unittest.TestCase):
    maxDiff = None

    def _check(self, path: str, content: str | bytes, wanted: list[str]) -> None:
        with CWorkspace() as workspace:
            workspace.write("enumerations/Z_Units.toml", _UNITS)
            workspace.write(path, content)
            status, _, mistakes = workspace.run()
            self.assertEqual(mistakes, wanted)
            self.assertEqual(status, 1)
            self.assertFalse(workspace.out.exists(), "a faulty model was emitted")

    def _check_rows(self, path: str, frame: str, rows: list) -> None:
        for name, content, texts in rows:
            with self.subTest(name):
                wanted = [f"{path}:4: {text}" for text in texts]
                self._check(path, frame.replace("{}", content), wanted)

    def test_mistake_in_an_enumeration_file_passes(self) -> None:
        for name, content, wanted in _ENUM_FILES:
            with self.subTest(name):
                self._check("enumerations/E.toml", content, wanted)

    def test_mistake_in_a_value_passes(self) -> None:
        self._check_rows("enumerations/E.toml", _VALUE_FRAME, _VALUES)

    def test_mistake_in_a_group_file_passes(self) -> None:
        for name, content, wanted in _GROUP_FILES:
            with self.subTest(name):
                self._check("groups/G.toml", content, wanted)

    def test_mistake_in_a_property_passes(self) -> None:
        self._check_rows("groups/G.toml", _PROPERTY_FRAME, _PROPERTIES)

    def test_mistake_in_a_child_passes(self) -> None:
        self._check_rows("groups/G.toml", _CHILD_FRAME, _CHILDREN)

    def test_mistake_in_an_action_passes(self) -> None:
        self._check_rows("groups/G.toml", _ACTION_FRAME, _ACTIONS)

    def test_change_of_what_was_released_passes(self) -> None:
        for name, path, lines, wanted in _RELEASED:
            with self.subTest(name), CWorkspace() as workspace:
                workspace.write("enumerations/Z_Units.toml", _UNITS)
                entry = f'{{ {_P}type = "int32" }}'
                workspace.write("groups/G.toml", _PROPERTY_FRAME.replace("{}", entry))
                workspace.write(path, lines)
                self.assertEqual(workspace.run()[2], [wanted])

    def test_group_in_two_files_passes(self) -> None:
        with CWorkspace() as workspace:
            for stem in ("A", "B"):
                workspace.write(f"groups/{stem}.toml", '[Top]\nroot = true\nbrief = "B."\n')
            self.assertEqual(workspace.run()[2], [
                "groups/B.toml:1: duplicate group Top, first at groups/A.toml:1"])

    def test_damaged_enumeration_makes_its_users_wrong(self) -> None:
        with CWorkspace() as workspace:
            workspace.write("enumerations/E.toml", '[KW_A]\nbrief = "A."\n')
            workspace.write("groups/G.toml", _PROPERTY_FRAME.replace(
                "{}", f'{{ {_P}type = "KW_A", unit = "VOLT" }}'))
            self.assertEqual(workspace.run()[2],
                             ["enumerations/E.toml:1: enumeration KW_A has no values"])

    def test_file_name_that_takes_a_page_passes(self) -> None:
        for stem in ("index", "enumerations", "My File"):
            with self.subTest(stem):
                self._check(f"groups/{stem}.toml", '[Top]\nroot = true\nbrief = "B."\n',
                            [f"groups/{stem}.toml:1: '{stem}' can not name a model file"])


if __name__ == "__main__":
    unittest.main()
