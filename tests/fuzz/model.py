# SPDX-License-Identifier: MIT
"""Edits model files at random and gives them to the generator, which must take them or say
`file:line: what is wrong`: no traceback, no endless run. The first seeds are always the same."""

import argparse
import random
import re
import shutil
import signal
import sys
import time
import traceback
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "tools" / "modelgen"))

from support import CWorkspace  # noqa: E402

FIXED_SEEDS = 200
LIMIT_S = 10
DIAGNOSTIC = re.compile(r"^(enumerations|groups)/[^:]*\.(?:toml|txt):([1-9][0-9]*): .+$")
TOKEN = re.compile(rb'"[^"\n]*"|[A-Za-z_]+|-?[0-9.]+|[^\sA-Za-z0-9_"]')
STRANGE = ["", "0", "-1", "1e999", "nan", "true", '""', '"\\u0000"', "[]", "{}", "[[", "]]", "=",
           "99999999999999999999", "1979-05-27", '"a/b"', "'''", '"""', "#", "\n", "\r", "\u2028",
           '"class"', '"int16"', "a.b", "[A]\n", "[A.B]\n", "array = 1e9", "é"]


def edited(data: bytes, chance: random.Random, tokens: list[bytes]) -> bytes:
    """The text, changed a little; all chance comes from the seed."""
    lines = data.splitlines(keepends=True) or [b""]
    i, j = chance.randrange(len(lines)), chance.randrange(len(lines))
    swapped = lines[:]
    swapped[i], swapped[j] = swapped[j], swapped[i]
    place = chance.randrange(len(data) + 1)
    bit = bytes(byte ^ 1 << chance.randrange(8) for byte in data[place:place + 1])
    strange = (chance.choice(tokens) if chance.random() < 0.6
               else chance.choice(STRANGE).encode("utf-8"))
    token = chance.choice([*TOKEN.finditer(data), None])
    replaced = data[:token.start()] + strange + data[token.end():] if token else data
    return chance.choice([
        b"".join(lines[:i] + lines[i + 1:]), b"".join(lines[:i + 1] + lines[i:]),
        b"".join(swapped), data[:place], replaced, replaced, replaced,
        data[:place] + strange + data[place:], data[:place] + bit + data[place + 1:]])


def broken_promise(workspace: CWorkspace) -> str:
    """What the generator does that it must not do with the files of the workspace; empty for
    nothing."""
    signal.alarm(LIMIT_S)
    try:
        status, _, lines = workspace.run("--list-outputs")
    except Exception:  # whatever it is, nothing may come through
        return traceback.format_exc()
    finally:
        signal.alarm(0)
    if status == 0:
        return f"taken, and said: {lines}" if lines else ""
    for line in lines:
        match = DIAGNOSTIC.match(line)
        if not match:
            return f"no diagnostic: {line!r}"
        path = workspace.root / line[:line.index(":")]
        if int(match.group(2)) > path.read_bytes().count(b"\n") + 1:
            return f"no such line: {line!r}"
    return "" if status == 1 and lines else f"status {status}, diagnostics {lines}"


def try_seed(seed: int) -> tuple[str, list[tuple[str, bytes]]]:
    chance = random.Random(seed)
    with CWorkspace() as workspace:
        workspace.copy_model()
        paths = sorted(path for path in workspace.root.glob("*/*") if path.is_file())
        tokens = sorted({token for path in paths for token in TOKEN.findall(path.read_bytes())})
        for _ in range(chance.randrange(1, 5)):
            path = chance.choice(paths)
            path.write_bytes(edited(path.read_bytes(), chance, tokens))
        return broken_promise(workspace), [
            (f"{path.parent.name}-{path.name}", path.read_bytes()) for path in paths
        ]


def keep(folder: Path, seed: int, files: list[tuple[str, bytes]]) -> Path:
    target = folder / f"model-{seed}"
    shutil.rmtree(target, ignore_errors=True)
    target.mkdir(parents=True)
    for name, data in files:
        (target / name).write_bytes(data)
    return target


def on_alarm(*_: object) -> None:
    raise TimeoutError(f"more than {LIMIT_S} s")


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--seconds", type=float, default=0, help="how long beyond the fixed seeds")
    parser.add_argument("--seed", type=int, default=0, help="where chance begins; 0: anywhere")
    parser.add_argument("--findings", type=Path, default=Path("build/fuzz/findings"))
    options = parser.parse_args()
    signal.signal(signal.SIGALRM, on_alarm)
    end = time.monotonic() + options.seconds
    # Without a seed no run is repeated: what it finds is kept as files.
    chance = random.Random(options.seed) if options.seed else random.SystemRandom()
    runs = 0
    while runs < FIXED_SEEDS or time.monotonic() < end:
        seed = runs if runs < FIXED_SEEDS else chance.randrange(FIXED_SEEDS, 1 << 48)
        wrong, files = try_seed(seed)
        if wrong:
            place = keep(options.findings, seed, files)
            print(f"seed {seed}, files in {place}:\n{wrong}", file=sys.stderr)
            return 1
        runs += 1
    print(f"Done {runs} models in {options.seconds:g} s")
    return 0


if __name__ == "__main__":
    sys.exit(main())
