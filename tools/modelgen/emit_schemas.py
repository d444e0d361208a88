# SPDX-License-Identifier: MIT
"""Schemas of what the library writes, for tools of others: settings files as RELAX NG, which can
tell elements apart by their names' attribute, and the tree as zelctl shows it in JSON."""

import json
from xml.sax.saxutils import quoteattr

from . import facts
from .cpptext import GENERATED
from .model import SAVE_NONE, UNIT_TYPE, Child, EnumType, Group, Model, Property

_INTEGERS = {"int16": "short", "uint16": "unsignedShort", "int32": "int", "uint32": "unsignedInt",
             "int64": "long", "uint64": "unsignedLong"}
_NUMBERS = (*_INTEGERS, "double")
_KINDS = ("string", "blob", "bitpattern", "filepath", "reference")


def _value_names(enum: EnumType) -> list[str]:
    """What stands in files: serial names, numbers where there are none."""
    return [value.serial or str(value.number) for value in enum.values]


def _data(kind: str, **facets: object) -> str:
    inner = "".join(f'<param name="{name}">{value}</param>' for name, value in facets.items()
                    if value is not None)
    return f'<data type="{kind}">{inner}</data>' if inner else f'<data type="{kind}"/>'


def _type_pattern(prop: Property) -> str:
    """The texts that a value may have. Files hold what was legal by declared limits."""
    if prop.enum:
        return f'<ref name="enum.{prop.enum.name}"/>'
    low, high = prop.number.minimum, prop.number.maximum
    if prop.kind in _INTEGERS:
        return _data(_INTEGERS[prop.kind], minInclusive=low, maxInclusive=high)
    if prop.kind == "double":
        return _data("double", minInclusive=low, maxInclusive=high)
    if prop.kind == "bitpattern":
        return _data("string", pattern="[01X]*", maxLength=prop.length)
    if prop.kind == "blob":
        return _data("base64Binary")
    return _data("string", maxLength=prop.length) if prop.kind == "string" else "<text/>"


def _element(kind: str, name: str, content: str) -> str:
    return (f'<element name="{kind}"><attribute name="Name"><value>{name}</value></attribute>\n'
            f"{content}</element>\n")


def _attribute(name: str, pattern: str) -> str:
    return f'<attribute name="{name}">{pattern}</attribute>\n'


def _property(prop: Property) -> str:
    pattern = _type_pattern(prop)
    return _element("Prop", prop.name, _attribute("Value", pattern) +
                    f"<optional>{_attribute('User', pattern)}</optional>\n")


def _active(name: str, kind: str) -> str:
    """The active item of a container: index or key."""
    return f"<optional>{_element('Prop', name, _attribute('Value', _data(kind)))}</optional>\n"


def _child(child: Child) -> str:
    content = f'<ref name="group.{child.group}"/>\n'
    if child.kind == "single":
        return _element("PropGroup", child.name, content)
    if child.kind == "array":
        item = f'<element name="ArrayItem">{_attribute("Name", "<text/>")}{content}</element>'
        head = _attribute("Count", _data("nonNegativeInteger", maxInclusive=child.max_count))
        return _element("Array", child.name,
                        f"{head}{_active('ActiveIndex', 'int')}<zeroOrMore>{item}</zeroOrMore>\n")
    attributes = "".join((
        _attribute("Name", _data("string", minLength=1, maxLength=64)),
        _attribute("Key", _data("nonNegativeInteger")), _attribute("DisplayName", "<text/>")))
    item = f'<element name="MapItem">{attributes}{content}</element>'
    return _element("Map", child.name, f"{_active('ActiveKey', 'string')}<zeroOrMore>{item}</zeroOrMore>\n")


def _group(group: Group) -> str:
    members = [_property(p) for p in group.properties if p.save != SAVE_NONE]
    members += [_child(child) for child in group.children]
    choice = f"<zeroOrMore><choice>\n{''.join(members)}</choice></zeroOrMore>" if members \
        else "<empty/>"
    return f'<define name="group.{group.name}">\n{choice}\n</define>\n'


def _settings(model: Model, root: Group) -> str:
    enums = "".join(
        f'<define name="enum.{enum.name}"><choice>\n' +
        "".join(f'<value type="string">{name}</value>\n'
                for name in dict.fromkeys(_escaped(n) for n in _value_names(enum))) +
        "</choice></define>\n" for enum in model.enums.values())
    groups = "".join(_group(group) for group in model.groups.values())
    digest = f'<element name="Digest">{_attribute("Value", _data("string", pattern="[0-9a-f]{40}"))}'
    return f"""<?xml version="1.0" encoding="UTF-8"?>
<!-- SPDX-License-Identifier: MIT -->
<!-- {GENERATED} the model: change the model, not this file. -->
<!-- Settings files as the library writes them. It reads more: files of other releases, from which
     it takes what it knows. -->
<grammar xmlns="http://relaxng.org/ns/structure/1.0"
 datatypeLibrary="http://www.w3.org/2001/XMLSchema-datatypes">
<start><element name="Settings">
{_attribute("Kind", f"<value>{root.name}</value>")}{_attribute("Version", "<text/>")}{
    _element("PropGroup", root.name, f'<ref name="group.{root.name}"/>')}{digest}</element>
</element></start>
{enums}{groups}</grammar>
"""


def _escaped(text: str) -> str:
    return quoteattr(text)[1:-1]


def _typed(name: str, value: object) -> dict[str, object]:
    """What holds where the type is this one."""
    values = {"value": value, "default": value, "selectable": {"items": value}}
    return {"if": {"properties": {"type": {"const": name}}, "required": ["type"]},
            "then": {"properties": values}}


def _tree(model: Model) -> dict[str, object]:
    number = {"anyOf": [{"type": "number"}, {"enum": ["nan", "inf", "-inf"]}]}
    # 64-bit integers that no number of JSON holds exactly are texts.
    integer = {"anyOf": [{"type": "integer"}, {"type": "string", "pattern": "^-?[0-9]+$"}]}
    enums = {name: {"description": facts.sentence(enum.brief),
                    "enum": list(dict.fromkeys(_value_names(enum)))}
             for name, enum in model.enums.items()}
    units = [value.display or "" for value in model.enums[UNIT_TYPE].values] \
        if UNIT_TYPE in model.enums else [""]
    used = {p.enum.name for g in model.groups.values() for p in g.properties if p.enum}
    conditions = [_typed(name, integer) for name in _INTEGERS]
    conditions += [_typed("double", number)]
    conditions += [_typed(name, {"$ref": f"#/$defs/enumerations/{name}"})
                   for name in model.enums if name in used]
    limit = {"anyOf": [number, {"type": "string"}, {"type": "null"}]}
    text = {"type": "string"}
    availability = {"enum": ["available", "read only", "not available"]}
    common = {"path": text, "availability": availability, "meaning": text}
    count = {"type": "integer", "minimum": 0}
    return {
        "$schema": "https://json-schema.org/draft/2020-12/schema",
        "$comment": "SPDX-License-Identifier: MIT. Made from the model: change that.",
        "title": "What zelctl --json answers of the tree: get, tree and find",
        "type": "object",
        "required": ["command", "code"],
        "properties": {
            "command": {"enum": ["get", "tree", "find"]},
            "code": {"type": "integer", "minimum": 0},
            "properties": {"type": "array", "items": {"$ref": "#/$defs/property"}},
            "nodes": {"type": "array", "items": {"$ref": "#/$defs/node"}},
        },
        "$defs": {
            "node": {
                "type": "object",
                "required": ["path", "kind", "availability"],
                "properties": {"kind": {"enum": ["property", "group", "array", "map", "function",
                                                 "operation"]}},
                "if": {"properties": {"kind": {"const": "property"}}},
                "then": {"$ref": "#/$defs/property"},
                "else": {"properties": {**common, "kind": text, "count": count,
                                        "maximumCount": count, "active": text},
                         "additionalProperties": False},
            },
            "property": {
                "type": "object",
                "required": ["path", "kind", "availability", "type", "value", "text", "unit",
                             "result", "valid"],
                "properties": {
                    **common, "kind": {"const": "property"},
                    "type": {"enum": [*_NUMBERS, *_KINDS, *sorted(used)]},
                    "value": {}, "default": {}, "text": text, "unit": {"enum": sorted(set(units))},
                    "result": {"type": "boolean"}, "valid": {"type": "boolean"},
                    "minimum": limit, "maximum": limit, "step": limit, "userValue": {},
                    "selectable": {"type": "array"},
                },
                "additionalProperties": False,
                "allOf": conditions,
            },
            "enumerations": enums,
        },
    }


def emit(model: Model) -> dict[str, str]:
    """Schemas by their names; none without a root."""
    root = next((group for group in model.groups.values() if group.root), None)
    if root is None:
        return {}
    tree = json.dumps(_tree(model), indent=1, ensure_ascii=False)
    return {"settings.rng": _settings(model, root), "tree.schema.json": f"{tree}\n"}
