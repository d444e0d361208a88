#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints measured medians beside their budgets: budgets.py RESULTS.json [STRIPPED_LIBRARY]

RESULTS.json is what kwi_bench wrote. A row is shown when its benchmark was among those that ran.
"""

import json
import os
import sys
from dataclasses import dataclass

NS, US, MS = 1.0, 1e3, 1e6


@dataclass(frozen=True)
class Row:
    operation: str
    benchmark: str
    limit: float
    """In nanoseconds, or as a multiple of the baseline where `relative`."""
    baseline: str = ""
    relative: bool = False
    counter: str = ""
    """A counter of the benchmark, in nanoseconds, that is the figure instead of the time."""


ROWS = [
    Row("read a number", "FrameGetNumber", 5 * NS, "BaselineVirtualCall"),
    Row("the same, in virtual calls", "FrameGetNumber", 3, "BaselineVirtualCall", True),
    Row("read an enumeration", "FrameGetEnumeration", 5 * NS, "BaselineVirtualCall"),
    Row("the same, in virtual calls", "FrameGetEnumeration", 3, "BaselineVirtualCall", True),
    Row("read while another thread writes", "FrameGetWhileAnotherThreadWrites/threads:1",
        5 * NS, "FrameGetNumber"),
    Row("read in two threads while a third writes", "FrameGetWhileAnotherThreadWrites/threads:2",
        5 * NS, "FrameGetNumber"),
    Row("read while another thread holds the lock",
        "FrameGetWhileAnotherThreadHoldsTheLock", 5 * NS, "FrameGetNumber"),
    Row("poll an unchanged subtree", "FrameHasChangedUnchangedSubtree", 5 * NS,
        "BaselineAtomicLoad"),
    Row("write a number, history off", "FrameClientSet/history:0", 80 * NS,
        "BaselineRecursiveMutex"),
    Row("write a number, history on", "FrameClientSet/history:1", 105 * NS,
        "BaselineRecursiveMutex"),
    Row("write with 8 dependants, history off", "FrameClientSetWithEightDependants/history:0",
        400 * NS, "FrameClientSet/history:0"),
    Row("write with 8 dependants, history on", "FrameClientSetWithEightDependants/history:1",
        640 * NS, "FrameClientSetWithEightDependants/history:0"),
    Row("horizontal chain, history off", "HorizontalChain/history:0", 5 * US,
        "FrameClientSet/history:0"),
    Row("horizontal chain, history on", "HorizontalChain/history:1", 5 * US,
        "FrameClientSet/history:1"),
    Row("span change, history off", "SpanChange/history:0", 5 * US, "FrameClientSet/history:0"),
    Row("span change, history on", "SpanChange/history:1", 5 * US, "FrameClientSet/history:1"),
    Row("find the root, tree alive", "TreeAliveGetRoot", 50 * NS, "BaselineRecursiveMutex"),
    Row("build and release the tree", "TreeColdGetRootAndRelease", 10 * MS),
    Row("save the tree", "TreeSaveXml", 1.5, "BaselineXmlWriterToFile", True),
    Row("recall the tree", "TreeRecallXml", 1.5, "BaselineXmlReader", True),
    Row("load 500 labels with 5,000 signals",
        "LabelsLoadIntoTree/messages:500/signals:10/history:1", 50 * MS, "BaselineLabelNodes"),
    Row("decode a frame of eight signals", "LabelDecodeFrame", 100 * NS, "BaselineDecodeByHand"),
    Row("the same, in decoders by hand", "LabelDecodeFrame", 3, "BaselineDecodeByHand", True),
    Row("read a line of a log", "LabelReadLogLine", 1, "BaselineScanLogLine", True),
    Row("read a database of 5,000 signals", "LabelReadDatabase", 20 * MS, "BaselineSplitDatabase"),
    Row("idle poll of all pages", "QtIdlePoll", 50 * NS, "QtBaselineHasChanged"),
    Row("poll of 1,000 shown properties, ten of them changed", "QtPollTenOfAThousandChanged",
        20 * US, "QtBaselineHasChanged"),
    Row("publish a record", "StreamPublish", 150 * NS, "StreamBaselineSharedPointer"),
    Row("the same, with 200 points and their pyramid", "StreamPublish200Points", 300 * NS,
        "StreamPublish"),
    Row("the same alone, each millisecond: 99 of 100 below",
        "StreamPublishAtOneKilohertz/iterations:1000/manual_time", 2 * US, counter="p99_ns"),
    Row("fetch the latest record", "StreamGetLatest", 1.2, "StreamBaselineSharedPointer", True),
    Row("the same beside eight readers at full speed", "StreamGetLatestBesideEightReaders",
        150 * NS, "StreamGetLatest"),
    Row("ask for a new record", "StreamHasNew", 5 * NS, "BaselineAtomicLoad"),
    Row("a thousand frames of a bus to a reader", "StreamFrames", 1.2, "StreamBaselineFrames", True),
    Row("arm an acquisition, settings standing", "AcquisitionArm", 50 * NS, "BaselineAtomicLoad"),
    Row("fill a million points", "StreamFillAMillionPoints", 1.25, "StreamBaselineCopyAndPass",
        True),
    Row("1,250 columns of a million points", "StreamColumns", 0.35, "StreamBaselinePass", True),
    Row("the same from a cold cache", "StreamColdColumns/iterations:20", 1,
        "StreamBaselineColdPass/iterations:20", True),
    Row("1,250 columns of 1,249 points by sin x / x", "StreamCurve/mode:0/points:1249", 3,
        "StreamColumns", True),
    Row("a curve of a million points, float", "MathFloat", 1.2, "MathBaselineFloat", True),
    Row("the same with 16 bit", "MathWords", 0.6, "MathBaselineWords", True),
    Row("mask test of a million points that pass", "MaskTestSinePasses", 0.5, "MaskBaselinePass",
        True),
    Row("the same, found out that they do not", "MaskTestFails", 0.5, "MaskBaselinePass", True),
]


def medians(results: dict) -> dict[str, dict]:
    """The median of each benchmark, or its only run."""
    found: dict[str, dict] = {}
    for run in results["benchmarks"]:
        if run.get("aggregate_name", "median") == "median":
            found.setdefault(run["run_name"], run)
            if run["run_type"] == "aggregate":
                found[run["run_name"]] = run
    return found


def nanoseconds(run: dict) -> float:
    return run["cpu_time"] * {"ns": NS, "us": US, "ms": MS, "s": 1e9}[run["time_unit"]]


def duration(value: float) -> str:
    unit, name = next((u, n) for u, n in ((MS, "ms"), (US, "µs"), (0.0, "ns")) if value >= u)
    return f"{value / (unit or 1):.3g} {name}"


def lines(runs: dict[str, dict]) -> list[tuple[str, str, str, str, float]]:
    """Operation, figure, budget, baseline and the share of the budget that is used."""
    table = []
    for row in ROWS:
        if row.benchmark not in runs or (row.relative and row.baseline not in runs):
            continue
        run = runs[row.benchmark]
        figure = run[row.counter] if row.counter else nanoseconds(run)
        beside, ratio = "", 0.0
        if row.baseline in runs:
            ratio = figure / nanoseconds(runs[row.baseline])
            beside = f"{ratio:.3g} × {row.baseline}"
        limit = f"{row.limit:g} ×" if row.relative else duration(row.limit)
        table.append((row.operation, duration(figure), limit, beside,
                      (ratio if row.relative else figure) / row.limit))
    heap = runs.get("TreeHeapPerProperty/iterations:1")
    if heap:
        size = heap["bytes_per_property"]
        table.append(("heap of the tree, per property", f"{size:.0f} bytes", "300 bytes",
                      f"{heap['properties']:.0f} properties", size / 300))
    return table


def main(arguments: list[str]) -> int:
    with open(arguments[0], encoding="utf-8") as file:
        table = lines(medians(json.load(file)))
    if len(arguments) > 1:
        size = os.path.getsize(arguments[1])
        table.append(("stripped library", f"{size / 1e6:.2f} MB", "4 MiB", "", size / 4 / 2**20))
    print("| Operation | Measured | Budget | Beside | Share of the budget |")
    print("|---|---|---|---|---|")
    for operation, figure, limit, beside, share in table:
        verdict = f"{share:.2f}" + (" OVER" if share > 1 else "")
        print(f"| {operation} | {figure} | {limit} | {beside} | {verdict} |")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
