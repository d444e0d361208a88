# SPDX-License-Identifier: MIT
"""The guide's commands, literally, and the example that draws its picture."""

import contextlib
import io
import os
import pathlib
import re
import shutil
import subprocess
import sys

import pytest

import kwifunctionzel as kwi

PROJECT = pathlib.Path(__file__).resolve().parents[2]
GUIDE = PROJECT / "docs" / "guides" / "use-from-python.md"


def test_guide_prints_what_it_says(tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    names: dict[str, object] = {}
    blocks = re.findall(r"```python\n(.*?)```", GUIDE.read_text(encoding="utf-8"), re.S)
    assert len(blocks) > 8
    for block in blocks:
        wanted = [line.rpartition("  # ")[2] for line in block.splitlines()
                  if line.lstrip().startswith("print(") and "  # " in line]
        printed = io.StringIO()
        with contextlib.redirect_stdout(printed):
            exec(compile(block, str(GUIDE), "exec"), names)
        assert printed.getvalue().splitlines() == wanted
    names["root"].close()


def test_example_draws_a_picture(tmp_path):
    pytest.importorskip("matplotlib")
    # The commands for the package's installation are run by .ci/run, before these tests.
    install, draw = re.findall(r"```sh\n(.*?)```", GUIDE.read_text(encoding="utf-8"), re.S)
    assert "pip install" in install
    shutil.copytree(PROJECT / "examples" / "python", tmp_path / "examples" / "python")
    # The "python3" of the guide's reader is the one that has the package.
    (tmp_path / "python3").write_text(f'#!/bin/sh\nexec "{sys.executable}" "$@"\n', "ascii")
    (tmp_path / "python3").chmod(0o755)
    subprocess.run(["bash", "-euc", draw], cwd=tmp_path, check=True, timeout=120, env={
        **os.environ, "PATH": f"{tmp_path}:{os.environ['PATH']}",
        "PYTHONWARNINGS": "error::UserWarning"})
    picture = tmp_path / "examples" / "python" / "picture.png"
    assert picture.read_bytes()[:8] == b"\x89PNG\r\n\x1a\n" and picture.stat().st_size > 10_000


def test_import_needs_nothing_large():
    code = ("import sys, kwifunctionzel; "
            "print([m for m in ('numpy', 'matplotlib') if m in sys.modules])")
    done = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, timeout=60,
                          check=True)
    assert done.stdout == "[]\n" and kwi.tree.Horizontal is kwi.Group
