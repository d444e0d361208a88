# SPDX-License-Identifier: MIT
"""Second stage: group tables to the plain model."""

import re
from collections.abc import Callable
from typing import TypeVar

from .check_properties import NODE_NAME, SAVE_HIGHEST, check_property
from .diagnostics import Diagnostics, Location
from .keys import CKeys, check_stem
from .model import MAX_COUNT, RESERVED_PAGES, SAVE_SETTINGS, Action, Child, EnumType, Group, Members
from .reader import Entry, ModelFile, Table

_Member = TypeVar("_Member")

# Container classes put a small letter behind the same prefix; a group's capital keeps them apart.
_GROUP_NAME = re.compile(r"[A-Z][A-Za-z0-9_]*")
_ACTION_KINDS = ("function", "operation")


def _child_kind(keys: CKeys) -> str:
    is_map = keys.flag("map")
    if keys.has("array") and is_map:
        keys.fail("a child is an array or a map, not both")
    kind = "array" if keys.has("array") else "map" if is_map else "single"
    for key, kinds in (("dynamic", ("array",)), ("max", ("array", "map")), ("pattern", ("map",))):
        if keys.has(key) and kind not in kinds:
            keys.fail(f"key '{key}' applies to {' and '.join(kinds)} only")
    return kind


def _check_child(keys: CKeys) -> Child | None:
    keys.allow("name", "group", "array", "map", "dynamic", "max", "pattern", "removed", "remote")
    if not keys.require("name"):
        return None
    name = keys.text("name")
    if name is None:
        return None
    if not _GROUP_NAME.fullmatch(name):
        keys.fail(f"'{name}' is no name of a group")
    kind = _child_kind(keys)
    size = keys.whole("array", 0, MAX_COUNT, 0)
    max_count = keys.whole("max", 1, MAX_COUNT, MAX_COUNT)
    if size > max_count:
        keys.fail(f"array size {size} is greater than max {max_count}")
    pattern = keys.text("pattern")
    if pattern is not None and pattern.count("%1") != 1:
        keys.fail("'pattern' must hold %1 once")
    return Child(
        name=name, group=keys.text("group") or name, kind=kind, location=keys.location, size=size,
        dynamic=keys.flag("dynamic", size == 0), max_count=max_count, pattern=pattern,
        remote=keys.text("remote"),
    )


def _check_action(keys: CKeys) -> Action | None:
    keys.allow("name", "brief", "kind", "removed", "remote")
    if not keys.require("name", "brief"):
        return None
    name = keys.text("name")
    if name is None:
        return None
    if not NODE_NAME.fullmatch(name):
        keys.fail(f"'{name}' is no name of a node")
    kind = keys.choice("kind", _ACTION_KINDS, "function")
    return Action(name, keys.brief(), kind, keys.location, keys.text("remote"))


class _GroupCheck:
    """Checks one table."""

    def __init__(self, table: Table, enums: dict[str, EnumType], diagnostics: Diagnostics) -> None:
        self._table = table
        self._enums = enums
        self._diagnostics = diagnostics
        self._names: dict[str, Location] = {}

    def _entries(self, key: str) -> list[Entry]:
        if self._table.data.get(key, []) != []:
            where = self._table.where(key)
            self._diagnostics.report(where, f"'{key}' must be a list of {{ … }} entries")
        return self._table.lists.get(key, [])

    def _keys(self, entry: Entry, what: str) -> CKeys:
        """Access to an entry, whose name must be new: all members share one namespace."""
        name = entry.data.get("name")
        if isinstance(name, str):
            if name in self._names:
                text = f"duplicate name '{name}' in {self._table.name}"
                text += f", first at {self._names[name]}"
                self._diagnostics.report(entry.location, text)
            self._names.setdefault(name, entry.location)
        unnamed = f"{'an' if what == 'action' else 'a'} {what}"
        label = f"{what} '{name}'" if isinstance(name, str) else unnamed
        return CKeys(entry.data, entry.location, self._diagnostics, label)

    def _members(
        self, key: str, what: str, check: Callable[[CKeys], _Member | None]
    ) -> tuple[tuple[_Member, ...], tuple[_Member, ...]]:
        """Those of the tree, and the removed ones."""
        lists: tuple[list[_Member], list[_Member]] = ([], [])
        for entry in self._entries(key):
            keys = self._keys(entry, what)
            member = check(keys)
            removed = keys.flag("removed")
            if member:
                lists[removed].append(member)
        return tuple(lists[0]), tuple(lists[1])

    def run(self, file: ModelFile) -> Group:
        table = self._table
        keys = CKeys(
            {**table.data, **table.lists}, table.location, self._diagnostics, f"group {table.name}"
        )
        keys.allow("brief", "rules", "root", "save", "properties", "children", "actions")
        keys.require("brief")
        if not _GROUP_NAME.fullmatch(table.name):
            keys.fail(f"'{table.name}' is no name of a group")
        save = keys.whole("save", 0, SAVE_HIGHEST, SAVE_SETTINGS)
        properties, removed_properties = self._members(
            "properties", "property", lambda k: check_property(k, save, self._enums)
        )
        children, removed_children = self._members("children", "child", _check_child)
        actions, removed_actions = self._members("actions", "action", _check_action)
        return Group(
            name=table.name, brief=keys.brief(), room=file.room, file=file.stem,
            location=table.location,
            rules=keys.flag("rules"), root=keys.flag("root"),
            properties=properties, children=children, actions=actions,
            removed=Members(removed_properties, removed_children, removed_actions),
        )


def _check_root(groups: dict[str, Group], diagnostics: Diagnostics) -> None:
    roots = [group for group in groups.values() if group.root]
    if groups and not roots:
        diagnostics.report(next(iter(groups.values())).location, "no group is marked as the root")
    for other in roots[1:]:
        diagnostics.report(
            other.location, f"a second root {other.name}, the first is at {roots[0].location}"
        )


def _check_children(groups: dict[str, Group], diagnostics: Diagnostics) -> None:
    """Every child has a class, every class but the root has a parent."""
    used = set()
    for group in groups.values():
        for child in group.declared.children:
            target = groups.get(child.group)
            used.add(child.group)
            if not target:
                diagnostics.report(child.location, f"no file defines the group {child.group}")
            elif target.root:
                diagnostics.report(child.location, f"the root {child.group} can be no child")
    for group in groups.values():
        if group.name not in used and not group.root:
            diagnostics.report(group.location, f"group {group.name} is a child of no group")


def _check_class_names(groups: dict[str, Group], diagnostics: Diagnostics) -> None:
    for group in groups.values():
        owner = groups.get(group.name.removesuffix("Base"))
        if owner and owner is not group and owner.rules:
            diagnostics.report(
                group.location, f"the class CPg{group.name} is taken by the rules of {owner.name}"
            )


class _CycleCheck:
    """Finds groups that contain themselves; such a tree would have no end."""

    def __init__(self, groups: dict[str, Group], diagnostics: Diagnostics) -> None:
        self._groups = groups
        self._diagnostics = diagnostics
        self._done: set[str] = set()

    def visit(self, name: str, above: tuple[str, ...] = ()) -> None:
        path = (*above, name)
        for child in self._groups[name].declared.children:
            if child.group in path:
                cycle = " > ".join([*path[path.index(child.group):], child.group])
                self._diagnostics.report(child.location, f"groups contain each other: {cycle}")
            elif child.group in self._groups and child.group not in self._done:
                self.visit(child.group, path)
        self._done.add(name)

    def run(self) -> None:
        for name in self._groups:
            if name not in self._done:
                self.visit(name)


def check_groups(
    files: list[ModelFile], enums: dict[str, EnumType], diagnostics: Diagnostics
) -> dict[str, Group]:
    """All groups by name, in the order of the files."""
    groups: dict[str, Group] = {}
    for file in files:
        check_stem(file, diagnostics, RESERVED_PAGES)
        for table in file.tables:
            if table.name in groups:
                first = groups[table.name].location
                diagnostics.report(
                    table.location, f"duplicate group {table.name}, first at {first}"
                )
                continue
            groups[table.name] = _GroupCheck(table, enums, diagnostics).run(file)
    _check_root(groups, diagnostics)
    _check_children(groups, diagnostics)
    _check_class_names(groups, diagnostics)
    _CycleCheck(groups, diagnostics).run()
    return groups
