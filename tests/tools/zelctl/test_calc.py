# SPDX-License-Identifier: MIT
"""The calculations: each function of the library can be called, and answers what it should."""

import cmath
import glob
import json
import math
import os
import re
import shlex
import tempfile
import unittest
import xml.etree.ElementTree

from support import PROJECT, run

# Functions of the headers that no calculation calls, and why.
EXCEPTIONS = {
    "SetMinMax": "writes limits of a property; \"set\" and the rules do that",
    "ReportRefusedLimit": "private",
}
# The label classes also store what they are given: reading and writing a field calculates nothing.
ACCESSOR = re.compile(r"^(get(Name|IdentifierFormat|Identifier|Length|Signals|Count|StartBit|"
                      r"BitLength|Endianness|ValueType|Factor|Offset|Minimum|Maximum|Unit|"
                      r"SignalEnumValues|CurrentEnumIndex|CurrentEnumLabel)|setParameters|setCount|"
                      r"setValueType|hasSignal|updateSignalValueType)$")

# arguments, pieces of the answer
ANSWERS = [
    ("decimation 20ms --acquisition PEAK", ["sample budget 62.5 kSa", "decimation 400",
                                            "effective decimation 1600"]),
    ("slowdecimation 2s --acquisition PEAK", ["analog decimation 40000",
                                              "digital decimation 40000"]),
    ("decimationfactor 25MSa 125kSa", ["factor 200", "limited no"]),
    ("decimationfactor 1e16 1", ["factor 1e+16", "decimation 2e+09", "limited yes"]),
    ("historytraces 1000", ["traces 1000"]),
    ("interpolation 125 1250", ["interpolation factor 10"]),
    ("trace 125 100ns 1250", ["trace length 1.25 kSa", "hardware interpolation yes",
                              "resolution 80 ps"]),
    ("trace 1250 1us 1250 --hardware", ["hardware interpolation yes"]),
    ("pretrigger 1us 1250 -0.5us", ["625 Sa"]),
    ("boundaries 10us --reference 20%", ["left -2 µs", "right 8 µs"]),
    ("zoomboundaries 2us --center 3us", ["left 2 µs", "right 4 µs"]),
    ("rightboundary 0s 1.234567895s", ["right 1.2345679 s"]),
    ("zoom 1250 50 --minimum 10", ["points 25 Sa", "possible yes"]),
    ("scale 300mV/div", ["next highest 400 mV/div", "next lowest 200 mV/div"]),
    ("scale 2.5V --divisions 8", ["smallest scale 400 mV/div"]),
    ("screen 200mV/div --offset 1V --position 2", ["height 1.6 V", "middle 600 mV"]),
    ("topbottom 3V -1V", ["height 4 V", "middle 1 V"]),
    ("fftsize NARROW", ["points 8192"]),
    ("magnitude --inverse 0dBm DBM", ["magnitude 223.606798 mV"]),
    ("abs 3 -4", ["magnitude 5"]),
    ("frequencyrange 1.25GSa/s 200MHz", ["start 0 Hz", "stop 200 MHz", "center 100 MHz"]),
    ("fftsource 'FFT 2'", ["source C2", "analog channel C2"]),
    ("inputunit CURRENT_1_V_PER_A", ["input unit CURRENT"]),
    ("ddc 100kHz 10.7MHz", ["decimation 8240", "coarse frequency 9.765625 MHz",
                            "CIC rate register 102", "coarse phase register 2"]),
    ("ddctable 1kHz", ["row -1"]),
    ("ddcratio 100kHz", ["CIC stage 103", "FIR stage 16"]),
    ("cicrate 8250", ["CIC stage 103"]),
    ("resistance PT1000 100", ["1.38505", "kΩ"]),
    ("probe USER --factor 2.5 --unit LEVEL_A", ["factor 2.5", "measured unit LEVEL_A"]),
    ("meterprobe FREQ VOLTAGE_10_TO_1", ["factor 10", "unit METER_V",
                                         "unit of the reading FREQ_HZ"]),
    ("probefactor 0.1 LEVEL_V_A", ["multiplier 10"]),
    ("probefactorunit LEVEL_A", ["unit LEVEL_V_A"]),
    ("calfrequency 5MHz", ["selection DIV_1024", "frequency 4.8828125 MHz"]),
    ("lowpassgain STEP_0", ["gain -0.134 dB"]),
    ("overload", ["1.1"]),
    ("meterrange DC_VOLT 10V", ["lower limit -10 V", "divider 0.1", "current path NONE"]),
    ("meterblock AC_VOLT", ["name VOLT:AC", "converter path 1"]),
    ("voltagepath AC_VOLT 100V", ["factor 100", "path code 10"]),
    ("testcurrent 1_MILLI_A", ["current 1.004016 mA"]),
    ("rangescale 10V", ["scale 5.25 V/div"]),
    ("rangescale 300V --counter", ["scale 109.5 V/div"]),
    ("meterrate", ["1 MSa/s"]),
    ("channel C2", ["analog yes", "digital no", "as analog channel C2"]),
    ("channel S1", ["analog no", "serial bus yes", "hardware input no", "acquired yes"]),
    ("trigger RUNT", ["two analog levels yes", "logic no"]),
    ("trigger EDGE --channel D0", ["logic no", "logic trigger unit yes"]),
    ("samplesize INT24", ["3 B"]),
    ("transfersize REAL64", ["8 B"]),
    ("raw 2500 --bits 16 --factor 0.25", ["0010011100010000"]),
    ("physical 11110110 --type SIGNED_INT", ["value -10"]),
    ("signal Gear 8 --label 0=Park 1=Drive --raw 1", ["key 0008Gear", "label Drive"]),
    ("signal Gear 8 --label 0=Park --raw 1", ["label none"]),
    ("message Engine --signal Speed:rpm Gear", ["line 1 Engine:", "line 2 - Speed (rpm)",
                                                "line 3 - Gear"]),
]

# F. J. Harris, "On the use of windows for harmonic analysis", 1978: highest side lobe in dB,
# equivalent noise bandwidth in bins, coherent gain.
WINDOWS = {
    "RECT": (-13.3, 1.00, 1.00),
    "HANN": (-31.5, 1.50, 0.50),
    "HAMMING": (-42.7, 1.36, 0.54),
    "BLACKMAN": (-58.1, 1.73, 0.42),
}

# arguments that can not be meant
BAD = ["window HANN 1", "window HANN 65537", "window HANN many", "window NOTHING 16",
       "window HANN 2 --plot", "window HANN --plot", "window HANN 16 --svg /nowhere/w.svg",
       "decimationfactor 1 -1", "cicrate", "metertable 7"]


def read_functions():
    """Names of the functions that the headers of the calculations declare."""
    names = set()
    # Whole lists, their files and logs are for the commands "labels", not for calculations.
    for headers in ("IKWFunctionZELHelpers/*.h", "MeterBase/*.h", "LabelList/LabelListConversion.h",
                    "LabelList/LabelListMessage.h", "LabelList/LabelListSignal.h"):
        for header in glob.glob(os.path.join(PROJECT, "ifc", headers)):
            with open(header, encoding="utf-8") as file:
                text = re.sub(r"/\*.*?\*/|//[^\n]*", "", file.read(), flags=re.S)
            while re.search("<[^<>\n]*>", text):
                text = re.sub("<[^<>\n]*>", "", text)
            # Bodies are indented deeper; what has no type before its name is a constructor.
            names |= set(re.findall(r"^(?: {4})?(?! |return|explicit)[\w:&* ]+[ &](\w+)\(", text, flags=re.M))
    return names


def calculations():
    return json.loads(run("--json", "calc", "functions").stdout)["calculations"]


def window_weights(name, length):
    figures = json.loads(run("--json", "calc", "window", name, str(length)).stdout)["result"]
    return [figures[f"w[{k}]"]["value"] for k in range(length)]


def get_level(weights, offset):
    """Magnitude of a window's spectrum in dB against its peak, so many bins away from it."""
    turn = -2j * math.pi * offset / len(weights)
    sum_of_turned = sum(w * cmath.exp(turn * k) for k, w in enumerate(weights))
    return max(20.0 * math.log10(max(abs(sum_of_turned / sum(weights)), 1e-9)), -140.0)


def read_curves(file):
    """The two curves of a drawing, each point as shares of the width and height of its frame."""
    return [[((x - 64.0) / 636.0, (254.0 - y) / 220.0)
             for x, y in (map(float, p.split(",")) for p in element.get("points").split())]
            for element in xml.etree.ElementTree.parse(file).iter()
            if element.tag.endswith("polyline")]


def read_heights(lines):
    """Heights of the dots in each column of the first drawing in braille; 0 is the lowest."""
    frame = [line[8:].ljust(71) for line in lines if line[7:8] in ("┤", "│")][:12]
    bits = [[0x01, 0x02, 0x04, 0x40], [0x08, 0x10, 0x20, 0x80]]
    return [[47 - 4 * row - down for row in range(12) for down in range(4)
             if ord(frame[row][column // 2]) - 0x2800 & bits[column % 2][down] and
             frame[row][column // 2] != " "] for column in range(2 * 71)]


class Calc(unittest.TestCase):
    def test_function_without_a_calculation(self):
        called = {name for row in calculations() for name in row["functions"]}
        declared = {name for name in read_functions()
                    if not ACCESSOR.match(name) and name not in EXCEPTIONS}
        self.assertGreater(len(declared), 60)
        self.assertEqual(sorted(declared - called), [])
        self.assertEqual(sorted(called - declared), [])

    def test_wrong_answer(self):
        for arguments, pieces in ANSWERS:
            with self.subTest(arguments):
                answer = " ".join(run("calc", *shlex.split(arguments)).stdout.split())
                for piece in pieces:
                    self.assertIn(piece, answer)

    def test_calculation_that_nobody_checks(self):
        checked = {arguments.split()[0] for arguments, _ in ANSWERS}
        checked |= {"window", "samplerate", "magnitude", "temperature", "metertable"}
        self.assertEqual({row["name"] for row in calculations()} - checked, set())

    def test_example_of_the_help_fails(self):
        for row in calculations():
            for example in row["examples"]:
                with self.subTest(example):
                    done = run(*shlex.split(example)[1:])
                    self.assertEqual(done.returncode, 0, done.stderr)

    def test_window_against_published_figures(self):
        for name, (lobe, bandwidth, gain) in WINDOWS.items():
            with self.subTest(name):
                done = run("--json", "calc", "window", name, "4096", "--plot")
                result = json.loads(done.stdout)["result"]
                self.assertAlmostEqual(result["highest side lobe"]["value"], lobe, delta=0.1)
                self.assertAlmostEqual(result["noise bandwidth in bins"]["value"], bandwidth,
                                       delta=0.01)
                self.assertAlmostEqual(result["coherent gain"]["value"], gain, delta=0.005)

    def test_drawing_shows_another_curve_or_leaves_its_frame(self):
        for name, length in [("RECT", 16), ("HANN", 32), ("FLATTOP", 16), ("FLATTOP", 20000)]:
            with self.subTest(f"{name} {length}"), tempfile.TemporaryDirectory() as folder:
                weights = window_weights(name, length)
                file = os.path.join(folder, "window.svg")
                done = run("calc", "window", name, str(length), "--plot", "--svg", file)
                self.assertEqual(os.listdir(folder), ["window.svg"])
                window, spectrum = read_curves(file)
                least = -0.2 if min(weights) < 0 else 0.0
                for at, height in window:
                    # All between two columns where there are more samples than columns.
                    reach = 1.0 / 636 if length > 636 else 0.0
                    place = [(at + side * reach) * (length - 1) for side in (-1, 1)]
                    near = weights[max(0, round(place[0])):round(place[1]) + 1]
                    self.assertLessEqual(min(near) - 1e-3, least + height * (1.0 - least))
                    self.assertGreaterEqual(max(near) + 1e-3, least + height * (1.0 - least))
                bins = min(32.0, length / 2)
                for at, height in spectrum if length < 636 else []:
                    level = get_level(weights, (2.0 * at - 1.0) * bins)
                    if level > -80.0:  # else so steep that the places' rounding counts
                        self.assertAlmostEqual(height * 140.0 - 140.0, level, delta=2.0)
                lines = done.stdout.splitlines()
                self.assertLessEqual(max(map(len, lines)), 80)
                heights = read_heights(lines)
                self.assertEqual(len(heights), 2 * 71)
                for column, dots in enumerate(heights):
                    left, part = divmod((column + 0.5) / len(heights) * (length - 1), 1)
                    weight = (1 - part) * weights[int(left)] + part * weights[int(left) + 1]
                    expected = (weight - least) / (1.0 - least) * 47
                    self.assertTrue(min(dots) - 2 <= expected <= max(dots) + 2, (column, dots))

    def test_bad_argument_is_taken(self):
        for arguments in BAD:
            with self.subTest(arguments):
                done = run("calc", *shlex.split(arguments))
                self.assertEqual(done.returncode, 2, done.stdout)
                self.assertEqual(len(done.stderr.splitlines()), 1, done.stderr)


if __name__ == "__main__":
    unittest.main()
