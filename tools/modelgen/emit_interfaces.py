# SPDX-License-Identifier: MIT
"""Third stage: the handle classes that clients include."""

from . import cpptext, facts, naming
from .model import Group, Model


def _forwards(group: Group) -> str:
    names = {naming.interface(child.group) for child in group.declared.children}
    if group.root:
        names.add(naming.interface(group.name))
    lines = "".join(f"class {name};\n" for name in sorted(names))
    return f"\n{lines}" if lines else ""


def _accessors(group: Group, model: Model) -> str:
    documents = facts.describe_accessors(group, model)
    text = ""
    for accessor, handle, name, removed in naming.accessors(group):
        result = f"{'[[deprecated]] ' if removed else ''}virtual std::shared_ptr<{handle}>"
        head = cpptext.signature(result, f"{accessor}() const = 0;", 4)
        text += f"{cpptext.doc(documents[name], 4)}\n{head}\n"
    return text


def _root_accessor(group: Group) -> str:
    name = naming.interface(group.name)
    text = (
        "The root of the tree, built on the first call. The library holds it weakly: the tree "
        "lives as long as anyone holds the result, and a later call builds a fresh one with "
        "defaults. Callable from any thread. When memory runs out on the way, std::bad_alloc reaches "
        "the caller and no part of a tree is left; the next call begins anew."
    )
    accessor = f"KW_EXPORT std::shared_ptr<{name}> Get{group.name}Root();\n"
    return f"{cpptext.doc(text)}\n{accessor}"


def _header(group: Group, model: Model) -> str:
    name = naming.interface(group.name)
    base = "IKWFunctionRootBase" if group.root else "IKWFunctionBase"
    root = f"\n{_root_accessor(group)}" if group.root else ""
    enums = "".join(f'#include "{h}"\n' for h in naming.enum_headers(group, model))
    return (
        f"{cpptext.head(f'{group.file}.toml')}#pragma once\n\n"
        f'#include "{base}.h"\n#include "IKWProperties.h"\n{enums}\n'
        f"#include <memory>\n"
        f"{_forwards(group)}{root}\n"
        f"{cpptext.doc(facts.sentence(group.brief))}\n"
        f"class KW_EXPORT {name} : public {base}\n{{\npublic:\n"
        f"    ~{name}() override;\n"
        f"{_accessors(group, model)}}};\n"
    )


def emit(model: Model) -> dict[str, str]:
    """Files of all handle classes: path below the output folder, and content."""
    return {
        f"ifc/{naming.interface(group.name)}.h": _header(group, model)
        for group in model.groups.values()
    }
