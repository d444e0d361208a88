# SPDX-License-Identifier: MIT
"""Writing of generated files."""

from pathlib import Path

from .cpptext import GENERATED


def _write_changed(folder: Path, files: dict[str, str]) -> None:
    for path, content in files.items():
        target = folder / path
        data = content.encode("utf-8")
        if target.is_file() and target.read_bytes() == data:
            continue
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_bytes(data)


def _remove_stale(folder: Path, files: dict[str, str]) -> None:
    """Takes away what an earlier model made: a left-over header would still be found and
    installed. Files of other origin stay."""
    wanted = {folder / path for path in files}
    for path in sorted(folder.rglob("*")):
        if path in wanted or not path.is_file():
            continue
        if GENERATED.encode() in path.read_bytes()[:200]:
            path.unlink()


def update(folder: Path, files: dict[str, str]) -> None:
    """Brings the files below `folder` up to date. What is right already keeps its time stamp, so
    that the build sees only real changes."""
    _write_changed(folder, files)
    _remove_stale(folder, files)
