# SPDX-License-Identifier: MIT
"""What the generator's tests share."""

import contextlib
import io
import sys
import tempfile
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parents[2] / "tools"))

from modelgen.command import main  # noqa: E402,F401


class CWorkspace:
    """A folder of its own with model files in it, gone after use."""

    def __enter__(self) -> "CWorkspace":
        self._folder = tempfile.TemporaryDirectory()
        self.root = Path(self._folder.name)
        self.out = self.root / "out"
        for name in ("enumerations", "groups"):
            (self.root / name).mkdir()
        return self

    def __exit__(self, *_: object) -> None:
        self._folder.cleanup()

    def write(self, path: str, content: str | bytes) -> None:
        data = content.encode("utf-8") if isinstance(content, str) else content
        target = self.root / path
        target.parent.mkdir(exist_ok=True)
        target.write_bytes(data)

    def copy_model(self) -> None:
        """Takes over the model that shows every feature."""
        for path in (path for path in (HERE / "model").rglob("*") if path.is_file()):
            self.write(str(path.relative_to(HERE / "model")), path.read_bytes())

    def replace(self, path: str, old: str, new: str) -> None:
        content = (self.root / path).read_text(encoding="utf-8")
        if content.count(old) != 1:
            raise AssertionError(f"{old!r} stands {content.count(old)} times in {path}")
        self.write(path, content.replace(old, new))

    def run(self, *options: str) -> tuple[int, list[str], list[str]]:
        """Status, lines of the output and of the diagnostics, these with relative paths."""
        out, error = io.StringIO(), io.StringIO()
        arguments = ["--enumerations", str(self.root / "enumerations"), "--groups",
                     str(self.root / "groups"), "--out", str(self.out), *options]
        with contextlib.redirect_stdout(out), contextlib.redirect_stderr(error):
            status = main(arguments)
        lines = error.getvalue().replace(f"{self.root}/", "").splitlines()
        return status, out.getvalue().splitlines(), lines

    def outputs(self) -> dict[str, str]:
        """Everything below the output folder."""
        return {
            str(path.relative_to(self.out)): path.read_bytes().decode("utf-8")
            for path in sorted(self.out.rglob("*")) if path.is_file()
        }
