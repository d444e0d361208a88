# SPDX-License-Identifier: MIT
"""Third stage: the enumerations and their name tables in C++."""

from . import cpptext, naming
from .model import EnumType, EnumValue, Model


def _enumerator(value: EnumValue, last: bool) -> str:
    code = f"    {value.enumerator} = {value.number}{'' if last else ','}"
    text = f"{value.label}: {value.brief}" if value.brief else value.label
    trailing = f"{code} ///< {cpptext.comment_text(text)}"
    if len(trailing) <= cpptext.WIDTH:
        return trailing
    return f"{cpptext.doc(text, 4)}\n{code}"


def _table_head(enum: EnumType, export: str = "") -> str:
    function = f"GetStaticEnumNameInfo<{enum.name}>()"
    return cpptext.signature(f"{export}const CEnumNameInfo&", function)


def _declaration(enum: EnumType) -> str:
    last = len(enum.values) - 1
    values = "\n".join(_enumerator(v, v.number == last) for v in enum.values)
    table = _table_head(enum, "KW_EXPORT ")
    steps = f"inline constexpr bool KW_STEPS_BY_NUMBER<{enum.name}> = true;"
    steps = f"template <>\n{steps}\n" if enum.steps_by_number else ""
    return (
        f"{cpptext.doc(enum.brief)}\n"
        f"enum {enum.name} : INT32\n{{\n{values}\n}};\n"
        f"template <>\n{table};\n{steps}"
    )


def _texts(name: str, texts: list[str | None]) -> tuple[str, str]:
    """Declaration of one kind of texts and the name to hand on; nothing when no text is set."""
    if all(text is None for text in texts):
        return "", "nullptr"
    literal = cpptext.packed_texts(texts, 8)
    one_line = f"    static constexpr char16_t {name}[] = {literal};\n"
    if len(one_line) <= cpptext.WIDTH + 1 and "\n" not in literal:
        return one_line, name
    return f"    static constexpr char16_t {name}[] =\n        {literal};\n", name


def _numbers(enum: EnumType) -> tuple[str, str]:
    """The numbers that values stand for; NaN where a value stands for none."""
    if all(v.value is None for v in enum.values):
        return "", ""
    items = [cpptext.real(float("nan") if v.value is None else v.value) for v in enum.values]
    start = "    static constexpr double kNumbers[] = "
    return f"{start}{cpptext.braced(items, len(start))};\n", ", kNumbers"


def _table(enum: EnumType) -> str:
    display, display_name = _texts("kDisplay", [v.display for v in enum.values])
    short, short_name = _texts("kShort", [v.short for v in enum.values])
    remote, remote_name = _texts("kRemote", [v.remote for v in enum.values])
    serial, serial_name = _texts("kSerial", [v.serial for v in enum.values])
    numbers, numbers_argument = _numbers(enum)
    names = f"{{{display_name}, {short_name}, {remote_name}, {serial_name}}}"
    return (
        f"template <>\n{_table_head(enum)}\n{{\n"
        f"{display}{short}{remote}{serial}{numbers}"
        f'    static const CEnumNameInfo info({len(enum.values)}, u"{enum.name}",\n'
        f"                                    {names}{numbers_argument});\n"
        f"    return info;\n}}\n"
    )


def _header(stem: str, enums: list[EnumType]) -> str:
    declarations = "\n".join(_declaration(enum) for enum in enums)
    return (
        f"{cpptext.head(f'{stem}.toml')}#pragma once\n\n"
        f"#include <EnumNameInfo.h>\n\n{declarations}"
    )


def _umbrella(stems: list[str]) -> str:
    text = cpptext.doc("All enumerations at once. A source that names few of them includes their "
                       "own headers, and is compiled again when those change alone.")
    includes = "".join(f'#include "{naming.enum_header(stem)}"\n' for stem in sorted(stems))
    return f"{cpptext.head('the enumeration files')}#pragma once\n\n{text}\n{includes}"


def _source(stem: str, enums: list[EnumType]) -> str:
    limits = any(
        v.value is None or v.value in (float("inf"), float("-inf"))
        for e in enums if any(w.value is not None for w in e.values) for v in e.values
    )
    include = "\n#include <limits>\n" if limits else ""
    tables = "\n".join(_table(enum) for enum in enums)
    properties = "".join(f"template CDbPropEnum<{e.name}>::CDbPropEnum();\n" for e in enums)
    return (
        f"{cpptext.head(f'{stem}.toml')}"
        f'#include "CommonDatabase/Properties/DbPropEnumType.h"\n'
        f'#include "{naming.enum_header(stem)}"\n{include}\n{tables}\n{properties}'
    )


def emit(model: Model) -> dict[str, str]:
    """Files of all enumerations: path below the output folder, and content."""
    stems: dict[str, list[EnumType]] = {}
    for enum in model.enums.values():
        stems.setdefault(enum.file, []).append(enum)
    files = {"ifc/KWEnumerations.h": _umbrella(list(stems))}
    for stem, enums in stems.items():
        files[f"ifc/{naming.enum_header(stem)}"] = _header(stem, enums)
        files[f"database/EnumNames_{stem}.cpp"] = _source(stem, enums)
    return files
