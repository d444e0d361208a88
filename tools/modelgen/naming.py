# SPDX-License-Identifier: MIT
"""Names that the model's parts have in C++; every emitter takes them from here."""

from .model import (
    UNIT_TYPE, Action, Child, EnumType, EnumValue, Group, Members, Model, Property,
)

ROOT_BASE = "CDbPgRoot"
GROUP_BASE = "CZELPropertyGroup"

NUMBER_TYPES = {
    "int16": "INT16", "uint16": "UINT16", "int32": "INT32", "uint32": "UINT32",
    "int64": "INT64", "uint64": "UINT64", "double": "double",
}
_OTHER_TYPES = {
    # kind: node class, handle class, header of the node class
    "string": ("CDbPropString", "IKWStringProperty", "Properties/DbPropText.h"),
    "bitpattern": ("CDbPropBitPattern", "IKWBitPatternProperty", "Properties/DbPropText.h"),
    "filepath": ("CDbPropFilePath", "IKWFilePathProperty", "Properties/DbPropText.h"),
    "blob": ("CDbPropBlob", "IKWBlobProperty", "Properties/DbPropBlob.h"),
    "reference": ("CDbPropReference", "IKWReferenceProperty", "Containers/DbPropReference.h"),
}
_ACTION_TYPES = {
    "function": ("CDbFunction", "IKWAction"),
    "operation": ("CDbOperation", "IKWOperation"),
}
_CONTAINER_PREFIX = {"single": "Pg", "array": "Pga", "map": "Pgm"}
_CONTAINER_HANDLE = {"array": "IKWArray", "map": "IKWMap"}


def interface(group: str) -> str:
    """Handle class of a group."""
    return f"IKWFunction{group}"


def final_class(group: str) -> str:
    """Class whose objects stand in the tree."""
    return f"CPg{group}"


def generated_stem(group: Group) -> str:
    """File name, without its ending, of the generated class."""
    return f"Pg{group.name}Base" if group.rules else f"Pg{group.name}"


def generated_class(group: Group) -> str:
    """The generated class: the final one, or the base of a hand-written one."""
    return f"C{generated_stem(group)}"


def enum_header(stem: str) -> str:
    """Header of the enumerations of a model file."""
    return f"KWEnumerations{stem}.h"


def enum_types(group: Group) -> list[EnumType]:
    """Types of the group's enumeration properties, by name."""
    types = {p.enum.name: p.enum for p in group.declared.properties if p.enum}
    return [types[name] for name in sorted(types)]


def enum_forwards(group: Group) -> str:
    """Declarations of these types, enough for whoever names none of their values."""
    return "".join(f"enum {enum.name} : INT32;\n" for enum in enum_types(group))


def enum_headers(group: Group, model: Model) -> list[str]:
    """Headers of all enumerations that the group's values have: their types, and units."""
    stems = {enum.file for enum in enum_types(group)}
    if any(p.kind in NUMBER_TYPES for p in group.declared.properties):
        stems |= {model.enums[UNIT_TYPE].file} if UNIT_TYPE in model.enums else set()
    return sorted(enum_header(stem) for stem in stems)


def property_class(prop: Property) -> str:
    if prop.enum:
        return f"CDbPropEnum<{prop.enum.name}>"
    if prop.kind in NUMBER_TYPES:
        return f"CDbPropNum<{NUMBER_TYPES[prop.kind]}>"
    return _OTHER_TYPES[prop.kind][0]


def property_handle(prop: Property) -> str:
    if prop.enum:
        return f"IKWEnumProperty<{prop.enum.name}>"
    if prop.kind in NUMBER_TYPES:
        return f"IKWNumericProperty<{NUMBER_TYPES[prop.kind]}>"
    return _OTHER_TYPES[prop.kind][1]


def property_header(prop: Property) -> str:
    """Header of the frame that defines the property's class."""
    if prop.enum:
        return "Properties/DbPropEnum.h"
    if prop.kind in NUMBER_TYPES:
        return "Properties/DbPropNum.h"
    return _OTHER_TYPES[prop.kind][2]


def child_stem(child: Child) -> str:
    """File name, without its ending, of a child's class."""
    return f"{_CONTAINER_PREFIX[child.kind]}{child.group}"


def child_class(child: Child) -> str:
    return f"C{child_stem(child)}"


def child_handle(child: Child) -> str:
    item = interface(child.group)
    return item if child.kind == "single" else f"{_CONTAINER_HANDLE[child.kind]}<{item}>"


def action_class(action: Action) -> str:
    return _ACTION_TYPES[action.kind][0]


def action_handle(action: Action) -> str:
    return _ACTION_TYPES[action.kind][1]


def members(group: Group | Members) -> list[tuple[str, str, str, str]]:
    """All members in list order: accessor, node class, handle class, name."""
    return (
        [(f"GetPr{p.name}", property_class(p), property_handle(p), p.name)
         for p in group.properties]
        + [(f"GetPg{c.name}", child_class(c), child_handle(c), c.name) for c in group.children]
        + [(f"GetPr{a.name}", action_class(a), action_handle(a), a.name) for a in group.actions]
    )


def kinds(group: Group | Members) -> tuple[tuple, tuple, tuple]:
    return group.properties, group.children, group.actions


def forms(group: Group) -> dict[str, str]:
    """What each accessor, also of a removed member, answers in the words of the model."""
    properties, children, actions = kinds(group.declared)
    return {
        **{p.name: f"property {p.enum.name if p.enum else p.kind}" for p in properties},
        **{c.name: f"{'group' if c.kind == 'single' else c.kind} {c.group}" for c in children},
        **{a.name: f"action {a.kind}" for a in actions},
    }


def accessors(group: Group) -> list[tuple[str, str, str, bool]]:
    """In the order of the interface: accessor, handle class, name, whether it was removed."""
    lists = ((members(group), False), (members(group.removed), True))
    known = {name: (accessor, handle, name, removed)
             for entries, removed in lists for accessor, _, handle, name in entries}
    return [known[name] for name in group.accessors]


def removed_accessor(name: str) -> str:
    """Accessor of the node of a removed member, which rules have no business with."""
    return f"GetRemoved{name}"


def value_name(enum: EnumType, value: EnumValue) -> str:
    """The part of an enumerator that is the value's own."""
    return value.enumerator.removeprefix(f"e{enum.name}_")


def constructor_parameter(group: Group) -> str:
    """An item whose defaults differ from item to item is constructed with its index."""
    return "INT32 index" if group.indexed else ""


def constructor_head(group: Group) -> str:
    """Declaration of the generated class's constructor."""
    explicit = "explicit " if group.indexed else ""
    return f"{explicit}{generated_class(group)}({constructor_parameter(group)})"
