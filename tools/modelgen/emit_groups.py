# SPDX-License-Identifier: MIT
"""Third stage: headers of the group, array and map classes."""

from . import cpptext, facts, naming
from .declarations import parts_of_constructor
from .model import Group, Model


def _includes(group: Group) -> str:
    headers = {"Nodes/DbPgRoot.h" if group.root else "Nodes/ZELPropertyGroup.h"}
    declared = group.declared
    headers |= {naming.property_header(p) for p in declared.properties}
    headers |= {"Nodes/DbFunction.h"} if declared.actions else set()
    lines = [f'#include "CommonDatabase/{header}"\n' for header in sorted(headers)]
    lines += [f'#include "Names/{group.name}.h"\n'] if group.rules else []
    return "".join(lines)


def _forwards(group: Group) -> str:
    names = {naming.child_class(child) for child in group.declared.children}
    names.add(naming.interface(group.name))
    return "".join(f"class {name};\n" for name in sorted(names)) + naming.enum_forwards(group)


def _accessor(accessor: str, node: str, name: str) -> str:
    line = f"    {node}* {accessor}() const {{ return m_p{name}; }}\n"
    if len(line) <= cpptext.WIDTH + 1:
        return line
    head = cpptext.signature(f"{node}*", f"{accessor}() const", 4)
    return f"{head}\n    {{\n        return m_p{name};\n    }}\n"


def _accessors(group: Group, model: Model) -> str:
    documents = facts.describe_members(group, model)
    return "".join(
        f"{cpptext.doc(documents[name], 4)}\n{_accessor(accessor, node, name)}"
        for accessor, node, _, name in naming.members(group)
    )


def _removed_accessors(group: Group) -> str:
    nodes = naming.members(group.removed)
    lines = "".join(
        f"    {node}* {naming.removed_accessor(name)}() const {{ return m_p{name}.get(); }}\n"
        for _, node, _, name in nodes
    )
    return f"\n    /** Of the handle alone: parts of no tree. */\n    ///@{{\n{lines}    ///@}}\n" \
        if nodes else ""


def _class_text(group: Group) -> str:
    text = facts.sentence(group.brief)
    if group.rules:
        text += f" Its rules are in {naming.final_class(group.name)}."
    return text


def _header(group: Group, model: Model) -> str:
    name = naming.generated_class(group)
    handle = naming.interface(group.name)
    base = naming.ROOT_BASE if group.root else naming.GROUP_BASE
    member_lines = "".join(f"    {node}* m_p{n};\n" for _, node, _, n in naming.members(group))
    parameter = naming.constructor_parameter(group)
    names = f"    using Names = NNames::{group.name};\n" if group.rules else ""
    own = "".join(f"    void {part}({parameter});\n" for part in parts_of_constructor(group))
    own += "".join(
        f"    std::shared_ptr<{node}> m_p{n};\n" for _, node, _, n in naming.members(group.removed)
    )
    return (
        f"{cpptext.head(f'{group.file}.toml')}#pragma once\n\n{_includes(group)}\n"
        f"{_forwards(group)}\n{cpptext.doc(_class_text(group))}\n"
        f"class {name} : public {base}\n{{\npublic:\n    using Interface = {handle};\n{names}\n"
        f"    {naming.constructor_head(group)};\n    ~{name}() override;\n\n"
        f"    std::shared_ptr<{handle}> GetFIMPointer();\n"
        f"    const char* GetMeanings() const override {{ return Meanings(); }}\n"
        f"    static const char* Meanings();\n\n{_accessors(group, model)}"
        f"{_removed_accessors(group)}\n"
        f"protected:\n    std::unique_ptr<IKWFunctionBase> CreateFIM() override;\n"
        + (f"\n{member_lines}" if member_lines else "")
        + (f"\nprivate:\n{own}" if own else "")
        + "};\n"
    )


def _container(group: Group, kind: str) -> str:
    item = naming.final_class(group.name)
    stem, base, text = {
        "array": (f"Pga{group.name}", f"CDbPgArray<{item}, CDbPgArrayBase>", "Array of groups"),
        "map": (f"Pgm{group.name}", f"CDbPgMap<{item}>", "Map of groups"),
    }[kind]
    template = base.split("<")[0]
    own = group.in_room(f"Pg{group.name}.h")
    return (
        f"{cpptext.head(f'{group.file}.toml')}#pragma once\n\n"
        f'#include "CommonDatabase/Containers/{template[1:]}.h"\n'
        f'#include "{own}"\n\n'
        f"{cpptext.doc(f'{text}: {facts.sentence(group.brief)}')}\n"
        f"{cpptext.class_head(f'C{stem} final', base)}\n{{\npublic:\n"
        f"    using {template}::{template};\n}};\n"
    )


def emit(model: Model) -> dict[str, str]:
    """Class headers of all groups: path below the output folder, and content."""
    files = {}
    kinds = {(c.group, c.kind) for group in model.groups.values() for c in group.declared.children}
    for group in model.groups.values():
        files[f"src/{group.in_room(naming.generated_stem(group))}.h"] = _header(group, model)
        if (group.name, "array") in kinds:
            files[f"src/{group.in_room(f'Pga{group.name}')}.h"] = _container(group, "array")
        if (group.name, "map") in kinds:
            files[f"src/{group.in_room(f'Pgm{group.name}')}.h"] = _container(group, "map")
    return files
