# SPDX-License-Identifier: MIT
"""How values and texts are spelled in C++."""

import math
import re
import textwrap

WIDTH = 100

GENERATED = "Generated from"
"""Stands in the first lines of every generated file, and of no other."""

INTEGER_RANGES = {
    "int16": (-(2**15), 2**15 - 1),
    "uint16": (0, 2**16 - 1),
    "int32": (-(2**31), 2**31 - 1),
    "uint32": (0, 2**32 - 1),
    "int64": (-(2**63), 2**63 - 1),
    "uint64": (0, 2**64 - 1),
}

# Not INT64_C: its "long" on some platforms is none of the types that a QVariant takes.
_INTEGER_FORMS = {"uint32": "{}U", "int64": "{}LL", "uint64": "{}ULL"}


def head(*sources: str) -> str:
    """First lines of every generated C++ file."""
    return (
        "// SPDX-License-Identifier: MIT\n"
        f"// {GENERATED} {', '.join(sources)}: change the model, not this file.\n"
    )


def real(value: float) -> str:
    """A double in the shortest form that reads back as the same number."""
    if math.isnan(value):
        return "std::numeric_limits<double>::quiet_NaN()"
    if math.isinf(value):
        sign = "-" if value < 0 else ""
        return f"{sign}std::numeric_limits<double>::infinity()"
    return repr(float(value))


def number(kind: str, value: int | float) -> str:
    """A value of a numeric property type."""
    if kind == "double":
        return real(value)
    form = _INTEGER_FORMS.get(kind, "{}")
    if kind in ("int32", "int64") and value == INTEGER_RANGES[kind][0]:
        # The magnitude alone would not fit into the type before the sign is applied.
        return f"(-{form.format(-value - 1)} - 1)"
    if value < 0:
        return f"-{form.format(-value)}"
    return form.format(value)


def escape(text: str) -> str:
    """The inside of a string literal. Control characters do not reach this place."""
    return text.replace("\\", "\\\\").replace('"', '\\"')


def qstring(text: str) -> str:
    """A text as a QString without a conversion at run time."""
    return f'QStringLiteral("{escape(text)}")'


def call(function: str, arguments: list[str], indent: int = 4) -> str:
    """A call statement, broken between arguments where it would pass the line's end."""
    lines = [" " * indent + f"{function}("]
    for i, argument in enumerate(arguments):
        piece = argument + ("," if i + 1 < len(arguments) else ");")
        gap = "" if i == 0 else " "
        if len(lines[-1]) + len(gap) + len(piece.split("\n")[0]) > WIDTH:
            lines.append(" " * (indent + 4) + piece)
        else:
            lines[-1] += gap + piece
    return "\n".join(lines) if arguments else lines[0] + ");"


def signature(result: str, declarator: str, indent: int = 0) -> str:
    """Head of a function, broken behind its result where the line would be too long."""
    pad = " " * indent
    line = f"{pad}{result} {declarator}"
    return line if len(line) <= WIDTH else f"{pad}{result}\n{pad}{declarator}"


def class_head(name: str, base: str) -> str:
    """First line of a class, broken before its base where it would be too long."""
    line = f"class {name} : public {base}"
    return line if len(line) <= WIDTH else f"class {name}\n    : public {base}"


def braced(items: list[str], used: int, indent: int = 8) -> str:
    """A braced list behind `used` columns, broken where it would pass the line's end."""
    flat = "{" + ", ".join(items) + "}"
    if used + len(flat) + 2 <= WIDTH:
        return flat
    pad = " " * indent
    lines, line = [], pad
    for i, item in enumerate(items):
        piece = item + ("," if i + 1 < len(items) else "}")
        if line.strip() and len(line) + 1 + len(piece) + 2 > WIDTH:
            lines.append(line)
            line = pad
        line += (" " if line.strip() else "") + piece
    return "{\n" + "\n".join([*lines, line])


def comment_text(text: str) -> str:
    """A text that neither ends a comment nor, by a closing backslash, swallows the next line."""
    text = text.replace("*/", "* /")
    return text + "." if text.endswith("\\") else text


def doc(text: str, indent: int = 0) -> str:
    """A documentation comment in one or several lines."""
    text = comment_text(text)
    pad = " " * indent
    if len(pad) + len(text) + 7 <= WIDTH:
        return f"{pad}/** {text} */"
    # A line that begins with "5." would begin a list: such a number stays with the word before it.
    bound = re.sub(r" (?=-?\d+\.( |$))", "\N{NO-BREAK SPACE}", text)
    lines = [
        line.replace("\N{NO-BREAK SPACE}", " ")
        for line in textwrap.wrap(
            bound, WIDTH - indent - 4, break_long_words=False, break_on_hyphens=False
        )
    ]
    joined = f"\n{pad}    ".join(lines)
    if len(lines[-1]) + indent + 7 > WIDTH:
        return f"{pad}/** {joined}\n{pad} */"
    return f"{pad}/** {joined} */"


def packed_texts(texts: list[str | None], indent: int) -> str:
    """Texts as one UTF-16 literal, separated by zero characters; U+0001 for a text not set.
    A break between lines stands between texts."""
    lines, line = [], ""
    for i, text in enumerate(texts):
        piece = "\\x01" if text is None else escape(text)
        following = texts[i + 1] if i + 1 < len(texts) else None
        if i + 1 < len(texts):
            # A short octal escape would take digits of the next text for its own.
            piece += "\\000" if following and following[0] in "01234567" else "\\0"
        if line and indent + len(line) + len(piece) + 4 > WIDTH:
            lines.append(line)
            line = ""
        line += piece
    return ("\n" + " " * indent).join(f'u"{part}"' for part in [*lines, line])
