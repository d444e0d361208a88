#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Counts instructions per operation and compares with the stored counts.

instructions.py COUNTER STRIPPED_LIBRARY [--only REGEX] [--update] [--stored FILE]

COUNTER is kwi_count. Beside what it runs, heap per property and the library's size are rows, in
bytes. Fails where a row is more than 2 % above what is stored, asks for an update where it is more
than 2 % below. Counts of another compiler or other libraries say nothing: they are not compared.
"""

import argparse
import concurrent.futures
import os
import re
import subprocess
import sys
import tempfile
from dataclasses import dataclass
from pathlib import Path

from budgets import ROWS

TOLERANCE = 0.02
STORED = Path(__file__).with_name("instructions.txt")
HEADER = "# Instructions per operation, or bytes; scripts/bench.sh --instructions --update writes it."
HEAP, SIZE = "HeapPerProperty", "StrippedLibrary"
LABELS = {HEAP: "heap of the tree, bytes per property", SIZE: "stripped library, bytes"}
BASELINES = {}
for _row in reversed(ROWS):  # where a benchmark has two, the first one names it
    LABELS[_row.benchmark] = _row.operation
    BASELINES[_row.benchmark] = _row.baseline

# Whatever chooses another path through the same program: where hashes begin, when symbols are
# resolved, which copy of a function suits the processor.
_WIDE = ("SSSE3", "SSE4_1", "SSE4_2", "AVX", "AVX2", "AVX512F", "AVX512VL", "AVX512BW", "ERMS",
         "FSRM", "BMI1", "BMI2", "LZCNT")
ENVIRONMENT = {
    "PATH": os.environ.get("PATH", "/usr/bin"),
    "LC_ALL": "C.UTF-8",
    "LD_BIND_NOW": "1",
    "QT_HASH_SEED": "0",
    "QT_NO_CPU_FEATURE": "ssse3 sse4.1 sse4.2 avx avx2 avx512f f16c bmi bmi2 rdrnd rdseed",
    "GLIBC_TUNABLES": "glibc.cpu.hwcaps=" + ",".join("-" + name for name in _WIDE),
}


@dataclass
class Counts:
    made_with: str
    rows: dict[str, float]


@dataclass
class Judgement:
    """What is wrong, and what to do about what is merely out of date."""
    wrong: list[str]
    stale: list[str]


def read(path: Path) -> Counts:
    made_with, rows = "", {}
    for line in path.read_text(encoding="utf-8").splitlines() if path.exists() else ():
        name, _, value = line.partition("\t")
        if name == "made with":
            made_with = value
        elif not line.startswith("#"):
            rows[name] = float(value)
    return Counts(made_with, rows)


def write(path: Path, counts: Counts) -> None:
    lines = [HEADER, f"made with\t{counts.made_with}"]
    lines += [f"{name}\t{value:.1f}" for name, value in counts.rows.items()]
    path.write_text("\n".join(lines) + "\n", encoding="utf-8")


def judge(stored: Counts, now: Counts, whole: bool = True) -> Judgement:
    """Of part of the rows, only those that were counted; of all, the lost ones too."""
    found = Judgement([], [])
    for name, value in now.rows.items():
        if name not in stored.rows:
            found.wrong.append(f"{name}: no count is stored")
        elif value > stored.rows[name] * (1 + TOLERANCE):
            found.wrong.append(f"{name}: {value:.1f}, stored are {stored.rows[name]:.1f}")
        elif value < stored.rows[name] * (1 - TOLERANCE):
            found.stale.append(f"{name}: {value:.1f}, stored are {stored.rows[name]:.1f}")
    if whole:
        found.wrong += [f"{name}: stored, but no longer counted"
                        for name in stored.rows if name not in now.rows]
    return found


def count_one(counter: str, name: str, runs: int) -> float:
    with tempfile.TemporaryDirectory() as folder:
        profile = Path(folder) / "profile"
        result = subprocess.run(
            ["valgrind", "--tool=callgrind", f"--callgrind-out-file={profile}",
             "--toggle-collect=KW_Counted", counter, name],
            env={**ENVIRONMENT, "TMPDIR": folder}, capture_output=True, text=True, check=False)
        total = re.search(r"^totals: (\d+)$",
                          profile.read_text(encoding="utf-8") if profile.exists() else "", re.M)
    if result.returncode != 0 or not total or total[1] == "0":
        raise RuntimeError(f"{name}: valgrind counted nothing:\n{result.stderr}")
    return round(int(total[1]) / runs, 1)


def count(counter: str, library: str, only: str) -> Counts:
    def ask(*arguments: str) -> list[list[str]]:
        text = subprocess.run([counter, *arguments], env=ENVIRONMENT, capture_output=True,
                              text=True, check=True).stdout
        return [line.split("\t") for line in text.splitlines()]

    (_, made_with), *operations = ask()
    chosen = [(name, int(runs)) for name, runs in operations if re.search(only, name)]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        figures = pool.map(lambda row: count_one(counter, *row), chosen)
        rows = {name: figure for (name, _), figure in zip(chosen, figures)}
    if re.search(only, HEAP):
        size, properties = map(int, ask("--heap")[0])
        rows[HEAP] = round(size / properties, 1)
    if re.search(only, SIZE):
        rows[SIZE] = os.path.getsize(library)
    return Counts(made_with, rows)


def print_table(stored: Counts, now: Counts) -> None:
    print("| Operation | Now | Stored | Change | Beside |")
    print("|---|---|---|---|---|")
    for name, value in now.rows.items():
        before, change = stored.rows.get(name), ""
        if before:
            change = f"{100 * (value / before - 1):+.2f} %"
        base, beside = BASELINES.get(name, ""), ""
        if base in now.rows:
            beside = f"{value / now.rows[base]:.3g} × {LABELS.get(base, base)}"
        print(f"| {LABELS.get(name, name)} | {value:,.1f} | "
              f"{'' if before is None else f'{before:,.1f}'} | {change} | {beside} |")


def report(stored: Counts, now: Counts, whole: bool) -> int:
    if stored.made_with != now.made_with:
        print(f"instructions: the stored counts were made with {stored.made_with}, these with "
              f"{now.made_with}: not compared")
        return 0
    found = judge(stored, now, whole)
    for line in found.stale:
        print(f"instructions: fewer than stored: {line}")
    for line in found.wrong:
        print(f"instructions: {line}", file=sys.stderr)
    if found.wrong or found.stale:
        print(f"instructions: where a change is meant, scripts/bench.sh --instructions --update "
              f"stores it in {STORED.name}")
    return 1 if found.wrong else 0


def main(arguments: list[str]) -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("counter")
    parser.add_argument("library")
    parser.add_argument("--only", default="", metavar="REGEX", help="the rows with such a name")
    parser.add_argument("--update", action="store_true", help="store what was counted")
    parser.add_argument("--stored", type=Path, default=STORED, metavar="FILE")
    options = parser.parse_args(arguments)
    stored = read(options.stored)
    try:
        now = count(options.counter, options.library, options.only)
    except (RuntimeError, OSError, subprocess.CalledProcessError) as error:
        print(f"instructions: {error}", file=sys.stderr)
        return 2
    print_table(stored, now)
    if not options.update:
        return report(stored, now, not options.only)
    kept = stored.rows if options.only else {}
    write(options.stored, Counts(now.made_with, {**kept, **now.rows}))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
