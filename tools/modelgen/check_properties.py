# SPDX-License-Identifier: MIT
"""Second stage: one property entry to the plain model."""

import math
import re
from typing import Any

from .cpptext import INTEGER_RANGES
from .keys import CKeys
from .model import (
    SAVE_NONE,
    SAVE_SETTINGS,
    UNIT_TYPE,
    EnumType,
    EnumValue,
    FileFacets,
    NumberFacets,
    Property,
)

NODE_NAME = re.compile(r"[A-Za-z][A-Za-z0-9_]*")
NUMERIC_KINDS = (*INTEGER_RANGES, "double")
STEP_MODES = ("linear", "factor", "ladder125", "ladder1245", "list")
STEP_BEHAVIOURS = ("limit", "wrap", "refuse")
NUMBER_FORMATS = ("decimal", "scientific", "engineering", "hex", "binary")
BIT_FORMATS = ("hex", "binary")
MEASURED = ("reading", "count")
TEXT_FORMS = ("passphrase", "address", "mask", "condition")
SAVE_HIGHEST = 2
_MODES_WITHOUT_STEP = ("factor", "ladder125", "ladder1245")

_COMMON_KEYS = ("name", "type", "brief", "result", "measured", "save", "confirm",
                "secret", "removed", "remote")
_NUMBER_KEYS = (
    "default", "item_defaults", "unit", "min", "max", "step", "step_mode", "step_factor", "step_behaviour",
    "resolution", "values", "format", "bits",
)
_KIND_KEYS = {
    **{kind: _NUMBER_KEYS for kind in NUMERIC_KINDS},
    "enum": ("default", "item_defaults", "enabled"),
    "string": ("default", "values", "length", "form"),
    "blob": (),
    "bitpattern": ("default", "length", "format"),
    "filepath": ("default", "folder", "stem", "open", "save_as"),
    "reference": (),
}
_ALL_KEYS = {key for keys in _KIND_KEYS.values() for key in keys}


def _check_keys(keys: CKeys, kind: str, type_name: str) -> None:
    name = keys.raw("name")
    for key in keys.names():
        if key in _COMMON_KEYS or key in _KIND_KEYS[kind]:
            continue
        if key in _ALL_KEYS:
            keys.fail(f"key '{key}' does not apply to type {type_name}")
        else:
            keys.fail(f"unknown key '{key}' of property '{name}'")


def to_number(kind: str, value: Any) -> int | float | None:
    """The value as one of a numeric type; None when the type can not hold it."""
    if isinstance(value, bool) or not isinstance(value, (int, float)):
        return None
    if kind != "double":
        low, high = INTEGER_RANGES[kind]
        return value if isinstance(value, int) and low <= value <= high else None
    try:
        number = float(value)
    except OverflowError:
        return None
    return number if math.isfinite(number) and number == value else None


def _number(keys: CKeys, kind: str, key: str) -> int | float | None:
    value = keys.raw(key)
    if value is None:
        return None
    number = to_number(kind, value)
    if number is None:
        keys.fail(f"{key} {value!r} is no {kind}")
    return number


def _positive(keys: CKeys, kind: str, key: str) -> int | float | None:
    number = _number(keys, kind, key)
    if number is not None and number <= 0:
        keys.fail(f"'{key}' must be greater than 0")
        return None
    return number


def _bits(keys: CKeys, number_format: str | None) -> int | None:
    bits = keys.whole("bits", 1, 64)
    if bits is not None and number_format not in BIT_FORMATS:
        keys.fail("'bits' needs the format hex or binary")
    return bits


def _step_mode(keys: CKeys) -> str | None:
    mode = keys.choice("step_mode", STEP_MODES)
    if mode == "list" and not keys.has("values"):
        keys.fail("step mode 'list' needs the key 'values'")
    if keys.has("step_factor") and mode != "factor":
        keys.fail("'step_factor' needs the step mode 'factor'")
    return mode


def _check_step(keys: CKeys, kind: str) -> None:
    """A knob must move what the user sets. Integers move by 1 where nothing else is said."""
    has_step = keys.has("step") or keys.has("values")
    if kind == "double" and not has_step and keys.raw("step_mode") not in _MODES_WITHOUT_STEP:
        keys.fail(
            f"the user's setting '{keys.raw('name')}' needs the key 'step' or 'values',"
            f" or the step mode {' or '.join(_MODES_WITHOUT_STEP)}"
        )


def _step_factor(keys: CKeys) -> float | None:
    factor = _number(keys, "double", "step_factor")
    if factor is not None and factor <= 1:
        keys.fail("'step_factor' must be greater than 1")
    return factor


def _unit(keys: CKeys, enums: dict[str, EnumType]) -> EnumValue | None:
    serial = keys.text("unit")
    if serial is None:
        return None
    units = enums[UNIT_TYPE].values if UNIT_TYPE in enums else ()
    for unit in units:
        if unit.serial == serial:
            return unit
    keys.fail(f"unknown unit '{serial}'")
    return None


def _number_facets(
    keys: CKeys, kind: str, number_format: str | None, enums: dict[str, EnumType]
) -> NumberFacets:
    facets = NumberFacets(
        unit=_unit(keys, enums),
        minimum=_number(keys, kind, "min"),
        maximum=_number(keys, kind, "max"),
        step=_positive(keys, kind, "step"),
        step_mode=_step_mode(keys),
        step_factor=_step_factor(keys),
        step_behaviour=keys.choice("step_behaviour", STEP_BEHAVIOURS),
        resolution=_positive(keys, kind, "resolution"),
        bits=_bits(keys, number_format),
    )
    low, high = facets.minimum, facets.maximum
    if low is not None and high is not None and low > high:
        keys.fail(f"min {low} is greater than max {high}")
    return facets


def _check_within(keys: CKeys, what: str, value: int | float, facets: NumberFacets) -> None:
    if facets.minimum is not None and value < facets.minimum:
        keys.fail(f"{what} {value} is below min {facets.minimum}")
    elif facets.maximum is not None and value > facets.maximum:
        keys.fail(f"{what} {value} is above max {facets.maximum}")


def _value_list(keys: CKeys, kind: str) -> tuple[int | float | str, ...]:
    if kind == "string":
        values = keys.text_list("values", blank=True)
    else:
        raw = keys.raw("values")
        if raw is None:
            return ()
        numbers = [to_number(kind, v) for v in raw] if isinstance(raw, list) else []
        if not numbers or None in numbers:
            keys.fail(f"'values' must be a list of {kind}")
            return ()
        values = tuple(numbers)
    if len(set(values)) < len(values):
        keys.fail("'values' names a value twice")
    return values


def _number_default(
    keys: CKeys, kind: str, values: tuple[int | float | str, ...], facets: NumberFacets
) -> int | float | None:
    for value in values:
        _check_within(keys, "value", value, facets)
    default = _number(keys, kind, "default")
    if keys.has("default") and default is None:
        return None
    # Without a default of its own the property starts at 0, which the limits must admit too.
    shown = default if default is not None else to_number(kind, 0)
    what = "default" if default is not None else "default (none is given)"
    _check_within(keys, what, shown, facets)
    if values and shown not in values:
        keys.fail(f"{what} {shown} is not in the value list")
    return default


def _enum_value(keys: CKeys, enum: EnumType, key: str, wanted: Any) -> EnumValue | None:
    for value in enum.values:
        by_number = isinstance(wanted, int) and not isinstance(wanted, bool)
        if wanted == (value.number if by_number else value.serial):
            return value
    keys.fail(f"{key}: {enum.name} has no value {wanted!r}")
    return None


def _enabled(keys: CKeys, enum: EnumType) -> tuple[EnumValue, ...]:
    serials = keys.text_list("enabled")
    found = [_enum_value(keys, enum, "enabled", serial) for serial in serials]
    if len(set(serials)) < len(serials):
        keys.fail("'enabled' names a value twice")
    return tuple(value for value in found if value)


def _item_defaults(keys: CKeys) -> list[Any]:
    wanted = keys.raw("item_defaults")
    if wanted is None:
        return []
    if not isinstance(wanted, list) or not wanted:
        keys.fail("'item_defaults' must be a list that is not empty")
        return []
    return wanted


def _number_item_defaults(
    keys: CKeys, kind: str, values: tuple[int | float | str, ...], facets: NumberFacets
) -> tuple[int | float, ...]:
    numbers = []
    for wanted in _item_defaults(keys):
        number = to_number(kind, wanted)
        if number is None:
            keys.fail(f"item_defaults: {wanted!r} is no {kind}")
            continue
        _check_within(keys, "item default", number, facets)
        if values and number not in values:
            keys.fail(f"item default {number} is not in the value list")
        numbers.append(number)
    return tuple(numbers)


def _enum_item_defaults(
    keys: CKeys, enum: EnumType, enabled: tuple[EnumValue, ...]
) -> tuple[EnumValue, ...]:
    found = [_enum_value(keys, enum, "item_defaults", w) for w in _item_defaults(keys)]
    for value in found:
        if value and enabled and value not in enabled:
            keys.fail(f"item default {value.serial!r} is not in the enabled list")
    return tuple(value for value in found if value)


def _enum_default(
    keys: CKeys, enum: EnumType, enabled: tuple[EnumValue, ...]
) -> EnumValue | None:
    wanted = keys.raw("default")
    default = None if wanted is None else _enum_value(keys, enum, "default", wanted)
    if wanted is not None and default is None:
        return None
    shown = default or (enum.values[0] if enum.values else None)
    if enabled and shown not in enabled:
        what = "default" if default else "default (none is given)"
        keys.fail(f"{what} {shown.serial!r} is not in the enabled list")
    return default


def _text_default(
    keys: CKeys, kind: str, values: tuple[int | float | str, ...], length: int | None
) -> str | None:
    default = keys.text("default")
    shown = default or ""
    if values and shown not in values:
        what = "default" if default is not None else "default (none is given)"
        keys.fail(f"{what} {shown!r} is not in the value list")
    if kind == "bitpattern" and not re.fullmatch("[01X]*", shown):
        keys.fail(f"default {shown!r} is no pattern of 0, 1 and X")
    if length is not None and len(shown) > length:
        keys.fail(f"default {shown!r} is longer than length {length}")
    for value in values:
        if length is not None and len(value) > length:
            keys.fail(f"value {value!r} is longer than length {length}")
    return default


def _format(keys: CKeys, kind: str) -> str | None:
    whole = kind in INTEGER_RANGES
    formats = BIT_FORMATS if kind == "bitpattern" else NUMBER_FORMATS
    chosen = keys.choice("format", formats)
    if chosen in BIT_FORMATS and kind != "bitpattern" and not whole:
        keys.fail(f"format '{chosen}' does not apply to type {kind}")
    return chosen


def _file_facets(keys: CKeys) -> FileFacets:
    facets = FileFacets(
        keys.text("folder"), keys.text("stem"), keys.text_list("open"), keys.text_list("save_as")
    )
    for extension in (*facets.open, *facets.save_as):
        if extension.startswith("."):
            keys.fail(f"extension '{extension}' must stand without its dot")
    return facets


def _facets(keys: CKeys, kind: str, enum: EnumType | None, enums: dict[str, EnumType]) -> dict:
    """The fields of the model's property that its type decides."""
    if kind in NUMERIC_KINDS:
        number_format = _format(keys, kind)
        number = _number_facets(keys, kind, number_format, enums)
        values = _value_list(keys, kind)
        default = _number_default(keys, kind, values, number)
        return {
            "number": number, "format": number_format, "values": values, "default": default,
            "item_defaults": _number_item_defaults(keys, kind, values, number),
        }
    if enum:
        enabled = _enabled(keys, enum)
        return {
            "enabled": enabled, "default": _enum_default(keys, enum, enabled),
            "item_defaults": _enum_item_defaults(keys, enum, enabled),
        }
    if kind in ("string", "bitpattern"):
        values = _value_list(keys, kind) if kind == "string" else ()
        length = keys.whole("length", 1, 2**31 - 1)
        default = _text_default(keys, kind, values, length)
        chosen = _format(keys, kind) if kind == "bitpattern" else None
        form = keys.choice("form", TEXT_FORMS) if kind == "string" else None
        return {"values": values, "length": length, "format": chosen, "form": form,
                "default": default}
    if kind == "filepath":
        return {"path": _file_facets(keys), "default": keys.text("default")}
    return {"default": None}


def _secret(keys: CKeys, save: int) -> bool:
    """Settings files are made to be given away: what nobody else may know is no part of them."""
    secret = keys.flag("secret")
    if secret and save & SAVE_SETTINGS:
        keys.fail("a secret can not be saved with the user's settings, only with save = 2 or 0")
    return secret


def _measured(keys: CKeys, result: bool) -> str | None:
    """A setting is never invalid: it stands as it was set."""
    measured = keys.choice("measured", MEASURED)
    if measured and not result:
        keys.fail(f"setting '{keys.raw('name')}' can not be measured, only a result")
    return measured


def check_property(keys: CKeys, group_save: int, enums: dict[str, EnumType]) -> Property | None:
    """A property; None when its name or type is unusable. `group_save` is the group's save/recall
    type, which holds for settings; results are saved only where they say so themselves, as nobody
    could set them from a file."""
    if not keys.require("name", "type", "brief"):
        return None
    name, type_name = keys.text("name"), keys.text("type")
    if name is None or type_name is None:
        return None
    if not NODE_NAME.fullmatch(name):
        keys.fail(f"'{name}' is no name of a node")
    enum = enums.get(type_name)
    kind = "enum" if enum else type_name
    if kind not in _KIND_KEYS or type_name == "enum":
        keys.fail(f"unknown type '{type_name}'")
        return None
    _check_keys(keys, kind, type_name)
    result = keys.flag("result")
    save = keys.whole("save", 0, SAVE_HIGHEST, SAVE_NONE if result else group_save)
    confirm = keys.flag("confirm")
    if confirm and result:
        keys.fail(f"result '{name}' can not be confirmed: no client writes it")
    if not result and save == SAVE_SETTINGS:
        _check_step(keys, kind)
    return Property(
        name=name, kind=kind, enum=enum, brief=keys.brief(), location=keys.location,
        result=result, save=save, confirm=confirm, secret=_secret(keys, save),
        measured=_measured(keys, result), remote=keys.text("remote"),
        **_facets(keys, kind, enum, enums),
    )
