# SPDX-License-Identifier: MIT
"""Third stage: sources of the group classes, one per model file."""

from . import cpptext, naming
from .declarations import parts_of_constructor, statements
from .model import Group, Model


def _handle(group: Group) -> str:
    handle = naming.interface(group.name)
    base = "CDbRootHandle" if group.root else "CDbGroupHandle"
    accessors = ""
    for accessor, kind, name, removed in naming.accessors(group):
        result = f"std::shared_ptr<{kind}>"
        head = cpptext.signature(result, f"{accessor}() const override", 4)
        node = naming.removed_accessor(name) if removed else accessor
        body = f"return m_node.{node}()->GetFIMPointer();"
        accessors += f"{head}\n    {{\n        {body}\n    }}\n"
    head = cpptext.class_head(f"CFIM{group.name} final", f"{base}<{handle}, {naming.generated_class(group)}>")
    return f"{head}\n{{\npublic:\n    using {base}::{base};\n{accessors}}};\n"


def _function(name: str, lines: list[str], parameter: str = "") -> str:
    body = "".join(f"{line}\n" for line in lines)
    if parameter and "(index, " not in body and "(index)" not in body:
        parameter = f"[[maybe_unused]] {parameter}"
    return f"{name}({parameter})\n{{\n{body}}}\n"


def _constructor(group: Group) -> str:
    node = naming.generated_class(group)
    parts = parts_of_constructor(group)
    parameter = naming.constructor_parameter(group)
    if not parts:
        return _function(f"{node}::{node}", statements(group), parameter)
    argument = "index" if parameter else ""
    calls = [f"    {part}({argument});" for part in parts]
    functions = [
        _function(f"void {node}::{part}", lines, parameter) for part, lines in parts.items()
    ]
    return "\n".join([_function(f"{node}::{node}", calls, parameter), *functions])


def _meanings(group: Group) -> str:
    """Behind the group's own text stand the words of remote control that names do not make."""
    words = [m.remote for m in (*group.properties, *group.children, *group.actions) if m.remote]
    brief = cpptext.escape(group.brief) + "".join(f"\\001{word}" for word in words)
    texts = [*(p.brief for p in group.properties), *(a.brief for a in group.actions)]
    lines = "\n".join(
        f'           "{text}\\0"' for text in (brief, *(cpptext.escape(text) for text in texts))
    )
    return (
        f"const char* {naming.generated_class(group)}::Meanings()\n{{\n"
        f"    return {lines.lstrip()};\n}}\n"
    )


def _definitions(group: Group) -> str:
    node = naming.generated_class(group)
    handle = naming.interface(group.name)
    pointer = cpptext.signature(f"std::shared_ptr<{handle}>", f"{node}::GetFIMPointer()")
    return (
        f"{handle}::~{handle}() = default;\n\n"
        f"{_constructor(group)}\n"
        f"{node}::~{node}() = default;\n\n"
        f"std::unique_ptr<IKWFunctionBase> {node}::CreateFIM()\n{{\n"
        f"    return std::make_unique<CFIM{group.name}>(*this);\n}}\n\n"
        f"{pointer}\n{{\n"
        f"    return FIMPointer<{handle}>();\n}}\n\n"
        f"{_meanings(group)}"
    )


def _source_includes(groups: list[Group], model: Model) -> str:
    """Handles come first, those of containers' items too: the compiler exports IKWArray<I> only
    where it knows, before it comes to the template, that I is exported."""
    nodes = {f"{g.in_room(naming.generated_stem(g))}.h" for g in groups}
    nodes |= {
        f"{model.groups[c.group].in_room(naming.child_stem(c))}.h"
        for g in groups for c in g.declared.children
    }
    handles = {g.name for g in groups}
    handles |= {c.group for g in groups for c in g.children if c.kind != "single"}
    headers = [f"{naming.interface(name)}.h" for name in sorted(handles)] + sorted(nodes)
    return "".join(f'#include "{header}"\n' for header in headers)


def _source(groups: list[Group], model: Model) -> str:
    includes = _source_includes(groups, model)
    handle_classes = "\n".join(_handle(group) for group in groups)
    definitions = "\n".join(_definitions(group) for group in groups)
    return (
        f"{cpptext.head(f'{groups[0].file}.toml')}"
        f'#include "CommonDatabase/Handles/DbHandles.h"\n{includes}\n'
        f"namespace\n{{\n{handle_classes}}} // namespace\n\n{definitions}"
    )


def emit(model: Model) -> dict[str, str]:
    """Sources of all groups: path below the output folder, and content."""
    files: dict[str, list[Group]] = {}
    for group in model.groups.values():
        files.setdefault(group.in_room(f"Groups_{group.file}.cpp"), []).append(group)
    return {f"src/{path}": _source(groups, model) for path, groups in files.items()}
