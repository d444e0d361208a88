# SPDX-License-Identifier: MIT
"""Second stage: what was released keeps its place, so that programs that are built still run."""

from dataclasses import replace

from . import naming
from .diagnostics import Diagnostics
from .model import EnumType, Group, Model
from .released import Entry, Released

_UNTIL = "until the next major version"


def _check_forms(group: Group, entries: list[Entry], diagnostics: Diagnostics) -> None:
    """Every released accessor is there and answers what it did."""
    forms = naming.forms(group)
    where = {m.name: m.location for kind in naming.kinds(group.declared) for m in kind}
    for entry in entries:
        name = f"{group.name}/{entry.name}"
        if entry.name not in forms:
            text = f"'{name}' was released: its entry in the model stays {_UNTIL}, with removed = true"
            diagnostics.report(entry.location, text)
        elif forms[entry.name] != entry.form:
            text = f"'{name}' is a {forms[entry.name]} and was released as {entry.form}"
            text += f" ({entry.location}), which it stays {_UNTIL}: a new one needs a name of its own"
            diagnostics.report(where[entry.name], text)


def _check_removed(group: Group, released: set[str], diagnostics: Diagnostics) -> None:
    for kind in naming.kinds(group.removed):
        for member in kind:
            if member.name not in released:
                text = f"'{group.name}/{member.name}' was never released: its entry can go"
                diagnostics.report(member.location, text)


def _order(group: Group, entries: list[Entry]) -> tuple[str, ...]:
    """Released accessors as they were, those that came since behind them."""
    names = [entry.name for entry in entries]
    return (*names, *(name for name in naming.forms(group) if name not in names))


def _check_values(enum: EnumType, entries: list[Entry], diagnostics: Diagnostics) -> None:
    """Reports the first value that has another number, as all behind it have one then, too."""
    for number, entry in enumerate(entries):
        if number >= len(enum.values):
            text = f"value '{entry.name}' was released with the number {number} ({entry.location}): "
            diagnostics.report(enum.location, f"{text}it stays {_UNTIL}")
            return
        name = naming.value_name(enum, enum.values[number])
        if name != entry.name:
            text = f"'{name}' has the number {number}, with which '{entry.name}' was released"
            text += f" ({entry.location}): released values stay as they are, new ones go to the end"
            diagnostics.report(enum.values[number].location, text)
            return


def check_released(model: Model, released: Released, diagnostics: Diagnostics) -> None:
    """Gives all groups the order of their accessors."""
    for what, lists, known in (
        ("group", released.accessors, model.groups), ("enumeration", released.values, model.enums),
    ):
        for name in lists:
            if name not in known:
                text = f"the {what} {name} was released: it stays in the model {_UNTIL}"
                diagnostics.report(lists[name][0].location, text)
    for enum in model.enums.values():
        _check_values(enum, released.values.get(enum.name, []), diagnostics)
    for name, group in model.groups.items():
        entries = released.accessors.get(name, [])
        _check_forms(group, entries, diagnostics)
        _check_removed(group, {entry.name for entry in entries}, diagnostics)
        model.groups[name] = replace(group, accessors=_order(group, entries))
