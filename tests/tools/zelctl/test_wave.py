# SPDX-License-Identifier: MIT
"""Records in files: what zelctl wave reads, writes and shows, beside readers of others."""

import json
import os
import re
import struct
import tempfile
import unittest
import wave
import xml.etree.ElementTree as ElementTree

from support import PROJECT, run

BURST = os.path.join(PROJECT, "examples/waves/burst.csv")
CORPUS = os.path.join(PROJECT, "tests/fuzz/corpus/RecordFiles")


def load_reader():
    """The reader that the document shows."""
    with open(os.path.join(PROJECT, "docs/record-files.md"), encoding="utf-8") as file:
        code = re.search(r"```python\n(.*?)```", file.read(), flags=re.S).group(1)
    names = {}
    exec(code, names)  # pylint: disable=exec-used
    return names["read_record"]


READ_RECORD = load_reader()

# A table, and what it becomes: start, interval, channels, units, values.
TABLES = [
    ("time (s),C1 (V)\n0,1\n1,2\n", 0, 1, [0], [28], [[1, 2]]),
    ("time [ms];C2 [mV];other\n-0,5;1,5;7\n0;2,5;8\n0,5;;nan\n", -0.5e-3, 0.5e-3, [1, 0], [28, 65],
     [[1.5e-3, 2.5e-3, None], [7, 8, None]]),
    ("\ufeffTime\tA\n(us)\t(A)\n10\t1e3\n20\t-1E-3\n", 1e-5, 1e-5, [0], [42], [[1e3, -1e-3]]),
    ("# made elsewhere\n\n1\n2\n3\n", 0, 1, [0], [65], [[1, 2, 3]]),
    ("0.25,5,\r\n0.5,6,\r\n", 0.25, 0.25, [0], [65], [[5, 6]]),
    ('"t","R1 (Ω)"\n"1","+2"\n"3","4"\n', 1, 2, [5], [53], [[2, 4]]),
    ("M1\n5\n", 0, 1, [4], [65], [[5]]),
    ("x,C1\n0,1\n0.001,2\n0.003,3\n0.004,4\n0.005,5\n0.007,6\n0.008,7\n", None, None, [], [], []),
]

# A table that is refused: where, and with which words.
BAD_TABLES = [
    ("", "", "the file is empty"),
    ("\n\n", "", "has no lines"),
    ("time,C1\n", ":2:1: ", "no numbers behind the names"),
    ("time (s)\n1\n", ":1:1: ", "a time only"),
    ("a,b\n1,2\n3\n", ":3:1: ", "1 cells instead of 2"),
    ("a;b\n1;2\n3;4,5,6\n", ":3:3: ", '"4,5,6" is no number'),
    ("t,b\n0,2\n1,x\n", ":3:3: ", '"x" is no number'),
    ("t,b\n0,2\n1,inf\n", ":3:3: ", "infinite"),
    ("t,b\n0,2\n1,1e39\n", ":3:3: ", "beyond what a float holds"),
    ("t,b\n0,2\n,3\n", ":3:1: ", "there is no time"),
    ("t,b\n1,2\n1,3\n", ":3:1: ", "does not rise"),
    ("t,b\n0,2\n1,3\n2,4\n4,5\n", ":3:1: ", "by the interval of 1.333333 s"),
    ("t," + ",".join(f"b{i}" for i in range(17)) + "\n" + ",".join("1" * 18) + "\n", ": ",
     "17 traces"),
    ("t,b\n0,\0\n", ": ", "no table"),
]


class Wave(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def path(self, name):
        return os.path.join(self.folder, name)

    def write(self, name, content):
        with open(self.path(name), "wb") as file:
            file.write(content if isinstance(content, bytes) else content.encode())
        return self.path(name)

    def read(self, name):
        with open(self.path(name), "rb") as file:
            return file.read()

    def convert(self, source, name, *words, status=0):
        done = run("wave", "convert", source, self.path(name), *words)
        self.assertEqual(done.returncode, status, done.stderr)
        return self.path(name)

    def refuse(self, source, *pieces, name="x.rec", words=()):
        done = run("wave", "convert", source, self.path(name), *words)
        self.assertEqual((done.returncode, done.stdout), (2, ""))
        for piece in pieces:
            self.assertIn(piece, done.stderr)
        self.assertFalse(os.path.exists(self.path(name)))

    def assert_close(self, found, expected):
        self.assertEqual(len(found), len(expected))
        for one, other in zip(found, expected):
            if other is None:
                self.assertIsNone(one)
            else:
                self.assertAlmostEqual(one, other, delta=1e-7 * abs(other))

    def require_sound(self):
        if "without libsndfile" in run("wave", "convert", BURST, self.path("try.wav")).stderr:
            self.skipTest("built without libsndfile")

    def test_table_is_read_otherwise(self):
        for text, start, interval, channels, units, values in TABLES[:-1]:
            with self.subTest(text):
                record = READ_RECORD(self.convert(self.write("a.csv", text), "a.rec"))
                traces = record["traces"]
                self.assertEqual([trace["channel"] for trace in traces], channels)
                self.assertEqual([trace["unit"] for trace in traces], units)
                for trace, expected in zip(traces, values):
                    self.assertEqual((trace["format"], trace["start"], trace["interval"]),
                                     (1, start, interval))
                    self.assert_close(trace["values"], expected)

    def test_table_is_taken_or_refused_without_a_place(self):
        for text, place, words in BAD_TABLES:
            with self.subTest(text):
                file = self.write("bad.csv", text)
                self.refuse(file, file + place, words)

    def test_interval_that_is_said_does_not_count(self):
        text = TABLES[-1][0]
        file = self.write("a.csv", text)
        self.refuse(file, "--interval")
        record = READ_RECORD(self.convert(file, "a.rec", "--interval", "2ms"))
        self.assertEqual(record["traces"][0]["interval"], 2e-3)
        self.refuse(file, "--interval", name="y.rec", words=["--interval", "0"])

    def test_format_loses_what_it_can_hold(self):
        first = self.convert(BURST, "burst.rec")
        self.assertEqual(len(READ_RECORD(first)["traces"][0]["values"]), 400)
        table = self.convert(first, "burst.csv")
        self.convert(table, "again.rec")
        self.assertEqual(self.read("again.rec"), self.read("burst.rec"))
        self.convert(first, "burst.tsv")
        self.convert(self.path("burst.tsv"), "tabs.rec")
        self.assertEqual(self.read("tabs.rec"), self.read("burst.rec"))
        self.require_sound()
        self.convert(first, "burst.wav")
        self.convert(self.path("burst.wav"), "sound.rec")
        self.assertEqual(self.read("sound.rec"), self.read("burst.rec"))

    def test_counts_of_16_bits_are_spoilt(self):
        source = os.path.join(CORPUS, "words")
        record = READ_RECORD(source)
        self.assertEqual((record["number"], record["source"], record["mask"]), (3, 2, 1))
        self.assertEqual(record["traces"][0]["values"][:2], [None, -32767 * 0.01 + 0.5])
        self.convert(source, "same.rec")
        with open(source, "rb") as file:
            self.assertEqual(self.read("same.rec"), file.read())
        self.require_sound()
        self.convert(self.convert(source, "a.wav"), "back.rec")
        back = READ_RECORD(self.path("back.rec"))
        self.assertEqual([back[name] for name in ["number", "time", "counter", "mask", "source"]],
                         [3, 1700000000000000000, 42, 1, 2])
        self.assertEqual(back["traces"], record["traces"])

    def test_wave_module_of_python_hears_something_else(self):
        self.require_sound()
        file = self.convert(os.path.join(CORPUS, "words"), "a.wav")
        with wave.open(file) as sound:
            self.assertEqual((sound.getnchannels(), sound.getsampwidth(), sound.getframerate()),
                             (1, 2, 1000000))
            frames = sound.readframes(sound.getnframes())
        self.assertEqual(list(struct.unpack("<70h", frames)), list(range(-32768, -32768 + 70)))

    def test_sound_of_others_is_not_what_they_wrote(self):
        self.require_sound()
        for width, code in [(1, "B"), (2, "<h"), (4, "<i")]:
            with self.subTest(width):
                full = 1 << (8 * width - 1)
                numbers = [0, full // 2, -full // 4, full - 1, -full]
                stored = [number + 128 if width == 1 else number for number in numbers]
                with wave.open(self.path("s.wav"), "wb") as sound:
                    sound.setparams((2, width, 44100, 0, "NONE", None))
                    sound.writeframes(b"".join(struct.pack(code, n) for n in stored for _ in "LR"))
                self.convert(self.path("s.wav"), "s.rec", status=1 if width == 4 else 0)
                traces = READ_RECORD(self.path("s.rec"))["traces"]
                self.assertEqual([trace["channel"] for trace in traces], [0, 1])
                for trace in traces:
                    self.assert_close(trace["values"], [number / full for number in numbers])
                    self.assertEqual(trace["interval"], 1 / 44100)

    def test_sound_with_what_it_can_not_hold_is_written(self):
        self.require_sound()
        odd = self.convert(self.write("odd.csv", "t,a\n0,1\n0.0003,2\n0.0006,3\n"), "odd.rec")
        done = run("wave", "convert", odd, self.path("odd.wav"))
        self.assertEqual(done.returncode, 1)
        self.assertIn("no whole number of samples per second", done.stderr)
        self.convert(self.path("odd.wav"), "odd2.rec")
        self.assertEqual(self.read("odd2.rec"), self.read("odd.rec"))
        slow = self.write("slow.csv", "t,a\n0,1\n10,2\n")
        self.refuse(slow, "1 to 2147483647", name="x.wav")
        fast = self.convert(slow, "fast.rec", "--interval", "100ps")
        self.refuse(fast, "1 to 2147483647", name="x.wav")
        for name, words in [("pairs-and-a-place-without-points", "pairs of extremes"),
                            ("frames", "frames of a bus")]:
            self.refuse(os.path.join(CORPUS, name), words, "--channel", name="x.wav")
        self.refuse(os.path.join(CORPUS, "frames"), "frames of a bus", name="x.csv")

    def test_damaged_sound_is_read(self):
        self.require_sound()
        whole = self.convert(os.path.join(CORPUS, "words"), "a.wav")
        content = self.read("a.wav")
        self.assertLess(len(content), 700)
        for length in [0, 3, 11, 12, 20, 35, 40, *range(44, len(content), 37), len(content) - 1]:
            with self.subTest(length):
                self.refuse(self.write("cut.wav", content[:length]), "cut.wav")
        promises = content.replace(b"data" + struct.pack("<I", 140), b"data" + b"\xff\xff\xff\x7f")
        self.assertNotEqual(promises, content)
        self.refuse(self.write("huge.wav", promises), "2147483647 bytes begins there")
        self.refuse(self.write("no.wav", "time,C1\n0,1\n"), "can not be read as a WAV file")
        self.assertTrue(os.path.exists(whole))

    def test_damaged_record_is_read(self):
        self.convert(BURST, "burst.rec")
        content = self.read("burst.rec")
        for length in [8, 71, 72, 103, 104, 300, len(content) - 1]:
            self.refuse(self.write("cut.rec", content[:length]), f"cut.rec: byte {length}: ",
                        "cut off")
        turned = bytearray(content)
        turned[1000] ^= 1
        self.refuse(self.write("turned.rec", bytes(turned)), "its digest is another")
        newer = bytearray(content)
        newer[8] = 2
        self.refuse(self.write("newer.rec", bytes(newer)), "version 2.0, and 1.x can be read here")
        self.refuse(self.write("text.rec", "time,C1\n0,1\n"), "byte 0: this is no record file")

    def test_what_is_no_file_of_records_is_read(self):
        self.refuse(self.path("none.rec"), "none.rec can not be read")
        self.refuse(self.folder, "no regular file")
        self.refuse("/dev/zero", "no regular file")
        self.refuse(self.write("blob", b"\x7fELF\0\0"), "no record file, no WAV file and no table")
        self.refuse(BURST, ".rec, .wav, .csv", name="x.mp3")
        self.refuse(BURST, 'no trace "C3"; it has C1, C2', words=["--channel", "C3"])
        self.refuse(BURST, "can not be written", name="none/x.csv")

    def test_chosen_traces_are_others(self):
        record = READ_RECORD(self.convert(BURST, "one.rec", "--channel", "c2,C1"))
        self.assertEqual([trace["channel"] for trace in record["traces"]], [1, 0])

    def test_digital_lines_do_not_come_back(self):
        source = self.convert(os.path.join(CORPUS, "floats-and-lines"), "a.rec")
        done = run("wave", "convert", source, self.path("a.csv"))
        self.assertIn("other points", done.stderr)
        self.convert(source, "lines.csv", "--channel", "D0")
        self.assertEqual(self.read("lines.csv").split(b"\n")[0].decode(),
                         "time (s)," + ",".join(f"D{line}" for line in range(8)))
        record = READ_RECORD(self.convert(self.path("lines.csv"), "lines.rec"))
        self.assertEqual([(trace["format"], trace["values"]) for trace in record["traces"]],
                         [(3, list(range(9)))])

    def test_figures_are_not_those_of_the_points(self):
        file = self.write("a.csv", "time (us),C1 (mV),M1\n-1,-5,1\n0,,1\n1,2.5,1\n2,2,1\n")
        trace = json.loads(run("wave", "info", file, "--json").stdout)["traces"][0]
        self.assertEqual([trace[name] for name in ["trace", "unit", "points", "invalid", "format"]],
                         ["C1", "V", 4, 1, "float"])
        self.assertAlmostEqual(trace["minimum"], -5e-3)
        self.assertAlmostEqual(trace["maximum"], 2.5e-3)
        self.assertEqual(run("wave", "info", file).stdout.splitlines()[1].split(),
                         ["C1", "float", "4", "1", "µs", "-1", "µs", "-5", "mV", "2.5", "mV", "1"])

    def test_columns_lose_a_peak(self):
        values = [0.0] * 5000
        values[1234] = 7.0
        values[4321] = -3.0
        file = self.write("peaks.csv", "C1\n" + "\n".join(map(str, values)))
        shown = run("wave", "show", file, "--columns", "10", "--json")
        columns = json.loads(shown.stdout)["columns"]["C1"]
        self.assertEqual([column[1] for column in columns], [7.0 if i == 2 else 0 for i in range(10)])
        self.assertEqual([column[0] for column in columns], [-3.0 if i == 8 else 0 for i in range(10)])
        part = run("wave", "show", file, "--columns", "2", "--json", "--from", "1200s", "--to", "1300s")
        self.assertEqual(json.loads(part.stdout)["columns"]["C1"], [[0, 7], [0, 0]])

    def test_drawing_is_not_what_was_measured(self):
        lines = run("wave", "show", self.write("a.csv", "t,C1\n0,0\n1,1\n2,\n3,0\n4,0\n")).stdout
        drawn = [line[8:] for line in lines.splitlines() if line[7:8] in ("│", "┤")]
        self.assertEqual(len(drawn), 12)
        gap = {line[25:46].strip() for line in drawn}
        self.assertEqual(gap, {""}, "an invalid point is drawn")
        svg = self.path("burst.svg")
        done = run("wave", "show", BURST, "--svg", svg)
        self.assertEqual(done.returncode, 0)
        root = ElementTree.parse(svg).getroot()
        curves = root.findall(".//{http://www.w3.org/2000/svg}polyline")
        self.assertEqual([len(curve.get("points").split()) for curve in curves], [2 * 636] * 2)

    def test_frames_are_not_listed(self):
        file = os.path.join(CORPUS, "frames")
        shown = run("wave", "show", file)
        self.assertEqual(shown.stdout.splitlines()[3:],
                         ["", "S1", "500 ms  CAN  0x123  00 01 02 03 04 05 06 07  FD"])
        frames = json.loads(run("wave", "show", file, "--json").stdout)["frames"]
        self.assertEqual(frames, [{"bus": "CAN", "data": "00 01 02 03 04 05 06 07", "flags": "FD",
                                   "id": "0x123", "time": 0.5}])

    def test_stretch_that_is_none_is_drawn(self):
        for words in [["--from", "1s", "--to", "0"], ["--from", "nan"], ["--to", "inf"],
                      ["--columns", "-1"], ["--columns", "1000000"], ["--from", "x"],
                      ["--interpolation", "NO"]]:
            with self.subTest(words):
                done = run("wave", "show", BURST, *words)
                self.assertEqual((done.returncode, done.stdout), (2, ""))


if __name__ == "__main__":
    unittest.main()
