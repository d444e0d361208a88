# SPDX-License-Identifier: MIT
"""What a user of zelctl types, and what it must answer: text, place of the text, exit status."""

import glob
import json
import os
import re
import tempfile
import unittest

from support import PROJECT, run

CONVERTER = "Setup/Selfalignment/ADConverter"

# name, arguments, exit status, pieces of stdout, pieces of stderr
CASES = [
    ("value with unit", ["get", "Horizontal/Scale"], 0, ["100 ns/div"], []),
    ("trace shows followers", ["set", "Horizontal/Scale", "2 ms/div", "--trace"], 0,
     ["Horizontal/AcquisitionTime: 1 µs → 20 ms", "Horizontal/Position maximum:"], []),
    ("remote name", ["set", f"{CONVERTER}/ADCModeMode", "man"], 0, ["AUTO → MANUAL"], []),
    ("refused with code and choice", ["set", "Horizontal/Scale", "3 ms/div"], 1, [],
     ["code 5 NOT_IN_VALUE_LIST", "1 ns/div"]),
    ("limit is named", ["set", "Horizontal/Position", "1 ks"], 1, [],
     ["ABOVE_MAXIMUM", "1.71798692 s"]),
    ("number beyond the type", ["set", "Setup/Display/GridIntensity", "-1e50"], 1, [],
     ["code 2 BELOW_MINIMUM", "0 % … 100 %"]),
    ("hexadecimal beyond all types", ["set", "Setup/Display/GridIntensity", "0x" + 20 * "F"], 1, [],
     ["code 3 ABOVE_MAXIMUM"]),
    ("result is read only", ["set", "Horizontal/RecordLength", "5"], 1, [], ["READ_ONLY"]),
    ("nearest path", ["get", "Horizontalx/Scale"], 2, [], ["did you mean Horizontal/Scale"]),
    ("item that is missing", ["get", "Vertical/Channel[9]/Enabled"], 2, [], ["4 items"]),
    ("neighbours that changed places", ["set", "Trigger/Type", "RUTN"], 2, [],
     ['no value "RUTN"; did you mean RUNT?']),
    ("foreign unit", ["set", "Horizontal/Position", "5 V"], 2, [], ["V"]),
    ("unknown command", ["frobnicate"], 2, [], ["frobnicate"]),
    ("unknown type", ["enum", "KW_NOTHING"], 2, [], ["KW_NOTHING"]),
    ("missing file", ["recall", "/nowhere/at/all.xml"], 1, [], ["/nowhere/at/all.xml"]),
    ("unknown calculation", ["calc", "samplerat"], 2, [], ["no calculation", "mean samplerate?"]),
    ("no calculation", ["calc"], 2, [], ["a calculation is missing"]),
    ("type in lower case", ["enum", "kw_window_type"], 0, ["KW_WINDOW_TYPE", "FLATTOP"], []),
    ("container", ["get", "Vertical/Channel"], 0, ["has 4 items: [0] … [3]; none is active"], []),
    ("invalid result", ["get", "Vertical/ReferenceCurve/ReferenceCurveAttributes/OriginalScale"],
     0, ["invalid"], []),
    ("other value stands", ["set", "Horizontal/ReferencePoint", "33.4"], 0,
     ["asked 33.4 %, stands 33 %, was 50 % (code 1 WARNING, ", "zelctl why "], []),
    ("present maximum stands", ["set", "Horizontal/ReferencePoint", "99.99"], 0,
     ["stands 100 %", "its present maximum"], []),
    ("report without signature", ["insert", "Setup/Display/UserInterfaceLanguage", "a/b"], 1, [],
     ['"a/b" is no valid name (']),
    ("path without end", ["get", "Horizontal/" * 11000], 2, [], ["121000 characters"]),
    ("value without end", ["set", "Trigger/Type", "A" * 120000], 2, [], ["has no value"]),
    ("commands without end", ["get"] * 30000, 2, [], ['no node "get"']),
    ("file name that is no text", ["save", b"a\xff.xml"], 2, [], ["UTF-8"]),
    ("enumeration", ["enum", "KW_ZEL_CHANNEL"], 0, ["S1", "FFT 1", "NONE"], []),
    ("meaning of an item", ["get", "--info", "Vertical/Channel[2]/Scale"], 0, ["meaning  "], []),
    ("meaning at the root", ["get", "--info", "RemoteState"], 0, ["meaning  "], []),
    ("tree finds", ["tree", "--find", "RBWRatio"], 0, ["RBWRatio"], []),
    ("tree finds a meaning", ["tree", "--find", "key press beeps"], 0, ["Setup/BeepOnKey"], []),
    ("words of name and meaning", ["find", "PRESS", "beepon"], 0,
     ["Setup/BeepOnKey  OFF  Whether every key press beeps."], []),
    ("found elsewhere only", ["find", "beeps", "--in", "Trigger"], 1, [], ["beeps"]),
]

SCALE = "Horizontal/Scale"

# lines of a script, exit status, last line of stdout, piece of stderr
SCRIPTS = [
    ([f"set {SCALE} 1us", f"set {SCALE} 3us", "echo too far"], 1, f"> set {SCALE} 3us", "a.zel:3: "),
    ([f"same {SCALE} 1us"], 1, f"> same {SCALE} 1us", f"a.zel:2: {SCALE} is 100 ns/div, not 1 µs"),
    ([f"same {SCALE} 1e-7"], 0, f"{SCALE} is 100 ns/div", ""),
    (["begin a", f"set {SCALE} 1us", "rollback", f"get {SCALE}"], 0, "100 ns/div", ""),
    (["begin a", f"set {SCALE} 1us", "commit", f"get {SCALE}"], 0, "1 µs/div", ""),
    (["begin a", f"set {SCALE} 1us", f"set {SCALE} 2us", "commit", "undo", f"get {SCALE}"], 0,
     "100 ns/div", ""),
    (["begin a"], 2, 'begin "a"', "a.zel:2: "),
    (["save a.xml", "set RemoteState ON", "diff a.xml"], 0, "no differences", ""),
]


def changed_paths(before, after):
    """Properties that differ in what they show; of a node that is new or gone, itself."""
    def states(answers):
        found = {}
        for answer in answers:
            for node in answer.get("nodes", []) + answer.get("properties", []):
                found.setdefault(node["path"], {}).update(node)
        return found
    old, new = states(before), states(after)
    return {path for path in old.keys() | new.keys()
            if (old.get(path, new.get(path)).get("kind") == "property"
                and old.get(path) != new.get(path))}


def not_at_or_below(paths, told):
    return {path for path in paths
            if not any(path == at or path.startswith((f"{at}/", f"{at}[")) for at in told)}


class Zelctl(unittest.TestCase):
    def run_script(self, text, *options):
        with tempfile.NamedTemporaryFile("wb", suffix=".zel") as script:
            script.write(text if isinstance(text, bytes) else text.encode())
            script.flush()
            return run(*options, "run", script.name)

    def test_answers(self):
        for name, arguments, status, stdout, stderr in CASES:
            with self.subTest(name):
                done = run(*arguments)
                self.assertEqual(done.returncode, status, done.stdout + done.stderr)
                for piece in stdout:
                    self.assertIn(piece, done.stdout)
                for piece in stderr:
                    self.assertIn(piece, done.stderr)
                if status:
                    self.assertEqual(done.stderr.count("zelctl:"), 1, done.stderr)
                    self.assertLess(len(done.stderr), 3000)

    def test_manual_page_lacks_a_command_or_keeps_a_lost_one(self):
        page = os.path.join(PROJECT, "docs", "zelctl.1")
        with open(page, encoding="utf-8") as file:
            commands = file.read().split(".SH COMMANDS")[1].split(".SH")[0]
        listed = run("--help").stdout.split("Subcommands:")[1].split("\n\n")[0]
        self.assertEqual(re.findall(r"^\.B (\w+)$", commands, re.MULTILINE),
                         re.findall(r"^  (\w+)", listed, re.MULTILINE))

    def test_enumeration_has_other_names_than_the_reference_says(self):
        with open(os.path.join(PROJECT, "docs/settings/enumerations.md"), encoding="utf-8") as file:
            types = re.split("^## ", file.read().replace("\\", ""), flags=re.M)[1:]
        types = {lines[0]: [line[2:-2].split(" | ")[:5] for line in lines if re.match(r"\| \d", line)]
                 for lines in map(str.splitlines, types)}
        used = re.findall(r"^\w+", run("enum").stdout, flags=re.M)
        self.assertGreater(len(used), 200)
        done = run("--json", "shell", input="".join(f"enum {name}\n" for name in used))
        for name, answer in zip(used, map(json.loads, done.stdout.splitlines()), strict=True):
            with self.subTest(name):
                self.assertEqual([[str(value["number"]), *(value[kind] for kind in (
                    "display", "short", "remote", "serial"))] for value in answer["values"]],
                    types[name])

    def test_state_is_lost_between_load_and_save(self):
        with tempfile.TemporaryDirectory() as folder:
            for suffix in ("xml", "csv"):
                file = os.path.join(folder, f"a.{suffix}")
                self.assertEqual(run("--save", file, "set", "Horizontal/Scale", "1us").returncode, 0)
                done = run("--load", file, "get", "Horizontal/Scale")
                self.assertEqual(done.stdout.strip().split(" = ")[-1], "1 µs/div")
                self.assertEqual(run("--load", file, "diff", file).returncode, 0)
                self.assertEqual(run("diff", file).returncode, 1)
            # A recall switches the mode, too, which is no setting.
            run("--save", file, "set", "Control/SMMode/OperationMode", "METER")
            differences = json.loads(run("--json", "diff", file).stdout)["differences"]
            self.assertEqual([change["path"] for change in differences],
                             ["Control/SMMode/OperationMode"])

    def test_failure_or_difference_is_saved(self):
        with tempfile.TemporaryDirectory() as folder:
            old, new = (os.path.join(folder, name) for name in ("old.xml", "new.xml"))
            run("--save", old, "set", "Horizontal/Scale", "1us")
            for status, arguments in [(0, ["diff", old, old]), (1, ["diff", old]),
                                      (1, ["set", "Horizontal/Scale", "3us"]),
                                      (2, ["set", "Horizontal/Scale", "x"]),
                                      (2, ["diff", "/nowhere.xml"]), (2, ["run", "/nowhere.zel"])]:
                with self.subTest(arguments):
                    self.assertEqual(run("--save", new, *arguments).returncode, status)
                    self.assertEqual(os.path.exists(new), status == 0)
                    if status == 0:
                        os.remove(new)

    def test_expect_takes_another_answer(self):
        lines = ["expect {} set Horizontal/Scale 3us", "expect {} set Horizontal/Scale 1us"]
        for line, answer in zip(lines, (5, 0)):
            done = run("shell", input="".join(line.format(code) + "\n" for code in range(40)))
            failures = done.stderr.splitlines()
            expected = [code for code in range(40) if code != answer]
            self.assertEqual([int(re.match(r"zelctl: expected code (\d+)", failure)[1])
                              for failure in failures], expected)
            self.assertTrue(all(f"the answer is code {answer} " in failure for failure in failures))

    def test_number_loses_its_sign_or_digits(self):
        texts = [f"{sign}{digits}e{exponent}" for sign in ("", "-") for digits in ("1", "2.75")
                 for exponent in range(-60, 0)]
        lines = [f"set Cursor/Y1 -- {text}\n" for text in texts]
        # A program that reads JSON takes each number for a double.
        whole = [2**53 - 1, 2**53 + 1, 2**63 - 1]
        lines += [f"set Setup/SetupDateTime/RequestedTime {number}\n" for number in whole]
        done = run("--json", "shell", input="".join(lines))
        self.assertEqual([json.loads(line)["new"] for line in done.stdout.splitlines()],
                         [*map(float, texts), whole[0], *map(str, whole[1:])], done.stderr)

    def test_secret_is_shown(self):
        path, secret = "Setup/Wireless/WirelessClient/Passphrase", "hunter2 squared"
        lines = [f'set {path} "{secret}"', f'set --trace {path}/ "{secret}!"', f"get {path}",
                 f"get --info {path}", f'set {path} "{secret * 5}"', f'same {path} "{secret}"',
                 "tree Setup/Wireless", f"why {path}", f"reset {path}", "undo"]
        for options in [[], ["--json"], ["--exact"]]:
            done = run(*options, "shell", input="\n".join(lines))
            self.assertIn("••••••••", done.stdout)
            self.assertNotIn("hunter2", done.stdout + done.stderr)
            done = self.run_script("\n".join(lines[:4]), *options)
            self.assertEqual(done.returncode, 0, done.stderr)
            self.assertNotIn("hunter2", done.stdout + done.stderr)

    def test_refusal_lacks_what_a_program_needs(self):
        # arguments, what the document of the refusal holds
        for arguments, wanted in [
                (["set", "Horizontal/Scale", "3ms"],
                 {"code": 5, "name": "NOT_IN_VALUE_LIST", "status": 1, "asked": 0.003,
                  "minimum": 1e-9, "maximum": 500, "unit": "s/div"}),
                (["set", "Trigger/Type", "Edgex"], {"status": 2, "path": "Trigger/Type"}),
                (["insert", "Vertical/Channel", "9"],
                 {"code": 22, "name": "FIXED_SIZE", "items": ["0", "1", "2", "3"]}),
                (["recall", "/nowhere/at/all.xml"], {"code": 26, "name": "FILE_NOT_READABLE"}),
                (["calc", "nope"], {"status": 2}),
        ]:
            with self.subTest(arguments):
                done = run("--json", *arguments)
                self.assertEqual(done.stderr, "")
                self.assertEqual(len(done.stdout.splitlines()), 1)
                error = json.loads(done.stdout)["error"]
                self.assertEqual({**error, **wanted}, error)
                if "selectable" in error:
                    property_ = json.loads(run("--json", "get", error["path"]).stdout)
                    values = property_["properties"][0]
                    self.assertEqual(error["selectable"], values["selectable"])
                    self.assertGreater(len(error["selectable"]), 13)
                    self.assertIn(values["value"], values["selectable"])

    def test_line_without_sense_takes_long_or_says_little(self):
        # a line, a piece of the error
        for line, piece in [("history " * 30000, "not expected"), ("expect 3 " * 30000, "expect"),
                            ("get " + "A" * 120000, "120000 characters"),
                            ("A" * 120000, "no command"),
                            ("set Horizontal/Position 1e" + "9" * 120000, "ABOVE_MAXIMUM"),
                            (b"save a\xff.xml", "UTF-8")]:
            with self.subTest(line[:30]):
                done = self.run_script(line)
                self.assertEqual(len(done.stderr.splitlines()), 1)
                self.assertIn(":1: ", done.stderr)
                self.assertIn(piece, done.stderr)
                self.assertLess(len(done.stderr), 3000)

    def test_script_that_is_no_file_is_waited_for(self):
        with tempfile.TemporaryDirectory() as folder:
            pipe = os.path.join(folder, "pipe")
            os.mkfifo(pipe)
            for name in [pipe, folder]:
                done = run("run", name)
                self.assertEqual(done.returncode, 2)
                self.assertIn("no regular file", done.stderr)

    def test_words_of_a_line_are_kept_for_the_next(self):
        done = self.run_script('calc window hann 16 --plot\ncalc window hann 16\n'
                               'calc message Engine --signal Gear\ncalc message Engine\n'
                               'set Zoom/Scale 5ns -t\nset Zoom/Scale 2ns\n'
                               'same Zoom/Scale 2 ns\nsame Zoom/Scale "2 ns"\n'
                               'get -i Zoom/Scale\nget Zoom/Scale\n--exact get Zoom/Scale\n'
                               'get Zoom/Scale\nexpect 5 --json set Horizontal/Scale 3us\n'
                               'get Zoom/Scale\n')
        self.assertEqual(done.returncode, 0, done.stderr)
        answers = [part.split("\n", 1) for part in ("\n" + done.stdout).split("\n> ")[1:]]
        by_line = [text.strip() for _, text in answers]
        self.assertIn("Spectrum", by_line[0])
        self.assertNotIn("Spectrum", by_line[1])
        self.assertIn("Gear", by_line[2])
        self.assertNotIn("Gear", by_line[3])
        self.assertIn("Zoom/Factor", by_line[4])
        self.assertNotIn("\n", by_line[5])
        self.assertIn("minimum", by_line[8])
        self.assertEqual(by_line[9:12], ["2 ns/div", "2e-09 s/div", "2 ns/div"])
        self.assertEqual(by_line[13], "2 ns/div")

    def test_trace_misses_or_invents_a_change(self):
        show = "tree\n" + "".join(f"get {path}\n" for path in [
            "Horizontal", "Zoom", "Trigger", "Spectrum", "Setup/Display/UserInterfaceLanguage",
            "Vertical/Channel[0]", "SerialBus/CANBusSettings"])
        language = "Setup/Display/UserInterfaceLanguage"
        writes = ["set Horizontal/Scale 20ms", "set Trigger/Type RUNT", "undo",
                  f"insert {language} a", f"insert {language} b", f"set {language}[a]/Code x",
                  f"rename {language} a c", f"remove {language} b", "undo",
                  "set SerialBus/CANBusSettings/Standard CAN_FD", "set RemoteState ON",
                  "set Vertical/Channel[0]/Enabled OFF", "do Preset", "undo"]
        done = self.run_script(show + "".join(f"{write} -t\n{show}" for write in writes), "--json")
        self.assertEqual(done.returncode, 0, done.stdout[-1000:])
        size = len(show.splitlines()) + 1
        answers = [{"changes": []}, *map(json.loads, done.stdout.splitlines())]
        rounds = [answers[i:i + size] for i in range(0, len(answers), size)]
        for write, before, after in zip(writes, rounds, rounds[1:]):
            with self.subTest(write):
                told = {change["path"] for change in after[0]["changes"]}
                told.add(after[0].get("path", "none"))
                changed = changed_paths(before[1:], after[1:])
                self.assertEqual(not_at_or_below(changed, told), set())
                for change in after[0]["changes"]:
                    if change["what"] in ("value", "minimum", "maximum"):
                        self.assertNotEqual(change["old"], change["new"])

    def test_reset_leaves_something_or_takes_too_much(self):
        done = self.run_script(
            "set Horizontal/Position 3us\nset Zoom/Scale 2ns\nset Trigger/Type RUNT\n"
            "set Horizontal/Scale 1ns\nreset Horizontal\nsame Horizontal/Scale 100ns\n"
            "same Horizontal/Position 0\nsame Zoom/Scale 2ns\nsame Trigger/Type RUNT\n"
            "undo\nsame Horizontal/Scale 1ns\nexpect READ_ONLY reset Horizontal/SampleRate\n"
            "reset Trigger/Type\nexpect OK step Horizontal/Scale 3\nsame Horizontal/Scale 10ns\n"
            "expect WRONG_KIND step Setup/Wireless/WirelessClient/Passphrase\n")
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)

    def test_script_goes_on_or_keeps_what_it_should_not(self):
        for lines, status, stdout, stderr in SCRIPTS:
            with self.subTest(lines), tempfile.TemporaryDirectory() as folder:
                with open(os.path.join(folder, "a.zel"), "w", encoding="utf-8") as script:
                    script.write("# first\n" + "\n".join(lines))
                done = run("run", "a.zel", cwd=folder)
                self.assertEqual(done.returncode, status, done.stderr)
                self.assertEqual(done.stdout.rstrip().splitlines()[-1], stdout)
                self.assertIn(stderr, done.stderr)
        # A shell goes on, from what stood before the script.
        with tempfile.NamedTemporaryFile("w", suffix=".zel") as script:
            script.write("begin all\nset Horizontal/Scale 1us\nset Horizontal/Scale 3us\n")
            script.flush()
            done = run("shell", input=f"run {script.name}\nget Horizontal/Scale\n")
            self.assertEqual(done.stdout.splitlines()[-1], "100 ns/div")

    def test_example_fails(self):
        for path in glob.glob(os.path.abspath(os.path.join(PROJECT, "examples/*.zel"))):
            with self.subTest(path), tempfile.TemporaryDirectory() as folder:
                done = run("run", path, cwd=folder)
                self.assertEqual(done.returncode, 0, done.stderr)


if __name__ == "__main__":
    unittest.main()
