# SPDX-License-Identifier: MIT
"""Second stage: enumeration tables to the plain model."""

import math
import re

from .diagnostics import Diagnostics, Location
from .keys import IDENTIFIER, CKeys, check_stem
from .model import EnumType, EnumValue
from .reader import Entry, ModelFile, Table

_TYPE_NAME = re.compile(r"KW_[A-Za-z0-9_]+")
# Character data of IEEE 488.2.
_REMOTE_NAME = re.compile(r"[A-Za-z][A-Za-z0-9_]{0,11}")
_REMOTE_RESERVED = ("MIN", "MINIMUM", "MAX", "MAXIMUM", "DEF", "DEFAULT", "UP", "DOWN")


def _number(keys: CKeys) -> float | None:
    value = keys.raw("value")
    if value is None:
        return None
    # NaN is what the tables hold for "no number".
    if isinstance(value, bool) or not isinstance(value, (int, float)) or math.isnan(value):
        keys.fail("'value' must be a number")
        return None
    try:
        return float(value)
    except OverflowError:
        keys.fail("'value' must be a number")
        return None


def _remote_fault(keys: CKeys, remote: str | None, type_has_none: bool) -> str:
    """What remote protocols have against the name of a value; nothing for a blank entry."""
    if keys.raw("serial") == "" and remote == "":
        return ""
    if type_has_none:
        return f"remote name '{remote}' in a type that has none" if keys.has("remote") else ""
    if not keys.has("remote"):
        return "a value needs the key 'remote'"
    if remote is not None and not _REMOTE_NAME.fullmatch(remote):
        return f"remote name '{remote}' is no letter with up to 11 letters, digits and '_' behind"
    if remote is not None and remote.upper() in _REMOTE_RESERVED:
        return f"remote name '{remote}' is a remote protocol's word for a limit, default or step"
    return ""


def _remote(keys: CKeys, type_has_none: bool) -> str | None:
    """The remote name; one that is known to the world stays, whatever is against it."""
    remote = keys.text("remote")
    fault = _remote_fault(keys, remote, type_has_none)
    if _is_exempt(keys):
        if not fault:
            keys.fail("'remote_exempt' where nothing is against the remote name")
    elif fault:
        keys.fail(fault)
    return remote


def _is_exempt(keys: CKeys) -> bool:
    """Whether the rules of remote names are lifted, for the reason that stands there."""
    reason = keys.text("remote_exempt")
    if reason is not None and not reason.strip():
        keys.fail("'remote_exempt' must name the reason")
    return keys.has("remote_exempt")


def _steps_by_number(keys: CKeys, values: list[EnumValue]) -> bool:
    """Numbers in an order of their own leave open what a step up is: then the model must say it."""
    numbers = [v.value for v in values if v.value is not None]
    is_ladder = len(numbers) > 1 and len(set(numbers)) == len(numbers)
    by_number = keys.flag("steps_by_number")
    if by_number and not is_ladder:
        keys.fail("'steps_by_number' needs different numbers")
    is_sorted = numbers in (sorted(numbers), sorted(numbers, reverse=True))
    if is_ladder and not is_sorted and not keys.has("steps_by_number"):
        keys.fail("the numbers are in no order: 'steps_by_number' must say what steps follow")
    return by_number


def _value(
    type_name: str, number: int, entry: Entry, has_remote: bool, diagnostics: Diagnostics
) -> EnumValue:
    keys = CKeys(entry.data, entry.location, diagnostics, "a value")
    keys.allow("display", "remote", "serial", "short", "brief", "value", "enumerator",
               "remote_exempt")
    keys.require("serial")
    serial = keys.text("serial")
    suffix = keys.text("enumerator") or serial
    enumerator = f"e{type_name}_{suffix}"
    if not suffix or not IDENTIFIER.fullmatch(enumerator):
        if keys.has("serial"):
            keys.fail(f"'{enumerator}' is no identifier of C++")
    return EnumValue(
        number=number,
        enumerator=enumerator,
        display=keys.text("display"),
        short=keys.text("short"),
        remote=_remote(keys, not has_remote),
        serial=serial,
        brief=keys.brief(),
        value=_number(keys),
        location=entry.location,
    )


class _Scope:
    """Enumerators are unscoped: those of all types must differ from each other and from types."""

    def __init__(self, diagnostics: Diagnostics) -> None:
        self._diagnostics = diagnostics
        self._enumerators: dict[str, Location] = {}

    def check(self, values: list[EnumValue], table: Table) -> None:
        serials: dict[str | None, Location] = {}
        remotes: dict[str, Location] = {}
        for value, entry in zip(values, table.lists.get("values", [])):
            where = entry.location
            if value.serial is not None and value.serial in serials:
                text = f"duplicate serial '{value.serial}', first at {serials[value.serial]}"
                self._diagnostics.report(where, text)
            elif value.enumerator in self._enumerators:
                first = self._enumerators[value.enumerator]
                self._diagnostics.report(
                    where, f"duplicate enumerator '{value.enumerator}', first at {first}"
                )
            elif value.remote and value.remote.upper() in remotes:
                first = remotes[value.remote.upper()]
                self._diagnostics.report(
                    where, f"duplicate remote '{value.remote}', first at {first}"
                )
            serials.setdefault(value.serial, where)
            if value.remote:
                remotes.setdefault(value.remote.upper(), where)
            self._enumerators.setdefault(value.enumerator, where)


def _type(stem: str, table: Table, scope: _Scope, diagnostics: Diagnostics) -> EnumType:
    data = {**table.data, **table.lists}
    keys = CKeys(data, table.location, diagnostics, f"enumeration {table.name}")
    keys.allow("brief", "values", "steps_by_number", "remote_exempt")
    keys.require("brief")
    if not _TYPE_NAME.fullmatch(table.name):
        keys.fail(f"'{table.name}' is no name of an enumeration (KW_…)")
    entries = table.lists.get("values", [])
    if not entries:
        keys.fail(f"enumeration {table.name} has no values")
    has_remote = not _is_exempt(keys)
    values = [
        _value(table.name, i, entry, has_remote, diagnostics) for i, entry in enumerate(entries)
    ]
    scope.check(values, table)
    by_number = _steps_by_number(keys, values)
    return EnumType(table.name, keys.brief(), stem, table.location, tuple(values), by_number)


def check_enums(files: list[ModelFile], diagnostics: Diagnostics) -> dict[str, EnumType]:
    """All enumerations by name, in the order of the files."""
    enums: dict[str, EnumType] = {}
    scope = _Scope(diagnostics)
    for file in files:
        check_stem(file, diagnostics)
        for table in file.tables:
            if table.name in enums:
                first = enums[table.name].location
                diagnostics.report(
                    table.location, f"duplicate enumeration {table.name}, first at {first}"
                )
                continue
            enums[table.name] = _type(file.stem, table, scope, diagnostics)
    return enums
