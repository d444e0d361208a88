# SPDX-License-Identifier: MIT
"""What scripts/growth.py takes for a break, and what for growth."""

import contextlib
import importlib.util
import io
import tempfile
import unittest
from pathlib import Path

_SCRIPT = Path(__file__).resolve().parents[3] / "scripts/growth.py"
_SPEC = importlib.util.spec_from_file_location("growth", _SCRIPT)
growth = importlib.util.module_from_spec(_SPEC)
_SPEC.loader.exec_module(growth)

_A, _B, _C = (("IKWAction", f"GetPr{name}") for name in "ABC")
_OTHER = ("IKWArray<IKWFunctionX>", "GetPrB")

_ORDERS = [
    ("nothing new", [_A, _B], 0),
    ("behind", [_A, _B, _C], 0),
    ("before", [_C, _A, _B], 1),
    ("between", [_A, _C, _B], 1),
    ("another handle", [_A, _OTHER], 1),
    ("gone", [_A], 1),
    ("interface gone", None, 1),
]

_PRESENT = ["X/A: 1", "X/B: 2", "X/C: 3", "X/Cd: 4", "X/C/D: 5"]
_ANSWERS = [
    ("as before", _PRESENT, set(), 0),
    ("another answer", ["X/A: 1", "X/B: 1", *_PRESENT[2:]], set(), 1),
    ("answer lost", _PRESENT[:-1], set(), 1),
    ("removed with all below", ["X/A: 1", "X/B: 2", "removed X/C X/C", "X/Cd: 4"], {"X/C"}, 0),
    ("lost, not removed", ["X/A: 1", "X/B: 2", "removed X/C X/C", "X/Cd: 4"], set(), 1),
    ("still there", _PRESENT, {"X/C"}, 1),
    ("removed, but answers", ["X/A: 1", "X/B: 2", "removed X/C X/C", "C: removed, but answers",
                              "X/Cd: 4"], {"X/C"}, 1),
]


def _quietly(call, *arguments) -> int:
    with contextlib.redirect_stdout(io.StringIO()), contextlib.redirect_stderr(io.StringIO()):
        return call(*arguments)


class GrowthTest(unittest.TestCase):
    def _headers(self, accessors: list[tuple[str, str]] | None) -> Path:
        folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        if accessors is not None:
            lines = "".join(f"    virtual std::shared_ptr<{handle}>\n    {name}() const = 0;\n"
                            for handle, name in accessors)
            (folder / "IKWFunctionX.h").write_text(
                f"class KW_EXPORT IKWFunctionX : public IKWFunctionBase\n{{\npublic:\n{lines}}};\n",
                encoding="utf-8")
        return folder

    def test_moved_accessor_passes(self) -> None:
        for name, accessors, wanted in _ORDERS:
            with self.subTest(name):
                found = _quietly(growth.check_order, self._headers([_A, _B]),
                                 self._headers(accessors))
                self.assertEqual(found, wanted)

    def test_other_answer_passes(self) -> None:
        for name, lines, removed, wanted in _ANSWERS:
            with self.subTest(name):
                self.assertEqual(_quietly(growth.compare, _PRESENT, lines, removed), wanted)


if __name__ == "__main__":
    unittest.main()
