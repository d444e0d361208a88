# SPDX-License-Identifier: MIT
"""Third stage: what editors and type checkers know of the tree in Python, and the list of
enumerations that the module for Python is compiled with. At run time Python walks the tree."""

import textwrap

from . import cpptext, facts
from .cpptext import GENERATED
from .emit_reference import group_paths
from .model import Action, Child, EnumType, EnumValue, Group, Model, Property

_HEAD = (
    "# SPDX-License-Identifier: MIT\n"
    f"# {GENERATED} the model: change the model, not this file.\n"
)
_FOLDER = "python/kwifunctionzel"

_KINDS = {
    "double": "Number", "string": "Text", "bitpattern": "Text", "filepath": "Text",
    "blob": "Bytes", "reference": "Reference",
}

_DESCRIPTORS = '''
_E = TypeVar("_E", bound=Enumeration)

# How members read and are written: results not at all. Texts of numbers may have a prefix and a
# unit: "2 ms/div".

class _NumberResult:
    def __get__(self, group: object, owner: object = ...) -> float: ...
    def __set__(self, group: object, value: NoReturn) -> None: ...

class _Number(_NumberResult):
    def __set__(self, group: object, value: float | str) -> None: ...

class _WholeResult:
    def __get__(self, group: object, owner: object = ...) -> int: ...
    def __set__(self, group: object, value: NoReturn) -> None: ...

class _Whole(_WholeResult):
    def __set__(self, group: object, value: int | str) -> None: ...

class _ChoiceResult(Generic[_E]):
    def __get__(self, group: object, owner: object = ...) -> _E: ...
    def __set__(self, group: object, value: NoReturn) -> None: ...

class _Choice(_ChoiceResult[_E]):
    def __set__(self, group: object, value: _E | str) -> None: ...

class _SwitchResult:
    def __get__(self, group: object, owner: object = ...) -> enums.KW_ONOFF: ...
    def __set__(self, group: object, value: NoReturn) -> None: ...

class _Switch(_SwitchResult):
    def __set__(self, group: object, value: enums.KW_ONOFF | bool | str) -> None: ...

class _TextResult:
    def __get__(self, group: object, owner: object = ...) -> str: ...
    def __set__(self, group: object, value: NoReturn) -> None: ...

class _Text(_TextResult):
    def __set__(self, group: object, value: str) -> None: ...

class _BytesResult:
    def __get__(self, group: object, owner: object = ...) -> bytes: ...
    def __set__(self, group: object, value: NoReturn) -> None: ...

class _Bytes(_BytesResult):
    def __set__(self, group: object, value: bytes | bytearray | memoryview) -> None: ...

class _ReferenceResult(_TextResult): ...

class _Reference(_ReferenceResult):
    def __set__(self, group: object, value: str | Group | None) -> None: ...
'''


def member_name(serial: str | None, number: int) -> str:
    """What a value is called in Python: its serial name, which is one that Python can take but
    where it begins with a digit; "N" stands in front then. The package has the same rule."""
    text = serial or str(number)
    return f"N{text}" if text[0].isdigit() else text


def _doc(text: str, indent: int) -> str:
    """A doc string, as one block."""
    escaped = text.replace("\\", "\\\\").replace('"""', '\\"\\"\\"')
    if escaped.endswith('"'):
        escaped += " "
    space = " " * indent
    lines = textwrap.wrap(escaped, cpptext.WIDTH - indent - 6, break_long_words=False,
                          break_on_hyphens=False)
    return f'{space}"""' + f"\n{space}".join(lines) + '"""\n'


def _descriptor(prop: Property) -> str:
    result = "Result" if prop.result else ""
    if prop.enum and prop.enum.name == "KW_ONOFF":
        return f"_Switch{result}"
    if prop.enum:
        return f"_Choice{result}[enums.{prop.enum.name}]"
    return f"_{_KINDS.get(prop.kind, 'Whole')}{result}"


def _child_type(child: Child) -> str:
    own = f"_tree.{child.group}"
    return own if child.kind == "single" else f"{child.kind.capitalize()}[{own}]"


def _property(prop: Property) -> str:
    return f"    {prop.name}: {_descriptor(prop)}\n{_doc(facts.describe_property(prop), 4)}"


def _getter(name: str, kind: str, doc: str) -> str:
    return (f"    @property\n    def {name}(self) -> {kind}:\n"
            f"{_doc(doc, 8)}")


def _action(action: Action) -> str:
    return _getter(action.name, "Action", facts.describe_action(action))


def _group(group: Group, model: Model) -> str:
    members = [_property(p) for p in group.properties]
    members += [_getter(c.name, _child_type(c), facts.describe_child(c, model))
                for c in group.children]
    members += [_action(a) for a in group.actions]
    base = "Root" if group.root else "Group"
    body = "\n".join(members)
    return f"\nclass {group.name}({base}):\n{_doc(facts.sentence(group.brief), 4)}{body}"


def _tree(model: Model) -> str:
    # Members have the names of their groups often: "_tree" tells one from the other.
    imports = (
        '"""The classes of groups, for editors and type checkers."""\n\n'
        "from typing import Generic, NoReturn, TypeVar\n\n"
        "import kwifunctionzel.tree as _tree\n"
        "from kwifunctionzel import enums\n"
        "from kwifunctionzel.enumerations import Enumeration\n"
        "from kwifunctionzel.nodes import Action, Array, Group, Map, Root\n"
    )
    # What was removed has no place in the tree.
    places = group_paths(model)
    groups = "".join(_group(g, model) for g in model.groups.values() if places[g.name])
    return f"{_HEAD}{imports}{_DESCRIPTORS}{groups}"


def _of_value(value: EnumValue) -> str:
    return facts.sentence(f"{value.label}: {value.brief}" if value.brief else value.label)


def _enumeration(enum: EnumType) -> str:
    values = "".join(
        f"    {member_name(v.serial, v.number)} = {v.number}\n{_doc(_of_value(v), 4)}"
        for v in enum.values
    )
    return f"\nclass {enum.name}(Enumeration):\n{_doc(facts.sentence(enum.brief), 4)}{values}"


def _enumerations(model: Model) -> str:
    classes = "".join(_enumeration(enum) for enum in model.enums.values())
    return (
        f'{_HEAD}"""All enumerations of the tree; each is made when it is first asked for."""\n\n'
        f"from kwifunctionzel.enumerations import Enumeration\n{classes}"
    )


def _types(model: Model) -> str:
    rows = " \\\n".join(f"    X({name})" for name in model.enums)
    return (
        f"{cpptext.head('the enumeration files')}#pragma once\n\n"
        '#include "KWEnumerations.h"\n\n'
        f"/** All enumerations, each as an argument of X. */\n#define KWI_ENUMERATIONS(X) \\\n{rows}\n"
    )


def _docstring(enum: EnumType) -> str:
    """What the stub says of the class and of its members."""
    lines = [facts.sentence(enum.brief), ""]
    lines += [f"{member_name(v.serial, v.number)}: {_of_value(v)}" for v in enum.values]
    literals = "\n".join(f'        "{cpptext.escape(line)}\\n"' for line in lines)
    return f'    {{"{enum.name}",\n{literals}}},\n'


def _docs(model: Model) -> str:
    rows = "".join(map(_docstring, model.enums.values()))
    return (
        f"{cpptext.head('the enumeration files')}#pragma once\n\n"
        "/** Docstrings of the enumerations, in UTF-8. */\n"
        "struct t_EnumDoc\n{\n    const char* type;\n    const char* doc;\n};\n"
        f"constexpr t_EnumDoc kEnumDocs[] = {{\n{rows}}};\n"
    )


def emit(model: Model) -> dict[str, str]:
    """Stubs, the list and docstrings: path below the output folder, and content."""
    return {
        f"{_FOLDER}/tree.pyi": _tree(model),
        f"{_FOLDER}/enums.pyi": _enumerations(model),
        "python/EnumTypes.h": _types(model),
        "python/EnumDocs.h": _docs(model),
    }
