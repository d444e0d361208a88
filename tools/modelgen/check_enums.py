# SPDX-License-Identifier: MIT
"""Second stage: enumeration tables to the plain model."""

import math
import re

from .diagnostics import Diagnostics, Location
from .keys import IDENTIFIER, CKeys, check_stem
from .model import EnumType, EnumValue
from .reader import Entry, ModelFile, Table

_TYPE_NAME = re.compile(r"KW_[A-Za-z0-9_]+")


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


def _value(type_name: str, number: int, entry: Entry, diagnostics: Diagnostics) -> EnumValue:
    keys = CKeys(entry.data, entry.location, diagnostics, "a value")
    keys.allow("display", "remote", "serial", "short", "brief", "value", "enumerator")
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
        remote=keys.text("remote"),
        serial=serial,
        brief=keys.brief(),
        value=_number(keys),
    )


class _Scope:
    """Enumerators are unscoped: those of all types must differ from each other and from types."""

    def __init__(self, diagnostics: Diagnostics) -> None:
        self._diagnostics = diagnostics
        self._enumerators: dict[str, Location] = {}

    def check(self, values: list[EnumValue], table: Table) -> None:
        serials: dict[str | None, Location] = {}
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
            serials.setdefault(value.serial, where)
            self._enumerators.setdefault(value.enumerator, where)


def _type(stem: str, table: Table, scope: _Scope, diagnostics: Diagnostics) -> EnumType:
    data = {**table.data, **table.lists}
    keys = CKeys(data, table.location, diagnostics, f"enumeration {table.name}")
    keys.allow("brief", "values")
    keys.require("brief")
    if not _TYPE_NAME.fullmatch(table.name):
        keys.fail(f"'{table.name}' is no name of an enumeration (KW_…)")
    entries = table.lists.get("values", [])
    if not entries:
        keys.fail(f"enumeration {table.name} has no values")
    values = [_value(table.name, i, entry, diagnostics) for i, entry in enumerate(entries)]
    scope.check(values, table)
    return EnumType(table.name, keys.brief(), stem, table.location, tuple(values))


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
