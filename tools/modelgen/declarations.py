# SPDX-License-Identifier: MIT
"""The statements by which a group's constructor declares its members."""

from .cpptext import braced, call, number, qstring, real
from .model import Child, EnumValue, Group, NumberFacets, Property
from . import naming

LONGEST_CONSTRUCTOR = 60
"""Statements; a longer constructor is split by kind of member."""


def _value(prop: Property, value: int | float | str | EnumValue) -> str:
    if isinstance(value, EnumValue):
        return value.enumerator
    if isinstance(value, str):
        return qstring(value)
    return number(prop.kind, value)


def _member_call(prop: Property, function: str, argument: str) -> str:
    return call(f"m_p{prop.name}->{function}", [argument])


def _list_call(prop: Property, function: str, items: list[str]) -> str:
    used = len(f"    m_p{prop.name}->{function}(")
    return _member_call(prop, function, braced(items, used))


def _limits(prop: Property, facets: NumberFacets) -> list[str]:
    if facets.minimum is None and facets.maximum is None:
        return []
    node = naming.property_class(prop)
    low, high = f"{node}::kLowest", f"{node}::kHighest"
    if facets.minimum is not None:
        low = number(prop.kind, facets.minimum)
    if facets.maximum is not None:
        high = number(prop.kind, facets.maximum)
    return [call(f"m_p{prop.name}->DeclareMinAndMax", [low, high])]


def _number_statements(prop: Property) -> list[str]:
    facets = prop.number
    unit = facets.unit.enumerator if facets.unit else None
    step = None if facets.step is None else number(prop.kind, facets.step)
    mode = facets.step_mode and f"eSTEPMODE_{facets.step_mode.upper()}"
    factor = None if facets.step_factor is None else real(facets.step_factor)
    behaviour = facets.step_behaviour and f"eSTEP_BEHAVIOUR_{facets.step_behaviour.upper()}"
    resolution = None if facets.resolution is None else number(prop.kind, facets.resolution)
    bits = None if facets.bits is None else str(facets.bits)
    lines = [_member_call(prop, "DeclareUnit", unit)] if unit else []
    lines += _limits(prop, facets)
    for function, argument in (
        ("DeclareStep", step), ("DeclareStepMode", mode), ("DeclareStepFactor", factor),
        ("DeclareStepBehaviour", behaviour), ("DeclareResolution", resolution),
        ("DeclareBitGroupSize", bits),
    ):
        if argument is not None:
            lines.append(_member_call(prop, function, argument))
    return lines


def _text_statements(prop: Property) -> list[str]:
    lines = []
    if prop.length is not None:
        function = "DeclareLength" if prop.kind == "bitpattern" else "DeclareMaxLength"
        lines.append(_member_call(prop, function, str(prop.length)))
    if prop.form is not None:
        lines.append(_member_call(prop, "DeclareForm", f"eTEXTFORM::{prop.form.capitalize()}"))
    if prop.path.folder is not None:
        lines.append(_member_call(prop, "DeclareFolder", qstring(prop.path.folder)))
    if prop.path.stem is not None:
        lines.append(_member_call(prop, "DeclareStem", qstring(prop.path.stem)))
    for function, extensions in (
        ("DeclareOpenExtensions", prop.path.open), ("DeclareSaveExtensions", prop.path.save_as),
    ):
        if extensions:
            lines.append(_list_call(prop, function, [qstring(e) for e in extensions]))
    return lines


def _item_default(prop: Property) -> str:
    otherwise = "0" if prop.default is None else _value(prop, prop.default)
    kind = "INT32" if prop.enum else naming.NUMBER_TYPES[prop.kind]
    head = f"ItemDefault<{kind}>(index, "
    used = len(f"    m_p{prop.name}->DbSetDefault({head}")
    return f"{head}{braced([_value(prop, v) for v in prop.item_defaults], used)}, {otherwise})"


def _property(prop: Property) -> list[str]:
    node = naming.property_class(prop)
    lines = [call("AddPropertyToList", [f"m_p{prop.name} = new {node}", qstring(prop.name)])]
    lines += _attributes(prop)
    return [*lines, call("SetSaveRecallType", [f"m_p{prop.name}", str(prop.save), "true"])]


def _attributes(prop: Property) -> list[str]:
    lines = []
    if prop.result:
        lines.append(_member_call(prop, "SetObjectType", "eOBJECTTYPE_RESULT"))
    lines += [call(f"m_p{prop.name}->DeclareSecret", [])] if prop.secret else []
    lines += _number_statements(prop) + _text_statements(prop)
    if prop.format:
        form = f"eNUMBERFORMAT_{prop.format.upper()}"
        lines.append(_member_call(prop, "DeclareFormat", form))
    if prop.values:
        values = [_value(prop, v) for v in prop.values]
        lines.append(_list_call(prop, "DeclareValueList", values))
    if prop.enabled:
        enabled = [v.enumerator for v in prop.enabled]
        lines.append(_list_call(prop, "DeclareEnabledValues", enabled))
    if prop.item_defaults:
        lines.append(_member_call(prop, "DbSetDefault", _item_default(prop)))
    elif prop.default is not None:
        lines.append(_member_call(prop, "DbSetDefault", _value(prop, prop.default)))
    if prop.confirm:
        lines.append(_member_call(prop, "DeclareConfirm", ""))
    if prop.measured:
        kind = f"eMEASURED::{prop.measured.capitalize()}"
        lines.append(_member_call(prop, "DeclareMeasured", kind))
    return lines


def _new_child(child: Child) -> str:
    node = naming.child_class(child)
    return {
        "single": f"new {node}",
        "array": f"new {node}({int(child.dynamic)}, {child.max_count})",
        "map": f"new {node}({child.max_count})",
    }[child.kind]


def _child(child: Child) -> list[str]:
    creation = f"m_p{child.name} = {_new_child(child)}"
    lines = [call("AddPropGroupToList", [creation, qstring(child.name)])]
    return lines + _items(child)


def _items(child: Child) -> list[str]:
    lines = []
    if child.size:
        lines.append(call(f"m_p{child.name}->DbSetSize", [str(child.size)]))
    if child.pattern is not None:
        lines.append(call(f"m_p{child.name}->SetNamePattern", [qstring(child.pattern)]))
    return lines


def _removed(name: str, creation: str) -> str:
    return call(f"m_p{name} = MakeRemoved", [creation, qstring(name)])


def property_statements(group: Group) -> list[str]:
    if not group.properties:
        return []
    lines = [call("SetPropertyListSize", [str(len(group.properties))])]
    return lines + [line for prop in group.properties for line in _property(prop)]


def child_statements(group: Group) -> list[str]:
    if not group.children:
        return []
    lines = [call("SetPropGroupListSize", [str(len(group.children))])]
    return lines + [line for child in group.children for line in _child(child)]


def action_statements(group: Group) -> list[str]:
    return [
        call("AddObject", [f"m_p{a.name} = new {naming.action_class(a)}", qstring(a.name)])
        for a in group.actions
    ]


def removed_statements(group: Group) -> list[str]:
    lines: list[str] = []
    for prop in group.removed.properties:
        lines.append(_removed(prop.name, f"new {naming.property_class(prop)}"))
        lines += _attributes(prop)
    for child in group.removed.children:
        lines += [_removed(child.name, _new_child(child)), *_items(child)]
    return lines + [
        _removed(a.name, f"new {naming.action_class(a)}") for a in group.removed.actions
    ]


def statements(group: Group) -> list[str]:
    """All that the constructor does, in order."""
    return (
        property_statements(group) + child_statements(group) + action_statements(group)
        + removed_statements(group)
    )


def parts_of_constructor(group: Group) -> dict[str, list[str]]:
    """The functions that a long constructor calls, with their statements; empty for a short one,
    which declares everything itself."""
    parts = {
        "DeclareProperties": property_statements(group),
        "DeclareChildren": child_statements(group),
        "DeclareActions": action_statements(group),
        "DeclareRemoved": removed_statements(group),
    }
    if sum(len(lines) for lines in parts.values()) <= LONGEST_CONSTRUCTOR:
        return {}
    return {name: lines for name, lines in parts.items() if lines}
