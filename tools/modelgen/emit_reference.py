# SPDX-License-Identifier: MIT
"""Third stage: the settings reference in Markdown."""

import posixpath
import re

from . import facts, remote
from .cpptext import GENERATED
from .model import Child, EnumType, EnumValue, Group, Model, Property

_HEAD = "<!-- SPDX-License-Identifier: MIT -->\n"
_HEAD += f"<!-- {GENERATED} the model: change the model, not this file. -->\n"


def _cell(text: str) -> str:
    """A text that stays within its table cell and is not taken for markup."""
    for sign in "\\|<>*_`[]":
        text = text.replace(sign, f"\\{sign}")
    return text


def _row(cells: list[str]) -> str:
    return f"| {' | '.join(cells)} |\n"


def _table(header: list[str], rows: list[list[str]]) -> str:
    return _row(header) + _row(["---"] * len(header)) + "".join(_row(row) for row in rows)


def _anchor(name: str) -> str:
    """The anchor that a heading of this name gets."""
    return name.lower()


def _page(group: Group) -> str:
    """The page that a group stands on."""
    return f"{group.in_room(group.file)}.md"


def _link(group: Group, target: str) -> str:
    """From a group's page to another."""
    return posixpath.relpath(target, posixpath.dirname(_page(group)) or ".")


def group_paths(model: Model) -> dict[str, list[str]]:
    """Every place of every group, in tree order; items are [n] in arrays and [name] in maps."""
    paths: dict[str, list[str]] = {name: [] for name in model.groups}
    suffix = {"single": "", "array": "[n]", "map": "[name]"}

    def visit(group: Group, path: str) -> None:
        paths[group.name].append(path)
        for child in group.children:
            step = f"{child.name}{suffix[child.kind]}"
            visit(model.groups[child.group], f"{path}/{step}" if path else step)

    for group in model.groups.values():
        if group.root:
            visit(group, "")
    return paths


def _type_cell(prop: Property, group: Group) -> str:
    if prop.enum:
        page = _link(group, "enumerations.md")
        return f"[{_cell(prop.enum.name)}]({page}#{_anchor(prop.enum.name)})"
    return prop.kind


def _property_row(prop: Property, group: Group) -> list[str]:
    return [
        f"`{prop.name}`", f"`{remote.mnemonic(prop)}`", _type_cell(prop, group), _cell(facts.unit(prop)), _cell(facts.limits(prop)),
        _cell(facts.default(prop)), facts.kind(prop), facts.saved(prop), _cell(prop.brief),
    ]


def _child_row(child: Child, group: Group, model: Model) -> list[str]:
    target = model.groups[child.group]
    kind = "group" if child.kind == "single" else child.kind
    link = f"[{_cell(child.name)}]({_link(group, _page(target))}#{_anchor(target.name)})"
    return [link, f"`{remote.mnemonic(child)}`", kind, facts.count(child), _cell(target.brief)]


def _group(group: Group, places: list[str], model: Model) -> str:
    where = ", ".join(f"`{place}`" if place else "the root" for place in places)
    text = f"\n## {group.name}\n\n{facts.sentence(_cell(group.brief))}\n\nPath: {where}\n"
    if group.properties:
        header = ["Property", "Remote", "Type", "Unit", "Range", "Default", "Kind", "Saved with",
                  "Meaning"]
        text += "\n" + _table(header, [_property_row(p, group) for p in group.properties])
    if group.children:
        header = ["Child", "Remote", "Kind", "Size", "Meaning"]
        text += "\n" + _table(header, [_child_row(c, group, model) for c in group.children])
    if group.actions:
        rows = [[f"`{a.name}`", f"`{remote.mnemonic(a)}`", a.kind, _cell(a.brief)]
                for a in group.actions]
        text += "\n" + _table(["Action", "Remote", "Kind", "Meaning"], rows)
    return text


def _value_row(value: EnumValue) -> list[str]:
    texts = [value.display, value.short, value.remote, value.serial]
    stands_for = "" if value.value is None else facts.figure(value.value)
    return [str(value.number), *[_cell(text or "") for text in texts], stands_for,
            _cell(value.brief)]


def _enumeration(enum: EnumType) -> str:
    header = ["Value", "Display", "Short", "Remote", "Serial", "Number", "Meaning"]
    rows = [_value_row(value) for value in enum.values]
    brief = facts.sentence(_cell(enum.brief))
    steps = " Steps follow the numbers." if enum.steps_by_number else ""
    return f"\n## {enum.name}\n\n{brief}{steps}\n\n{_table(header, rows)}"


def _index(pages: dict[str, list[Group]]) -> str:
    rows = [
        [groups[0].room, f"[{groups[0].file}]({page})",
         ", ".join(_cell(group.name) for group in groups)]
        for page, groups in pages.items()
    ]
    return (
        f"{_HEAD}# Settings reference\n\nOne page per instrument function. Values of "
        f"enumerations stand on a [page of their own](enumerations.md), and so do all\n"
        f"[commands of remote control](remote.md).\n\n"
        f"{_table(['Room', 'Function', 'Groups'], rows)}"
    )


def _couplings(groups: list[Group], places: dict[str, list[str]], model: Model) -> str:
    """Links to what was observed of the functions that the groups of a page stand in."""
    root = next((group.name for group in model.groups.values() if group.root), "")
    paths = [place for group in groups for place in places[group.name]]
    functions = dict.fromkeys(re.split(r"[/\[]", path)[0] or root for path in paths)
    links = ", ".join(
        f"[{name}]({_link(groups[0], f'couplings/{name}.md')})" for name in sorted(functions)
    )
    return f"\nWhat moves what: {links}\n"


_REMOTE = f"""{_HEAD}# Commands of remote control

The header of every node, in the order of the tree. Capitals, digits and "_" are the short form, all
letters the long one; both may be written in any case. `<n>` is the number of an item, from 1: place
in an array, key in a map; without it the first is meant. A setting is written by its header and a
value, and read by its header and "?"; results are only read, actions only run. Below `ITEM` stand
the commands of an array or map itself: `COUNt?`, `CATalog?`, `INSert`, `REMove`, `REName`, `COPY`
and `ACTive`.

## Commands of every instrument

| Command | What it does |
| --- | --- |
| `*CLS` | empties the queue of errors and all event registers |
| `*ESE mask`, `*ESE?`, `*ESR?` | enables and reads standard events |
| `*IDN?` | manufacturer, model, serial number (0 where it is unknown), version |
| `*LRN?` | all settings, as one command to send back |
| `*OPC`, `*OPC?`, `*WAI` | tells, answers or waits until the operations of this connection have ended |
| `*RST` | sets the defaults of the user's settings |
| `*SAV n`, `*RCL n` | saves settings to a slot of the instrument, 1 to 10, and recalls them |
| `*SRE mask`, `*SRE?`, `*STB?` | enables service requests, reads the status byte |
| `*TST?` | runs the self-test: 0 when it passed |
| `SYSTem:ERRor[:NEXT]?`, `:ALL?`, `:COUNt?` | the oldest error, all of them, their number |
| `SYSTem:WARNing?` | what the newest write was limited or moved to; 0 when there was none |
| `SYSTem:REMote`, `SYSTem:LOCal`, `SYSTem:RWLock` | remote state, local state, remote state with locked keys |
| `SYSTem:SET settings` | takes the answer of `*LRN?` |
| `SYSTem:HELP:HEADers?` | all headers |
| `SYSTem:VERSion?` | 1999.0 |
| `STATus:OPERation[:EVENt]?`, `:CONDition?`, `:ENABle mask`, `:ENABle?` | 1 aligning, 16 measuring, 32 waiting for a trigger, 16384 a sequence runs |
| `STATus:QUEStionable[:EVENt]?`, `:CONDition?`, `:ENABle mask`, `:ENABle?` | 1 overload, 16 temperature, 256 alignment, 16384 a warning |
| `STATus:PRESet` | disables both |

## Commands of this instrument

"""


def _commands(model: Model) -> list[list[str]]:
    """Header, path and kind of every node below the root."""
    rows: list[list[str]] = []
    suffix = {"single": ("", ""), "array": ("<n>", "[n]"), "map": ("<n>", "[name]")}

    def add(header: str, path: str, text: str) -> None:
        rows.append([f"`{header}`", f"`{path}`", _cell(text)])

    def visit(group: Group, header: str, path: str) -> None:
        for prop in group.properties:
            kind = " ".join(filter(None, (prop.enum.name if prop.enum else prop.kind,
                                          facts.unit(prop))))
            add(header + remote.mnemonic(prop), path + prop.name, f"{facts.kind(prop)}, {kind}")
        for action in group.actions:
            add(header + remote.mnemonic(action), path + action.name, "action")
        for child in group.children:
            word, item = header + remote.mnemonic(child), path + child.name
            if child.kind != "single":
                add(f"{word}:{remote.ITEM_WORD}", item, child.kind)
            of_header, of_path = suffix[child.kind]
            visit(model.groups[child.group], f"{word}{of_header}:", f"{item}{of_path}/")

    for group in model.groups.values():
        if group.root:
            visit(group, "", "")
    return rows


def emit(model: Model) -> dict[str, str]:
    """Pages of the reference: path below the output folder, and content."""
    of_page: dict[str, list[Group]] = {}
    places = group_paths(model)
    for group in model.groups.values():
        # What was removed has no place in the tree.
        if places[group.name]:
            of_page.setdefault(_page(group), []).append(group)
    pages = {"index.md": _index(of_page)}
    enumerations = "".join(_enumeration(enum) for enum in model.enums.values())
    pages["enumerations.md"] = f"{_HEAD}# Enumerations\n{enumerations}"
    pages["remote.md"] = _REMOTE + _table(["Header", "Node", "Kind"], _commands(model))
    for page, groups in of_page.items():
        text = "".join(_group(group, places[group.name], model) for group in groups)
        # A title equal to a group's name would take that group's anchor.
        links = _couplings(groups, places, model)
        pages[page] = f"{_HEAD}# Settings of {groups[0].file}\n{links}{text}"
    return {f"docs/settings/{page}": text for page, text in pages.items()}
