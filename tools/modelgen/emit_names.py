# SPDX-License-Identifier: MIT
"""Third stage: names of nodes as typed constants, by which rules follow and read other groups."""

from . import cpptext, facts, naming
from .model import Group, Model



def _forwards(group: Group) -> str:
    return f"{naming.enum_forwards(group)}class {naming.final_class(group.name)};\n"


def _tag(group: str) -> str:
    # Qualified: a member may bear the name of the group that it is.
    return f"NNames::{group}"


def _members(group: Group) -> list[tuple[str, str, str, int]]:
    """Name, kind of node, class of node and place in its list, of every member."""
    containers = {"single": "{}", "array": "t_Items<{}>", "map": "t_Items<{}>"}
    return (
        [(p.name, "Property", naming.property_class(p), i)
         for i, p in enumerate(group.properties)]
        + [(c.name, "Group", containers[c.kind].format(_tag(c.group)), i)
           for i, c in enumerate(group.children)]
        + [(a.name, "Action", naming.action_class(a), i) for i, a in enumerate(group.actions)]
    )


def _constant(group: Group, name: str, kind: str, node: str, place: int) -> str:
    head = f"    static constexpr t_Way<{_tag(group.name)}, {node}> {name}"
    value = f"{{{{eNODE::{kind}, false, 1, {{{place}}}}}}};\n"
    line = head + value
    if len(line) <= cpptext.WIDTH + 1:
        return line
    head = f"    static constexpr t_Way<{_tag(group.name)}, {node}>\n        {name}"
    line = head + value
    return line


def _header(group: Group) -> str:
    children = sorted({c.group for c in group.children} - {group.name})
    tags = "".join(f"struct {name};\n" for name in children)
    constants = "".join(_constant(group, *member) for member in _members(group))
    root = "    static constexpr bool isRoot = true;\n" if group.root else ""
    return (
        f"{cpptext.head(f'{group.file}.toml')}#pragma once\n\n"
        f'#include "CommonDatabase/Couplings/DbNames.h"\n\n{_forwards(group)}\n'
        f"namespace NNames\n{{\n{tags}{cpptext.doc(facts.sentence(group.brief))}\n"
        f"struct {group.name}\n{{\n    using t_Class = {naming.final_class(group.name)};\n"
        f"{root}{constants}}};\n}} // namespace NNames\n"
    )


def emit(model: Model) -> dict[str, str]:
    """One header of names for each group: path below the output folder, and content."""
    return {f"src/Names/{group.name}.h": _header(group) for group in model.groups.values()}
