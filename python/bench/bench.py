#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""What Python adds to the library: medians, each beside an empty call of the module.

    PYTHONPATH=build/release/python /usr/bin/python3 python/bench/bench.py

Figures are for a quiet machine and a person to judge."""

import statistics
import subprocess
import sys
import timeit
import warnings

import kwifunctionzel as kwi
from kwifunctionzel import _core

REPEATS = 15
SHOTS = 200_000


def nanoseconds(statement: str, **names: object) -> float:
    timer = timeit.Timer(statement, globals=names)
    return statistics.median(timer.repeat(REPEATS, SHOTS)) / SHOTS * 1e9


def set_nanoseconds(names: dict[str, object], assignment: str, first: str, second: str) -> float:
    """Of a write that changes something: two values in turn, an unrolled pair a round. An equal
    write would stop before the limits, the history and the counters."""
    pair = f"{assignment} = {first}; {assignment} = {second}"
    return nanoseconds(pair, **names) / 2


def import_milliseconds() -> float:
    """What an import adds to the start of the interpreter."""
    def start(code: str) -> float:
        command = [sys.executable, "-I", "-c", code]
        begin = timeit.default_timer()
        subprocess.run(command, check=True)
        return timeit.default_timer() - begin

    path = kwi.__path__[0].rpartition("/")[0]
    begin = f"import sys; sys.path.insert(0, {path!r})"
    empty = statistics.median(start(begin) for _ in range(REPEATS))
    return (statistics.median(start(f"{begin}; import kwifunctionzel") for _ in range(REPEATS))
            - empty) * 1e3


def main() -> None:
    warnings.simplefilter("ignore")
    with kwi.root() as root:
        root.enable_history(False)
        # A setting that moves nothing else: what is measured is Python's part.
        group, number = root.Vertical.Channel[1], root.Vertical.Channel[1].node("Scale")
        names = {"group": root.Horizontal, "channel": group, "number": number, "call": _core.empty}
        empty = nanoseconds("call()", **names)
        names["changes"] = root.changes()
        names["free"] = root.Mask.MaskSettings
        rows = [
            ("get of a number, as an attribute", nanoseconds("group.Scale", **names), 150.0),
            ("get of an enumeration", nanoseconds("group.AcquisitionMode", **names), 150.0),
            ("get of a number, as a property", nanoseconds("number.value", **names), 150.0),
            ("set of a number without dependants",
             set_nanoseconds(names, "free.WidthX", "0.2", "0.4"), 300.0),
            ("the same of a text",
             set_nanoseconds(names, "free.WidthX", "'0.2 div'", "'0.4 div'"), None),
            ("has_changed", nanoseconds("changes.has_changed()", **names), None),
        ]
        print(f"{'an empty call':45} {empty:7.1f} ns")
        for name, taken, budget in rows:
            beyond = taken - empty
            limit = f"budget {budget:.0f} ns beyond" if budget else ""
            print(f"{name:45} {beyond:7.1f} ns beyond, {beyond / empty + 1:5.2f} × it  {limit}")
        imported = import_milliseconds()
        print(f"{'import':45} {imported:7.1f} ms  budget 100 ms")


main()
