# SPDX-License-Identifier: MIT
"""Spelling of texts and numbers in C++, read back by a reader of its own."""

import random
import re
import unittest

from support import HERE  # noqa: F401

from modelgen import cpptext

_PIECE = re.compile(r'\\x([0-9A-Fa-f]+)|\\([0-7]{1,3})|\\(.)|(.)', re.DOTALL)


def _read_literals(source: str) -> str:
    """The text that a C++ compiler makes of adjacent u"…" literals."""
    inside = re.findall(r'u"((?:[^"\\\n]|\\.)*)"', source)
    if re.sub(r'u"(?:[^"\\\n]|\\.)*"', "", source).strip():
        raise AssertionError(f"more than literals: {source}")
    text = ""
    for part in inside:
        for hexadecimal, octal, escaped, plain in _PIECE.findall(part):
            text += (chr(int(hexadecimal, 16)) if hexadecimal
                     else chr(int(octal, 8)) if octal else escaped or plain)
    return text


class TextTest(unittest.TestCase):
    def _check(self, texts: list[str | None]) -> None:
        source = cpptext.packed_texts(texts, 8)
        wanted = "\0".join("\x01" if text is None else text for text in texts)
        self.assertEqual(_read_literals(source), wanted, source)
        self.assertLessEqual(max(len(f"        {line.strip()};") for line in source.split("\n")),
                             cpptext.WIDTH)

    def test_compiler_reads_other_texts(self) -> None:
        seed = 20240229
        generator = random.Random(seed)
        for round_number in range(200):
            with self.subTest(seed=seed, round=round_number):
                self._check([
                    generator.choice([None, "".join(generator.choices('0123456789aF"\\ µ∞', k=n))])
                    for n in generator.choices(range(12), k=generator.randint(1, 60))
                ])

    def test_numbers_lose_digits_or_their_type(self) -> None:
        for kind, value, wanted in [
            ("double", 0, "0.0"), ("double", 100, "100.0"), ("double", 1e-9, "1e-09"),
            ("double", 0.1, "0.1"), ("double", -2.5e300, "-2.5e+300"),
            ("double", 0.1 + 0.2, "0.30000000000000004"), ("int16", -32768, "-32768"),
            ("uint16", 65535, "65535"), ("int32", -2147483648, "(-2147483647 - 1)"),
            ("int32", -5, "-5"), ("uint32", 4294967295, "4294967295U"), ("int64", -1, "-1LL"),
            ("int64", -(2**63), "(-9223372036854775807LL - 1)"),
            ("uint64", 2**64 - 1, "18446744073709551615ULL"),
        ]:
            with self.subTest(kind=kind, value=value):
                self.assertEqual(cpptext.number(kind, value), wanted)

    def test_long_statement_runs_over(self) -> None:
        long = "V" * 60
        for text, wanted in [
            (cpptext.signature(f"C{long}*", f"Get{long}() const", 4),
             f"    C{long}*\n    Get{long}() const"),
            (cpptext.signature("int", "Get()", 4), "    int Get()"),
            (cpptext.class_head(f"C{long}", f"B{long}"), f"class C{long}\n    : public B{long}"),
            (cpptext.call("Add", [f"a{long}", f"b{long}"]),
             f"    Add(a{long},\n        b{long});"),
            (cpptext.call(f"Add{long}", [f"a{long}"]), f"    Add{long}(\n        a{long});"),
            ("x = " + cpptext.braced([long, long], 4),
             f"x = {{\n        {long},\n        {long}}}"),
        ]:
            with self.subTest(wanted):
                self.assertEqual(text, wanted)

    def test_comment_ends_early_or_swallows_code(self) -> None:
        for text in ("a */ b", "ends in \\"):
            with self.subTest(text):
                comment = cpptext.doc(text)
                self.assertEqual(comment.count("*/"), 1)
                self.assertFalse(cpptext.comment_text(text).endswith("\\"))

    def test_no_wrapped_line_begins_like_an_item_of_a_list(self) -> None:
        for length in range(60, 110):
            text = "word " * (length // 5) + "x" * (length % 5 + 1) + " is 5000000000. Default: -5."
            comment = cpptext.doc(text, 4)
            self.assertNotRegex(comment, r"(?m)^\s*(?:/\*\* )?-?\d+\.(?: |$)")
            self.assertEqual(" ".join(comment.split())[4:-3], text)
            self.assertLessEqual(max(map(len, comment.split("\n"))), cpptext.WIDTH)


if __name__ == "__main__":
    unittest.main()
