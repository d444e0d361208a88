#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Do the tests notice a fault? Seeds those of tests/seeds, one at a time, and runs the tests.

Rows of tests/seeds/*.toml name a file, an old text that stands in it exactly once, the new text,
and the promise that it breaks. Works in a copy of the project in a temporary folder, never in the
checkout: build, seed, build again what changed, run the tests nearest to the file first and stop at
the first that fails. A fault that no test notices survives; the share that is killed is the figure.
"""

import argparse
import concurrent.futures
import os
import queue
import re
import shutil
import subprocess
import sys
import tempfile
import time
import tomllib
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
BUILD = Path("build/release")
STAGE_SECONDS = 900  # a fault may hang a test


@dataclass(frozen=True)
class Row:
    name: str
    file: str
    old: str
    new: str
    promise: str


@dataclass(frozen=True)
class Stage:
    """Programs to build, and how to run their tests from the project's folder."""
    target: str
    command: tuple[str, ...]


@dataclass
class Verdict:
    row: Row
    killer: str | None
    problem: str = ""
    seconds: float = 0.0


def read_rows(folder: Path) -> list[Row]:
    rows = []
    for path in sorted(folder.glob("*.toml")):
        with path.open("rb") as file:
            rows += [Row(**fault) for fault in tomllib.load(file)["fault"]]
    return rows


def problems(rows: list[Row], root: Path) -> list[str]:
    """What would keep a row from being seeded."""
    found = []
    names = [row.name for row in rows]
    for row in rows:
        path = root / row.file
        count = path.read_text(encoding="utf-8").count(row.old) if path.is_file() else None
        if count is None:
            found.append(f"{row.name}: there is no {row.file}: mend the row")
        elif count != 1:
            found.append(f"{row.name} no longer matches: {row.file} has its old text {count} "
                         f"times: mend it")
        if row.old == row.new or not row.promise:
            found.append(f"{row.name} changes nothing, or breaks no promise: mend it")
        if names.count(row.name) > 1:
            found.append(f"{row.name} is the name of several rows")
    return found


def gtest(target: str, suites: str = "*") -> Stage:
    return Stage(target, (str(BUILD / "tests" / target), "--gtest_brief=1", "--gtest_fail_fast",
                          f"--gtest_filter={suites}"))


def zelctl(part: str) -> Stage:
    return Stage("zelctl", (sys.executable, "-B", f"tests/tools/zelctl/test_{part}.py",
                            str(BUILD / "tools/zelctl/zelctl")))


def suites_of(folder: Path) -> str:
    """A filter for the tests of a room, or nothing."""
    names = set()
    for path in folder.glob("*.cpp") if folder.is_dir() else ():
        text = path.read_text(encoding="utf-8")
        names |= set(re.findall(r"^(?:TYPED_)?TEST(?:_F|_P)?\(\s*(\w+)", text, re.M))
        # Rows of a room are an instance of a suite that stands elsewhere.
        names |= set(re.findall(r"^INSTANTIATE_TEST_SUITE_P\(\s*(\w+)", text, re.M))
    return ":".join(f"{pattern}{name}{end}" for name in sorted(names)
                    for pattern, end in (("", ".*"), ("*/", ".*"), ("", "/*")))


def stages(file: str, root: Path) -> list[Stage]:
    """What could notice a fault in a file, the nearest and quickest first."""
    if file.startswith("tools/modelgen"):
        return [Stage("", (sys.executable, "-B", "-m", "unittest", "discover", "--failfast", "-s",
                           "tests/tools/modelgen"))]
    commands = [zelctl("zelctl"), zelctl("calc"), zelctl("labels")]
    living = Stage("zelctl zelhost", (sys.executable, "-B", "tests/tools/zelctl/test_connect.py",
                                      str(BUILD / "service/zelhost"),
                                      str(BUILD / "tools/zelctl/zelctl")))
    if re.match(r"tools/(shared/|zelctl/(CommandWatch|HttpClient|Living|OrderedJson|.*Socket))", file):
        return [living, *commands]
    if file.startswith("tools/"):
        return [*commands, zelctl("shell"), zelctl("guides"), living]
    if file.startswith("service/"):
        return [gtest("test_service"),
                Stage("zelhost", (sys.executable, "-B", "tests/service/test_clients.py",
                                  str(BUILD / "service/zelhost")))]
    if file.startswith("qt/"):
        return [gtest("test_qt")]
    if file.startswith("python/"):
        run = (f"PYTHONPATH=$PWD/{BUILD}/python KWI_ZELHOST=$PWD/{BUILD}/service/zelhost "
               "exec /usr/bin/python3 -m pytest -x -p no:cacheprovider")
        living = "python/tests/test_remote.py"
        return [Stage("kwi_python_package", ("sh", "-c", f"{run} python/tests --ignore={living}")),
                Stage("zelhost", ("sh", "-c", f"{run} {living}"))]
    if file.startswith(("src/Streams/", "ifc/Streams/")):
        return [gtest("test_streams")]
    if file.startswith("src/Samples/"):
        return [gtest("test_client")]
    numbers = [gtest("test_helpers"), gtest("test_labels"), gtest("test_vectors")]
    if not file.startswith("src/"):
        return [gtest("test_support"), gtest("test_database"), *numbers, gtest("test_zel"),
                gtest("test_fuzz"), gtest("test_client"), *commands, gtest("test_faults")]
    room = suites_of(root / "tests/zel" / file.split("/")[1])
    rules = [gtest("test_zel", room), gtest("test_zel", f"-{room}")] if room else [
        gtest("test_zel")]
    return [*numbers, *rules, gtest("test_fuzz"), *commands, zelctl("guides")]


def copy_project(target: Path) -> None:
    listed = subprocess.run(["git", "-C", str(ROOT), "ls-files", "-z", "--cached", "--others",
                             "--exclude-standard"], capture_output=True, text=True, check=True)
    for name in filter(None, listed.stdout.split("\0")):
        if (ROOT / name).is_file():
            (target / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(ROOT / name, target / name)


class CCopy:
    """The project in a folder of its own, with its build."""

    def __init__(self, folder: Path, jobs: int) -> None:
        self.root = folder / "project"
        self.jobs = jobs
        self.scratch = folder / "scratch"
        self.scratch.mkdir()
        copy_project(self.root)
        configured = subprocess.run(
            ["cmake", "--preset", "release", "-DKWI_BUILD_SERVICE=ON", "-DKWI_BUILD_QT=ON",
             "-DKWI_BUILD_PYTHON=ON"], cwd=self.root,
            stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)
        if configured.returncode != 0:
            raise RuntimeError(configured.stdout + configured.stderr)

    def build(self, target: str) -> str:
        """Nothing, or what the compiler says."""
        if not target:
            return ""
        done = subprocess.run(
            ["cmake", "--build", str(BUILD), "--parallel", str(self.jobs), "--target",
             *target.split()],
            cwd=self.root, stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)
        return "" if done.returncode == 0 else done.stdout[-2000:] + done.stderr

    def failure(self, stage: Stage) -> str | None:
        """The first test that fails."""
        try:
            done = subprocess.run(
                stage.command, cwd=self.root, stdin=subprocess.DEVNULL, capture_output=True,
                text=True, errors="replace", check=False, timeout=STAGE_SECONDS,
                env={**os.environ, "TMPDIR": str(self.scratch), "PYTHONDONTWRITEBYTECODE": "1"})
        except subprocess.TimeoutExpired:
            return f"{stage.command[0]} hangs"
        if done.returncode == 0:
            return None
        named = re.search(r"^\[  FAILED  \] ([^\s,]+)|^(?:FAIL|ERROR): (\w+)"
                          r"|^FAILED (\S+)",
                          done.stdout + "\n" + done.stderr, re.M)
        return next(filter(None, named.groups())) if named else f"{stage.command[0]} crashes"

    def judge(self, row: Row) -> Verdict:
        path = self.root / row.file
        sound = path.read_text(encoding="utf-8")
        path.write_text(sound.replace(row.old, row.new), encoding="utf-8")
        started = time.monotonic()
        try:
            verdict = self.run_stages(row)
        finally:
            path.write_text(sound, encoding="utf-8")
        verdict.seconds = time.monotonic() - started
        return verdict

    def run_stages(self, row: Row) -> Verdict:
        for stage in stages(row.file, self.root):
            if error := self.build(stage.target):
                return Verdict(row, None, f"does not compile:\n{error}")
            if killer := self.failure(stage):
                return Verdict(row, killer)
        return Verdict(row, None)

    def check_sound(self, rows: list[Row]) -> None:
        """Without a fault all must pass, or a failing test would say nothing."""
        for stage in dict.fromkeys(
                gtest(stage.target) if stage.target.startswith("test_") else stage
                for row in rows for stage in stages(row.file, self.root)):
            if error := self.build(stage.target) or self.failure(stage):
                raise RuntimeError(f"without any fault: {stage.target or 'modelgen'}: {error}")


def judged(output: str) -> set[str]:
    """Names of the rows of which a run's output has a verdict."""
    return set(re.findall(r"^(?:killed|SURVIVES|invalid) +(\w+): ", output, re.M))


def show(verdict: Verdict) -> None:
    row, seconds = verdict.row, f"({verdict.seconds:.0f} s)"
    if verdict.problem:
        print(f"invalid   {row.name}: {verdict.problem} {seconds}", flush=True)
    elif verdict.killer:
        print(f"killed    {row.name}: {verdict.killer} {seconds}", flush=True)
    else:
        print(f"SURVIVES  {row.name}: {row.file}: {row.promise} {seconds}", flush=True)


def judge_all(rows: list[Row], folder: Path, jobs: int) -> list[Verdict]:
    copies: queue.Queue[CCopy] = queue.Queue()
    for i in range(jobs):
        place = folder / str(i)
        place.mkdir()
        copies.put(CCopy(place, max(1, (os.cpu_count() or 1) // jobs)))
    first = copies.get()
    first.check_sound(rows)
    copies.put(first)

    def judge(row: Row) -> Verdict:
        copy = copies.get()
        try:
            verdict = copy.judge(row)
        finally:
            copies.put(copy)
        show(verdict)
        return verdict

    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        return list(pool.map(judge, rows))


def summarise(verdicts: list[Verdict]) -> int:
    invalid = [verdict for verdict in verdicts if verdict.problem]
    killed = sum(verdict.killer is not None for verdict in verdicts)
    valid = len(verdicts) - len(invalid)
    print(f"seed-faults: {killed} of {valid} killed, {100 * killed / max(1, valid):.1f} %")
    for verdict in verdicts:
        if not verdict.killer and not verdict.problem:
            show(verdict)
    return 1 if invalid else 0


def main(arguments: list[str]) -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--only", default="", metavar="REGEX", help="rows of such name or file")
    parser.add_argument("--list", action="store_true", help="the rows, and nothing else")
    parser.add_argument("--check", action="store_true", help="each row matches once? No build")
    parser.add_argument("--jobs", type=int, default=1, metavar="N", help="copies at once, 1")
    parser.add_argument("--but", type=Path, metavar="OUTPUT",
                        help="rows of which the output of an earlier run has no verdict")
    parser.add_argument("--seeds", type=Path, default=ROOT / "tests/seeds", metavar="FOLDER")
    options = parser.parse_args(arguments)
    known = judged(options.but.read_text(encoding="utf-8")) if options.but else set()
    rows = [row for row in read_rows(options.seeds)
            if row.name not in known
            and any(re.search(options.only, text) for text in (row.name, row.file))]
    if options.list:
        for row in rows:
            print(f"{row.name:32} {row.file}: {row.promise}")
        return 0
    for problem in (wrong := problems(rows, ROOT)):
        print(f"seed-faults: {problem}", file=sys.stderr)
    if wrong or options.check:
        return 1 if wrong else 0
    os.nice(5)
    with tempfile.TemporaryDirectory(prefix="seed-faults-") as folder:
        try:
            return summarise(judge_all(rows, Path(folder), options.jobs))
        except RuntimeError as error:
            print(f"seed-faults: {error}", file=sys.stderr)
            return 2


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
