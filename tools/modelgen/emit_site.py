# SPDX-License-Identifier: MIT
"""The settings reference as pages for a browser: a page for each function, with a search that needs
no server."""

import html
import json
import re
from collections import defaultdict
from dataclasses import dataclass, field
from pathlib import Path

from . import facts, remote
from .couplings import Coupling, any_item
from .model import Action, Child, EnumType, Group, Model, Property

_ASSETS = Path(__file__).resolve().parent / "site"
_SUFFIX = {"single": ("", "", ""), "array": ("[n]", "<n>", "[n]"),
           "map": ("[name]", "<n>", '["name"]')}


@dataclass(frozen=True)
class Place:
    """Where a group stands: as paths, commands and Python call it, each to go before a member."""

    path: str = ""
    header: str = ""
    python: str = "root."


@dataclass
class Site:
    """What pages need of all others."""

    model: Model
    places: dict[str, list[Place]]
    moves: dict[str, list[Coupling]] = field(default_factory=lambda: defaultdict(list))
    moved: dict[str, list[Coupling]] = field(default_factory=lambda: defaultdict(list))
    addresses: dict[str, str] = field(default_factory=dict)
    """Of nodes, by their path without keys of items."""
    entries: list[list[str]] = field(default_factory=list)


def _places(model: Model) -> dict[str, list[Place]]:
    """Every place of every group, in tree order."""
    found: dict[str, list[Place]] = {name: [] for name in model.groups}

    def visit(group: Group, place: Place) -> None:
        found[group.name].append(place)
        for child in group.children:
            path, header, python = _SUFFIX[child.kind]
            visit(model.groups[child.group], Place(
                f"{place.path}{child.name}{path}/",
                f"{place.header}{remote.mnemonic(child)}{header}:",
                f"{place.python}{child.name}{python}."))

    for group in model.groups.values():
        if group.root:
            visit(group, Place())
    return found


def _text(text: str) -> str:
    return html.escape(text)


def _code(text: str) -> str:
    return f"<code>{html.escape(text)}</code>"


def _address(group: Group, name: str = "") -> str:
    return f"{group.file}.html#{group.name}{f'.{name}' if name else ''}"


def _page(title: str, content: str, script: str = "") -> str:
    return f"""<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{_text(title)}</title>
<link rel="stylesheet" href="style.css">
</head>
<body>
<a class="skip" href="#content">To the content</a>
<header>
<a href="index.html">Settings reference</a>
<a href="enumerations.html">Enumerations</a>
<form action="index.html" role="search">
<input type="search" id="search" name="q" aria-label="Search names, meanings, units and commands"
title="Names, meanings, units and commands">
<button>Search</button>
</form>
</header>
<main id="content">
<h1>{_text(title)}</h1>
{content}</main>
{script}</body>
</html>
"""


def _facts(pairs: list[tuple[str, str]]) -> str:
    rows = "".join(f"<dt>{word}</dt><dd>{text}</dd>\n" for word, text in pairs if text)
    return f"<dl>\n{rows}</dl>\n" if rows else ""


def _names(lines: list[str]) -> str:
    return "<br>".join(_code(line) for line in lines)


def _type(prop: Property) -> str:
    if prop.enum:
        return f'<a href="enumerations.html#{prop.enum.name}">{_text(prop.enum.name)}</a>'
    return prop.kind


def _node(site: Site, path: str) -> str:
    address = site.addresses.get(any_item(path))
    return f'<a href="{address}">{_code(path)}</a>' if address else _code(path)


def _moves(site: Site, title: str, couplings: list[Coupling], backwards: bool) -> str:
    """A folded list of what a setting moves, or of what moves it."""
    if not couplings:
        return ""
    items = ""
    for coupling in couplings:
        other = coupling.source if backwards else coupling.target
        condition = f" while {_text(coupling.condition)}" if coupling.condition else ""
        items += f"<li>{_node(site, other)}: {_text(coupling.what)}{condition}</li>\n"
    return (f"<details><summary>{title} {len(couplings)}</summary>\n<ul>\n{items}</ul>\n"
            f"</details>\n")


def _coupled(found: dict[str, list[Coupling]], paths: list[str]) -> list[Coupling]:
    """Of all places, each once."""
    return list(dict.fromkeys(c for path in paths for c in found.get(any_item(path), [])))


def _article(group: Group, name: str, brief: str, content: str) -> str:
    return (f'<article id="{group.name}.{name}">\n<h3>{_text(name)}</h3>\n'
            f"<p>{_text(facts.sentence(brief))}</p>\n{content}</article>\n")


def _commands(places: list[Place], member: Property | Action) -> list[str]:
    return [place.header + remote.mnemonic(member) for place in places]


def _property(site: Site, group: Group, prop: Property) -> str:
    places = site.places[group.name]
    paths = [place.path + prop.name for place in places]
    content = _facts([
        ("Type", _type(prop)), ("Unit", _text(facts.unit(prop))),
        ("Range", _text(facts.limits(prop))), ("Default", _text(facts.default(prop))),
        ("Kind", facts.kind(prop)), ("Saved with", facts.saved(prop)), ("Path", _names(paths)),
        ("Remote", _names(_commands(places, prop))),
        ("Python", _names([place.python + prop.name for place in places])),
    ])
    content += _moves(site, "Moves", _coupled(site.moves, paths), False)
    content += _moves(site, "Moved by", _coupled(site.moved, paths), True)
    return _article(group, prop.name, prop.brief, content)


def _action(site: Site, group: Group, action: Action) -> str:
    places = site.places[group.name]
    content = _facts([
        ("Kind", action.kind), ("Path", _names([place.path + action.name for place in places])),
        ("Remote", _names(_commands(places, action))),
        ("Python", _names([f"{place.python}{action.name}()" for place in places])),
    ])
    return _article(group, action.name, action.brief, content)


def _child(site: Site, child: Child) -> str:
    target = site.model.groups[child.group]
    kind = "group" if child.kind == "single" else child.kind
    size = facts.count(child)
    return (f'<li><a href="{_address(target)}">{_text(child.name)}</a>, {kind}'
            f'{f" ({_text(size)})" if size else ""}: {_text(facts.sentence(target.brief))}</li>\n')


def _group(site: Site, group: Group) -> str:
    where = [place.path.rstrip("/") for place in site.places[group.name]]
    text = f'<section aria-labelledby="{group.name}">\n<h2 id="{group.name}">{group.name}</h2>\n'
    text += f"<p>{_text(facts.sentence(group.brief))}</p>\n"
    text += f"<p class=\"quiet\">Path: {', '.join(_code(p) if p else 'the root' for p in where)}</p>\n"
    text += "".join(_property(site, group, prop) for prop in group.properties)
    text += "".join(_action(site, group, action) for action in group.actions)
    if group.children:
        text += f"<ul>\n{''.join(_child(site, child) for child in group.children)}</ul>\n"
    return f"{text}</section>\n"


def _enumeration(enum: EnumType) -> str:
    rows = ""
    for value in enum.values:
        stands_for = "" if value.value is None else facts.figure(value.value)
        cells = [value.display or "", value.serial or "", value.remote or "", stands_for,
                 value.brief]
        rows += f"<tr><th scope=\"row\">{value.number}</th>"
        rows += "".join(f"<td>{_text(cell)}</td>" for cell in cells) + "</tr>\n"
    head = "".join(f'<th scope="col">{word}</th>' for word in
                   ("Value", "Display", "Serial", "Remote", "Number", "Meaning"))
    return (f'<section aria-labelledby="{enum.name}">\n<h2 id="{enum.name}">{enum.name}</h2>\n'
            f"<p>{_text(facts.sentence(enum.brief))}</p>\n<div class=\"wide\" tabindex=\"0\" "
            f"role=\"region\" aria-labelledby=\"{enum.name}\"><table>\n<tr>{head}</tr>\n{rows}"
            f"</table></div>\n</section>\n")


def _register(site: Site, group: Group) -> None:
    """Makes what the group has known to links and to the search."""
    members = [(prop, facts.unit(prop)) for prop in group.properties]
    members += [(action, "") for action in group.actions]
    for place in site.places[group.name]:
        for member, unit in members:
            address = _address(group, member.name)
            site.addresses[any_item(place.path + member.name)] = address
            site.entries.append([member.name, place.path + member.name, unit,
                                 place.header + remote.mnemonic(member), member.brief, address])
        if place.path:
            path = place.path.rstrip("/")
            site.entries.append([re.split(r"[/\[]", path)[-1].rstrip("]") or group.name, path, "",
                                 place.header.rstrip(":"), group.brief, _address(group)])


def _index(pages: dict[str, list[Group]]) -> str:
    rooms: dict[str, str] = defaultdict(str)
    for file, groups in pages.items():
        rooms[groups[0].room] += (f'<li><a href="{file}.html">{_text(file)}</a>: '
                                  f"{_text(facts.sentence(groups[0].brief))}</li>\n")
    text = "".join(f"<h2>{_text(room)}</h2>\n<ul>\n{items}</ul>\n"
                   for room, items in rooms.items())
    content = ('<p>Every setting, result and action of the instrument: with unit, range, default, '
               "remote command, Python name, and what moves what.</p>\n"
               '<p id="status" role="status" class="quiet"></p>\n'
               f'<ul id="results" class="results"></ul>\n<div id="functions">\n{text}</div>\n'
               "<noscript><p>The search needs scripts; all pages can be read without.</p>"
               "</noscript>\n")
    return _page("Settings reference", content,
                 '<script src="entries.js"></script>\n<script src="search.js"></script>\n')


def emit(model: Model, couplings: list[Coupling]) -> dict[str, str]:
    """Pages by their names."""
    site = Site(model, _places(model))
    for coupling in couplings:
        site.moves[any_item(coupling.source)].append(coupling)
        site.moved[any_item(coupling.target)].append(coupling)
    pages: dict[str, list[Group]] = defaultdict(list)
    for group in model.groups.values():
        if site.places[group.name]: # what was removed has no place in the tree
            pages[group.file].append(group)
            _register(site, group)
    files = {f"{file}.html": _page(f"Settings of {file}",
                                   "".join(_group(site, group) for group in groups))
             for file, groups in pages.items()}
    enumerations = "".join(_enumeration(enum) for enum in model.enums.values())
    files["enumerations.html"] = _page("Enumerations", enumerations)
    files["index.html"] = _index(pages)
    entries = ",\n".join(json.dumps(entry, ensure_ascii=False) for entry in site.entries)
    files["entries.js"] = f"window.entries = [\n{entries}\n];\n"
    for asset in ("style.css", "search.js"):
        files[asset] = (_ASSETS / asset).read_text(encoding="utf-8")
    return files
