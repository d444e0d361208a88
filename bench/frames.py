#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints what a log of frames costs that `zelctl labels decode` makes values of, beside a list that
names none of its frames: frames.py ZELCTL [FRAMES]

Processor time of the program, so that a busy machine disturbs little. Frames have eight signals,
and random payloads.
"""

import os
import random
import resource
import statistics
import subprocess
import sys
import tempfile

REPETITIONS = 3
BUDGET = 2.0  # seconds for a million frames as CSV

DATABASE = """VERSION ""
NS_:
BS_:
BU_: ECM
BO_ {identifier} EngineData: 8 ECM
 SG_ Speed : 0|16@1+ (0.25,0) [0|16383.75] "rpm" ECM
 SG_ Torque : 23|12@0- (0.5,0) [-1024|1023.5] "Nm" ECM
 SG_ Gear : 27|4@0- (1,0) [-8|7] "" ECM
 SG_ Temperature : 32|8@1+ (1,-40) [-40|215] "degC" ECM
 SG_ State : 40|3@1+ (1,0) [0|7] "" ECM
 SG_ Pressure : 48|10@1+ (0.1,0) [0|102.3] "bar" ECM
 SG_ Flag : 58|1@1+ (1,0) [0|1] "" ECM
 SG_ Counter : 60|4@1+ (1,0) [0|15] "" ECM
VAL_ {identifier} State 0 "off" 1 "cranking" 2 "running" ;
"""

# name, identifier of the message in the list, options, whether the budget is about it
ROWS = [
    ("none of the list", 0x124, [], False),
    ("--csv", 0x123, ["--csv"], True),
    ("--json", 0x123, ["--json"], False),
    ("table", 0x123, [], False),
]


def write_log(path: str, count: int) -> None:
    source = random.Random(1)
    with open(path, "w", encoding="ascii") as file:
        for i in range(count):
            file.write(f"({1700000000 + i // 1000}.{i % 1000:03}000) can0 "
                       f"123#{source.getrandbits(64):016X}\n")


def seconds(arguments: list[str]) -> float:
    begin = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run(arguments, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    end = resource.getrusage(resource.RUSAGE_CHILDREN)
    return (end.ru_utime + end.ru_stime) - (begin.ru_utime + begin.ru_stime)


def measure(program: str, folder: str, identifier: int, options: list[str]) -> float:
    database = os.path.join(folder, "bench.dbc")
    with open(database, "w", encoding="ascii") as file:
        file.write(DATABASE.format(identifier=identifier))
    log = os.path.join(folder, "bench.log")
    return statistics.median(
        seconds([program, "labels", "decode", "--list", database, log, *options])
        for _ in range(REPETITIONS))


def main(program: str, count: int = 1_000_000) -> int:
    print("| Log of a million frames | Measured | Budget | Beside |")
    print("|---|---|---|---|")
    baseline = 0.0
    with tempfile.TemporaryDirectory() as folder:
        write_log(os.path.join(folder, "bench.log"), count)
        for name, identifier, options, has_budget in ROWS:
            figure = measure(program, folder, identifier, options) * 1e6 / count
            baseline = baseline or figure
            limit = f"{BUDGET} s" + (" OVER" if figure > BUDGET else "") if has_budget else ""
            print(f"| {name} | {figure:.2g} s | {limit} | {figure / baseline:.2g} × |")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], *map(int, sys.argv[2:])))
