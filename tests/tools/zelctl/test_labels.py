# SPDX-License-Identifier: MIT
"""Label lists: what zelctl says of files, shows of messages, and makes of logs, beside what the guide
of a CAN database tries."""

import csv
import io
import json
import os
import shutil
import subprocess
import tempfile
import unittest

from support import EMULATOR, PROJECT, ZELCTL, run

LABELS = os.path.join(PROJECT, "examples/labels")
ENGINE = os.path.join(LABELS, "engine-can.xml")

DAMAGED = """VERSION ""
NS_:
BS_:
BU_: A
BO_ 100 Good: 8 A
 SG_ Speed : 0|16@1+ (0.25,0) [0|100] "rpm" A
BO_ 200 Bad: 8 A
 SG_ Outside : 60|16@1+ (1,0) [0|1] "" A
"""
ODD = """VERSION ""
NS_:
BS_:
BU_: A
BO_ 100 Odd: 8 A
 SG_ Double : 0|16@1+ (0.25,0) [0|100] "rpm" A
 SG_ Double : 8|16@1+ (0.25,0) [0|100] "rpm" A
"""

# The frames of a log, in what candump writes to files, prints, and .asc has of them.
LOG = """(1436509052.249713) can0 100#1122334455667788
(1436509052.250000) can0 7E8#0211223344556677
(1436509053.250000) vcan10 18F00503#FF11223344556677
(1436509054.000000) can0 333#00
(1436509054.250001) can0 100#R
"""
PRINTED = """ (1436509052.249713)  can0  100   [8]  11 22 33 44 55 66 77 88
 (1436509052.250000)  can0  7E8   [8]  02 11 22 33 44 55 66 77
 (1436509053.250000)  vcan10  18F00503   [8]  FF 11 22 33 44 55 66 77
"""

CSV = """time,bus,id,message,signal,raw,value,unit,text
1436509052.249713,can0,0x100,EngineData,EngineSpeed,8721,2180.25,rpm,
1436509052.249713,can0,0x100,EngineData,EngineTorque,820,410,Nm,
1436509052.249713,can0,0x100,EngineData,CoolantTemperature,85,45,°C,
1436509052.249713,can0,0x100,EngineData,EngineState,6,6,,
1436509052.249713,can0,0x100,EngineData,ThrottlePosition,119,11.9,%,
1436509052.250000,can0,0x7E8,Diagnosis,Page,2,2,,
1436509052.250000,can0,0x7E8,Diagnosis,FaultCode,3351057,3351057,,
1436509052.250000,can0,0x7E8,Diagnosis,Counter,7,7,,
1436509053.250000,vcan10,0x18F00503,Gearbox,Gear,-1,-1,,Reverse
1436509053.250000,vcan10,0x18F00503,Gearbox,OilPressure,529,5.29,bar,
"""

NIBBLES = """  nibble  3    2    1    0
     0    A^   A    A    A
     1    A    A    A    A
     2    A    A    A    A_
     3    B    B    B    B_
     4    B    B    B    B
     5    B^   B    B    B
"""
# name, arguments, exit status, pieces of stdout, pieces of stderr; {…} are files of the folder
CASES = [
    ("with reports", ["check", "{odd.dbc}"], 1,
     ["{odd.dbc}:7:", '"Double": another signal', "1 message, 2 signals; 2 warnings"], []),
    ("missing", ["check", "/nowhere/a.dbc"], 2, ["/nowhere/a.dbc: No such file"], []),
    ("folder", ["check", "{}"], 2, ["has to end in .dbc"], []),
    ("no command", ["shew", ENGINE], 2, [], ["did you mean show?"]),
    ("length of FD", ["show", ENGINE], 0, ["64 FD"], []),
    ("by identifier", ["show", ENGINE, "0x18F00503"], 0, ["Gearbox", "-1 = Reverse"], []),
    ("all pages", ["show", ENGINE, "Diagnosis"], 0,
     ["when Page = 2-5, 8", "Page = 0:\n", "Page = 1:\n", "Page = 2-5, 8:\n"], []),
    ("nibbles", ["show", os.path.join(LABELS, "pressure-sent.xml"), "FastChannel"], 0,
     ["– FastChannel: 3 bytes", NIBBLES], []),
    ("bits of two", ["show", "{odd.dbc}", "100"], 1,
     ["A^/B A/B  A/B  A/B  A/B  A/B  A/B  A/B_\n"], ["shares bits"]),
    ("unknown message", ["show", ENGINE, "EngineDate"], 2, [], ["did you mean EngineData?"]),
    ("unknown multiplexor", ["show", ENGINE, "Diagnosis", "--mux", "Pagr=1"], 2, [],
     ["did you mean Page?"]),
    ("foreign format", ["convert", ENGINE, "{b.txt}"], 2, [], ["has to end in .dbc"]),
    ("foreign bus", ["convert", os.path.join(LABELS, "wiper-lin.xml"), "{b.dbc}"], 2, [],
     ["holds lists of CAN only"]),
    ("onto itself", ["convert", "{odd.dbc}", "{}/./odd.dbc"], 2, [], ["are one file"]),
    ("same", ["diff", ENGINE, ENGINE], 0, ["no differences"], []),
    ("unknown bus", ["load", ENGINE, "--bus", "KAN"], 2, [], ["did you mean CAN?"]),
    ("bus without labels", ["load", ENGINE, "--bus", "SPI"], 2, [], ["CAN, LIN, I2C and SENT"]),
    ("other bus", ["load", ENGINE, "--bus", "LIN"], 2, [], ["is a list of CAN, not of LIN"]),
    ("save nowhere", ["save", "/nowhere/a.csv", "--bus", "CAN"], 2, [], ["/nowhere/a.csv"]),
    ("decode another bus", ["decode", "--list", os.path.join(LABELS, "wiper-lin.xml"), "{a.log}"],
     2, [], ["logs are of CAN"]),
    ("missing log", ["decode", "--list", ENGINE, "/nowhere/a.log"], 2, [], ["No such file"]),
    ("log that is a folder", ["decode", "--list", ENGINE, "{}"], 2, [], ["Is a directory"]),
    ("no log", ["decode", "--list", ENGINE, "{odd.dbc}"], 2, [], ["has no frames"]),
    ("unknown signal", ["decode", "--list", ENGINE, "{a.log}", "--signal", "EngineSped"], 2, [],
     ["did you mean EngineSpeed?"]),
    ("unknown filter", ["decode", "--list", ENGINE, "{a.log}", "--message", "Gearbx"], 2, [],
     ["did you mean Gearbox?"]),
    ("CSV", ["decode", "--list", ENGINE, "{a.log}", "--csv"], 0, [CSV],
     ["of 5 frames left out: 1 not in the list, 1 remote"]),
    ("printed", ["decode", "--list", ENGINE, "{printed}", "--csv"], 0, [CSV], []),
    ("lines that are none", ["decode", "--list", ENGINE, "{half.log}", "--csv"], 1,
     ["1436509052.249713,can0,0x100"], ["{half.log}:2: 1 line not understood"]),
    ("two forms", ["--json", "decode", "--list", ENGINE, "{a.log}", "--csv"], 2,
     ["exclude each other"], []),
]


class Labels(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        for name, text in [("damaged.dbc", DAMAGED), ("odd.dbc", ODD), ("a.log", LOG),
                           ("printed", PRINTED), ("half.log", LOG[:60])]:
            with open(self.path(name), "w", encoding="utf-8") as file:
                file.write(text)

    def path(self, name):
        return os.path.join(self.folder, name)

    def fill(self, text):
        """Names in braces become files of the folder."""
        for name in ["damaged.dbc", "odd.dbc", "a.log", "printed", "half.log", "b.csv", "b.txt",
                     "b.dbc", ""]:
            text = text.replace("{" + name + "}", self.path(name) if name else self.folder)
        return text

    def labels(self, *arguments, **options):
        return run("labels", *arguments, **options)

    def decode(self, *arguments, **options):
        return self.labels("decode", "--list", ENGINE, *arguments, **options)

    def test_answers(self):
        for name, arguments, status, stdout, stderr in CASES:
            with self.subTest(name):
                done = self.labels(*map(self.fill, arguments))
                self.assertEqual(done.returncode, status, done.stdout + done.stderr)
                for piece in stdout:
                    self.assertIn(self.fill(piece), done.stdout)
                for piece in stderr:
                    self.assertIn(self.fill(piece), done.stderr)

    def test_documents_lack_something(self):
        shown = json.loads(run("--json", "labels", "show", ENGINE, "Diagnosis").stdout)
        signals = {signal["name"]: signal for signal in shown["messages"][0]["signals"]}
        self.assertEqual(signals["FaultCode"]["selectedBy"], [[2, 5], [8, 8]])
        self.assertEqual(signals["Page"]["labels"], {"0": "Supply", "1": "Fuel"})
        checked = run("--json", "labels", "check", self.path("damaged.dbc"))
        self.assertEqual((checked.returncode, checked.stderr), (2, ""))
        finding = json.loads(checked.stdout)["findings"][0]
        self.assertEqual((finding["line"], finding["type"]), (8, "error"))
        refused = json.loads(run("--json", "labels", "show", self.path("damaged.dbc")).stdout)
        self.assertEqual(refused["error"]["findings"], [finding])
        self.assertEqual(refused["error"]["name"], "FILE_NOT_UNDERSTOOD")

    def test_failed_conversion_touches_a_file(self):
        shutil.copy(ENGINE, self.path("kept.csv"))
        for arguments in [(self.path("damaged.dbc"), self.path("kept.csv")),
                          (ENGINE, "/nowhere/b.xml")]:
            self.assertEqual(self.labels("convert", *arguments).returncode, 2)
        with open(ENGINE, "rb") as first, open(self.path("kept.csv"), "rb") as second:
            self.assertEqual(first.read(), second.read())

    def test_difference_is_missed(self):
        with open(ENGINE, encoding="utf-8") as file:
            text = file.read()
        # what is changed in the file, and the lines that say so
        for before, after, lines in [
                ('Factor="0.25"', 'Factor="0.5"', ["0x100 EngineData/EngineSpeed: factor 0.25 → 0.5"]),
                ('"Gear"', '"Stage"', ["0x18F00503 Gearbox/Gear: name Gear → Stage"]),
                ('"Gearbox"', '"Box"', ["0x18F00503 Gearbox: name Gearbox → Box"]),
                ('"0x600"', '"0x601"', ["0x600 WakeUp: identifier 0x600 → 0x601"]),
                ('Neutral', 'Idle', ["0x18F00503 Gearbox/Gear: label 0 Neutral → Idle"]),
        ]:
            with self.subTest(after):
                self.assertIn(before, text)
                with open(self.path("b.xml"), "w", encoding="utf-8") as file:
                    file.write(text.replace(before, after, 1))
                done = self.labels("diff", ENGINE, self.path("b.xml"))
                self.assertEqual((done.returncode, done.stdout.splitlines(), done.stderr),
                                 (1, lines, ""))
                back = json.loads(run("--json", "labels", "diff", self.path("b.xml"), ENGINE).stdout)
                self.assertEqual(len(back["differences"]), 1)

    def test_list_is_lost_between_file_and_settings(self):
        settings = self.path("settings.xml")
        loaded = run("--save", settings, "labels", "load", ENGINE, "--bus", "CAN")
        self.assertEqual(loaded.returncode, 1, loaded.stderr)
        self.assertIn("senders", loaded.stderr)
        saved = run("--load", settings, "labels", "save", self.path("b.csv"), "--bus", "CAN")
        self.assertEqual(saved.returncode, 0, saved.stderr)
        again = run("--save", self.path("again.xml"), "labels", "load", self.path("b.csv"))
        self.assertEqual(again.returncode, 0, again.stderr)
        self.assertIn("no differences", run("diff", settings, self.path("again.xml")).stdout)

    def test_script_stops_or_undo_takes_half(self):
        script = self.path("a.zel")
        with open(script, "w", encoding="utf-8") as file:
            file.write(f"labels load {ENGINE}\n"
                       "same SerialBus/CANBusSettings/LabelListSettings/NumberOfLabels 5\n"
                       "undo\n"
                       "same SerialBus/CANBusSettings/LabelListSettings/NumberOfLabels 0\n"
                       f"expect FILE_NOT_UNDERSTOOD labels load {self.path('damaged.dbc')}\n")
        done = run("run", script)
        self.assertEqual(done.returncode, 0, done.stderr)

    def test_object_of_a_frame_has_what_is_no_number(self):
        done = run("--json", "labels", "decode", "--list", ENGINE,
                   input="can0  7E8   [8]  01 00 00 00 00 C0 7F 00\n")
        frame = json.loads(done.stdout)
        self.assertIsNone(frame["time"])
        self.assertIsNone({s["name"]: s for s in frame["signals"]}["LambdaSensor"]["value"])

    def test_filter_takes_too_much_or_too_little(self):
        for arguments, wanted in [(["--message", "0x100"], {"EngineData"}),
                                  (["--message", "Gearbox", "--message", "EngineData"],
                                   {"EngineData", "Gearbox"}),
                                  (["--signal", "Gear"], {"Gearbox"}),
                                  (["--signal", "Gearbox/Gear", "--signal", "Page"],
                                   {"Gearbox", "Diagnosis"}),
                                  (["--message", "EngineData", "--signal", "Gear"], set())]:
            with self.subTest(arguments):
                done = self.decode("--csv", self.path("a.log"), *arguments)
                rows = list(csv.DictReader(io.StringIO(done.stdout)))
                self.assertEqual({row["message"] for row in rows}, wanted)
                if "--signal" in arguments:
                    self.assertLessEqual({row["signal"] for row in rows}, {"Gear", "Page"})

    def test_lines_wait_for_more(self):
        with subprocess.Popen([*EMULATOR, ZELCTL, "labels", "decode", "--list", ENGINE, "--csv"],
                              stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, text=True, bufsize=1) as process:
            for line, wanted in zip(LOG.splitlines(True)[1:3], ["Diagnosis,Page", "Gearbox,Gear"]):
                process.stdin.write(line)
                process.stdin.flush()
                while wanted not in process.stdout.readline():
                    pass
            process.stdout.close()
            process.stdin.write(LOG)
            _, problems = process.communicate(timeout=60)
        self.assertEqual((process.returncode, problems.count("zelctl")), (0, 0), problems)

    def test_can_utils_write_what_is_not_read(self):
        if shutil.which("log2asc") is None:
            self.skipTest("without can-utils: scripts/setup.sh installs them")
        with open(self.path("a.asc"), "w", encoding="utf-8") as file:
            subprocess.run(["log2asc", "-I", self.path("a.log"), "can0", "vcan10"], stdout=file,
                           check=True, timeout=60)
        wanted = [line.split(",")[3:] for line in CSV.splitlines()]
        done = self.decode("--csv", self.path("a.asc"))
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual([line.split(",")[3:] for line in done.stdout.splitlines()], wanted)

    def test_completion_does_not_know_lists(self):
        for line, wanted in [("labels sh", "show"), (f"labels show {ENGINE} Gear", "Gearbox"),
                             (f"labels decode --list {ENGINE} --message Diag", "Diagnosis"),
                             ("labels load a.dbc --bus L", "LIN"),
                             (f"labels check {LABELS}/engine-can.x", ENGINE),
                             ("labels decode --sig", "--signal")]:
            with self.subTest(line):
                self.assertEqual(run("complete", "--", line).stdout.split(), [wanted])


if __name__ == "__main__":
    unittest.main()
