# SPDX-License-Identifier: MIT
"""What documentation says about a member, in words."""

import re

from .model import MAX_COUNT, SAVE_NONE, SAVE_SETTINGS, Action, Child, Group, Members, Model, Property

_SHOWN_VALUES = 12
_FORM_WORDS = {
    "passphrase": "8 … 63 printable ASCII characters, or 64 hex digits",
    "address": "IPv4 address of a host",
    "mask": "IPv4 mask of a network",
    "condition": "name = values",
}
_SAVE_WORDS = {SAVE_NONE: "not saved", SAVE_SETTINGS: "settings", 2: "instrument state"}


def sentence(text: str) -> str:
    """A text that ends as a sentence does."""
    return text if text.endswith((".", "!", "?")) else f"{text}."


def figure(value: int | float) -> str:
    """A number as people write it: 1e-9, 100, 2.5."""
    text = repr(value)
    text = re.sub(r"e([+-])0*(\d)", lambda m: f"e{'-' if m[1] == '-' else ''}{m[2]}", text)
    return text.removesuffix(".0")


def unit(prop: Property) -> str:
    """The unit's display name; empty when there is none to speak of."""
    value = prop.number.unit
    return value.display or "" if value and value.serial not in ("NONE", "NOT_DEFINED") else ""


def _shown(value: int | float | str) -> str:
    return f'"{value}"' if isinstance(value, str) else figure(value)


def _list(items: list[str]) -> str:
    if len(items) <= _SHOWN_VALUES:
        return ", ".join(items)
    return f"{', '.join(items[:3])}, … {items[-1]} ({len(items)} values)"


def limits(prop: Property) -> str:
    """Range, value list, enabled values, form or length; empty when the type alone decides."""
    low, high = prop.number.minimum, prop.number.maximum
    if prop.values:
        return _list([_shown(v) for v in prop.values])
    if prop.enabled:
        return _list([v.label for v in prop.enabled])
    if low is not None and high is not None:
        return f"{figure(low)} … {figure(high)}"
    if low is not None:
        return f"≥ {figure(low)}"
    if high is not None:
        return f"≤ {figure(high)}"
    if prop.form is not None:
        return _FORM_WORDS[prop.form]
    if prop.length is not None:
        return f"at most {prop.length} {'bits' if prop.kind == 'bitpattern' else 'characters'}"
    if prop.path.open or prop.path.save_as:
        extensions = dict.fromkeys([*prop.path.open, *prop.path.save_as])
        return f"extensions {', '.join(extensions)}"
    return ""


def default(prop: Property) -> str:
    """The default, the frame's own where the model gives none; empty for kinds without one."""
    if prop.item_defaults:
        shown = [v.label if prop.enum else figure(v) for v in prop.item_defaults]
        return f"{', '.join(shown)} for the items in turn"
    if prop.enum:
        return (prop.default or prop.enum.values[0]).label
    if isinstance(prop.default, (int, float)):
        return figure(prop.default)
    if isinstance(prop.default, str):
        return f'"{prop.default}"'
    return "0" if prop.kind.startswith(("int", "uint", "double")) else ""


def saved(prop: Property) -> str:
    """Which files carry the property."""
    return _SAVE_WORDS[prop.save]


def kind(prop: Property) -> str:
    """Whether it is set, computed or measured, and whether its value is shown."""
    origin = prop.measured or ("result" if prop.result else "setting")
    return ("secret " if prop.secret else "") + origin


def describe_property(prop: Property) -> str:
    """Meaning, unit, range and default for a documentation comment."""
    marks = [word for word, holds in (("Secret", prop.secret), ("Result", prop.result)) if holds]
    parts = [f"{' '.join(marks).capitalize()}:" if marks else "", sentence(prop.brief)]
    pairs = (("Unit", unit(prop)), ("Values" if prop.values or prop.enabled else "Range",
             limits(prop)), ("Default", "" if prop.result else default(prop)))
    parts += [sentence(f"{word}: {text}") for word, text in pairs if text]
    return " ".join(part for part in parts if part)


def count(child: Child) -> str:
    """How many items a container has."""
    if child.kind == "array":
        size = f"{child.size} items" if child.size != 1 else "1 item"
        if not child.dynamic:
            return size
        limit = "" if child.max_count == MAX_COUNT else f", at most {child.max_count}"
        return f"{size} at first{limit}"
    return "" if child.max_count == MAX_COUNT else f"at most {child.max_count} items"


def describe_child(child: Child, model: Model) -> str:
    """Meaning and size of a child for a documentation comment."""
    brief = sentence(model.groups[child.group].brief)
    if child.kind == "single":
        return brief
    size = count(child)
    return f"{child.kind.capitalize()}{f' ({size})' if size else ''}: {brief}"


def describe_action(action: Action) -> str:
    word = "Operation" if action.kind == "operation" else "Action"
    return f"{word}: {sentence(action.brief)}"


def describe_members(group: Group | Members, model: Model) -> dict[str, str]:
    """Documentation of every member by its name."""
    return {
        **{p.name: describe_property(p) for p in group.properties},
        **{c.name: describe_child(c, model) for c in group.children},
        **{a.name: describe_action(a) for a in group.actions},
    }


def describe_accessors(group: Group, model: Model) -> dict[str, str]:
    """The same for clients, who may still ask for what was removed."""
    removed = describe_members(group.removed, model)
    return {
        **describe_members(group, model),
        **{name: f"Removed from the tree: answers its default and refuses writes with "
                 f"eKW_ACC_DETACHED. {text}" for name, text in removed.items()},
    }
