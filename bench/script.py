#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints what a line of a script costs, beside a line that does nothing: script.py ZELCTL [LINES]

Processor time of the program, without its start, so that a busy machine disturbs little.
"""

import resource
import statistics
import subprocess
import sys
import tempfile

REPETITIONS = 5
# name, lines that take turns, budget in microseconds
ROWS = [
    ("echo", ["echo x"], None),
    ("get", ["get Horizontal/Scale", "get Trigger/Type"], 20),
    ("set", ["set Horizontal/Scale 1us", "set Horizontal/Scale 2us"], None),
    ("set --trace", ["set -t Horizontal/Scale 1us", "set -t Horizontal/Scale 2us"], 200),
    ("get, --json", ["--json get Horizontal/Scale"], None),
]


def seconds(program: str, lines: list[str]) -> float:
    with tempfile.NamedTemporaryFile("w", suffix=".zel") as script:
        script.write("\n".join(lines) + "\n")
        script.flush()
        begin = resource.getrusage(resource.RUSAGE_CHILDREN)
        subprocess.run([program, "run", script.name], check=True, stdout=subprocess.DEVNULL)
        end = resource.getrusage(resource.RUSAGE_CHILDREN)
    return (end.ru_utime + end.ru_stime) - (begin.ru_utime + begin.ru_stime)


def microseconds(program: str, lines: list[str], count: int) -> float:
    """Median of the repetitions; the first lines build the tree and declare the commands."""
    def once() -> float:
        few = seconds(program, lines * 2)
        many = seconds(program, lines * (count // len(lines) + 2))
        return (many - few) / count * 1e6
    return statistics.median(once() for _ in range(REPETITIONS))


def main(program: str, count: int = 10_000) -> int:
    print("| Line | Measured | Budget | Beside |")
    print("|---|---|---|---|")
    baseline = 0.0
    for name, lines, budget in ROWS:
        figure = microseconds(program, lines, count)
        baseline = baseline or figure
        limit = "" if budget is None else f"{budget} µs" + (" OVER" if figure > budget else "")
        print(f"| {name} | {figure:.3g} µs | {limit} | {figure / baseline:.2g} × echo |")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], *map(int, sys.argv[2:])))
