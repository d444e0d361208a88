# SPDX-License-Identifier: MIT
"""The plain model between checking and emitting: checked, and with all defaults filled in."""

from dataclasses import dataclass, field

from .diagnostics import Location

MAX_COUNT = 2147483647
"""Maximum count of a container without a practical limit."""

RESERVED_PAGES = ("index", "enumerations", "remote")
"""Pages of the settings reference that are no function's own."""

UNIT_TYPE = "KW_UNIT"
"""Enumeration whose values are the units of numbers."""

SAVE_NONE = 0
SAVE_SETTINGS = 1


@dataclass(frozen=True)
class EnumValue:
    """One value of an enumeration; a text is None when it is not set."""

    number: int
    enumerator: str
    """Full name in C++."""
    display: str | None
    short: str | None
    remote: str | None
    serial: str | None
    brief: str
    """Meaning, possibly empty."""
    value: float | None
    """The number that the value stands for, in its base unit."""
    location: Location

    @property
    def label(self) -> str:
        """What a reader of documentation knows the value by."""
        return self.display or self.serial or str(self.number)


@dataclass(frozen=True)
class EnumType:
    """An enumeration; values are dense from 0."""

    name: str
    brief: str
    file: str
    """Stem of the model file."""
    location: Location
    values: tuple[EnumValue, ...]
    steps_by_number: bool = False
    """Whether steps follow the numbers of the values instead of their order."""


@dataclass(frozen=True)
class NumberFacets:
    """What a numeric property declares beside its value; None where the frame's default holds."""

    unit: EnumValue | None = None
    minimum: int | float | None = None
    maximum: int | float | None = None
    step: int | float | None = None
    step_mode: str | None = None
    step_factor: float | None = None
    step_behaviour: str | None = None
    resolution: int | float | None = None
    bits: int | None = None


@dataclass(frozen=True)
class FileFacets:
    """What a file path property declares."""

    folder: str | None = None
    stem: str | None = None
    open: tuple[str, ...] = ()
    save_as: tuple[str, ...] = ()


@dataclass(frozen=True)
class Property:
    """A property of a group."""

    name: str
    kind: str
    """Name of the type in the model; "enum" for all enumerations."""
    enum: EnumType | None
    brief: str
    location: Location
    result: bool
    save: int
    default: int | float | str | EnumValue | None
    """None where the frame's default (0, empty) holds."""
    confirm: bool = False
    """A client's write of the value that stands runs the rules, too."""
    item_defaults: tuple[int | float | EnumValue, ...] = ()
    """Defaults of the first items of an array; `default` holds for all others."""
    values: tuple[int | float | str, ...] = ()
    enabled: tuple[EnumValue, ...] = ()
    format: str | None = None
    length: int | None = None
    form: str | None = None
    """What a text must look like."""
    number: NumberFacets = NumberFacets()
    path: FileFacets = FileFacets()
    secret: bool = False
    measured: str | None = None
    """What the acquisition delivers: a "reading", invalid until then, or a "count"."""
    remote: str | None = None
    """Word of remote control, the letters of its short form as capitals; None where the name's own
    words make it."""


@dataclass(frozen=True)
class Child:
    """A child group, or a container of groups, of a group."""

    name: str
    group: str
    kind: str
    """"single", "array" or "map"."""
    location: Location
    size: int = 0
    """Initial count of an array."""
    dynamic: bool = True
    """Clients may insert and remove items."""
    max_count: int = MAX_COUNT
    pattern: str | None = None
    remote: str | None = None
    """As that of a property."""


@dataclass(frozen=True)
class Action:
    """An action of a group; `kind` is "function" or "operation"."""

    name: str
    brief: str
    kind: str
    location: Location
    remote: str | None = None
    """As that of a property."""


@dataclass(frozen=True)
class Members:
    """What a group is made of, each kind in its order."""

    properties: tuple[Property, ...] = ()
    children: tuple[Child, ...] = ()
    actions: tuple[Action, ...] = ()


@dataclass(frozen=True)
class Group:
    """A class of property groups."""

    name: str
    brief: str
    room: str
    """Folder of the model file: everything that concerns the group stands there."""
    file: str
    """Stem of the model file."""
    location: Location
    rules: bool
    """A hand-written class derives from the generated one."""
    root: bool
    properties: tuple[Property, ...]
    children: tuple[Child, ...]
    actions: tuple[Action, ...]
    removed: Members
    """Parts of the tree that were; clients that were built with their accessors still call them."""
    accessors: tuple[str, ...] = ()
    """Names of all members, removed ones included, in the order of the interface: by release, so
    that no accessor changes its place in the virtual table."""

    def in_room(self, file: str) -> str:
        """Path of one of the group's files."""
        return f"{self.room}/{file}" if self.room else file

    @property
    def declared(self) -> Members:
        """The members of the tree and the removed ones."""
        return Members(
            self.properties + self.removed.properties, self.children + self.removed.children,
            self.actions + self.removed.actions,
        )

    @property
    def indexed(self) -> bool:
        """Whether the group's constructor needs its index in an array."""
        return any(p.item_defaults for p in self.declared.properties)


@dataclass
class Model:
    """Everything that was declared, in the order of the files."""

    enums: dict[str, EnumType] = field(default_factory=dict)
    groups: dict[str, Group] = field(default_factory=dict)
