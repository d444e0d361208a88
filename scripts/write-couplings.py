#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes one page and one graph per function from the couplings that zelctl observed.

Arguments: couplings as JSON, first level of the tree as JSON, folder to write to.
"""

import json
import os
import re
import sys

ROOT = "ZEL"
HEAD = "<!-- SPDX-License-Identifier: MIT -->\n"
HEAD += "<!-- Observed by scripts/couplings.sh: change the rules, not this file. -->\n"
NOTE = (
    "Each setting was written, from the defaults, to other values that were legal, and taken back. "
    "\"while\" names the setting that had to be written before. Couplings that need more than that "
    "are not listed. \"Row\" is the rule that did it, by group, place in the group's table, and step: "
    "the tables stand at the end of the page of the group's function. [n] is any item of an array or "
    "map.\n"
)


def collapsed(path):
    return re.sub(r"\[[^]]*\]", "[n]", path)


def function(path):
    first = re.split(r"[/\[]", path)[0]
    return first if first in FUNCTIONS else ROOT


def cell(text):
    for sign in "\\|<>*_`[]":
        text = text.replace(sign, f"\\{sign}")
    return text


def merge(couplings):
    """The first example of each pair of settings, items of arrays taken together."""
    merged = {}
    for coupling in couplings:
        source, target = collapsed(coupling["source"]), collapsed(coupling["target"])
        if source != target:
            entry = merged.setdefault((source, target), {**coupling, "moved": [], "rows": []})
            entry["moved"] += [kind for kind in coupling["moved"] if kind not in entry["moved"]]
            rows = [f"`{collapsed(row['group']) or ROOT}` {row['row']} `{row['step']}`"
                    for row in coupling["rows"]]
            entry["rows"] += [row for row in rows if row not in entry["rows"]]
    return merged


def row(cells):
    return f"| {' | '.join(cells)} |\n"


def example(coupling):
    """What was written, and what became of the target, whose path stands in the row already."""
    written, moved = coupling["text"].split(f"; {coupling['target']}", 1)
    return [cell(written), cell(moved.removeprefix(":").strip())]


def table(pairs, first):
    """Rows of couplings with an example; `first` 0 groups by source, 1 by target."""
    names = ["Setting", "Moves"] if first == 0 else ["Moved", "By"]
    text = row([*names, "What", "Setting from → to", "Effect", "While", "Row"]) + row(["---"] * 7)
    before = None
    for pair, coupling in pairs:
        lead = f"`{pair[first]}`" if pair[first] != before else ""
        before = pair[first]
        text += row([lead, f"`{pair[1 - first]}`", ", ".join(coupling["moved"]),
                     *example(coupling), cell(", ".join(coupling["while"])),
                     ", ".join(coupling["rows"])])
    return text


def rules(name, rows):
    """The rows of the groups of a function, each class of items once."""
    text = row(["Group", "Row", "When", "What"]) + row(["---"] * 4)
    before, shown = None, set()
    for entry in rows:
        group = collapsed(entry["group"]) or ROOT
        if function(entry["group"]) != name or (group, entry["row"]) in shown:
            continue
        shown.add((group, entry["row"]))
        what = f"{entry['what']} {', '.join(entry['steps'])}".strip()
        text += row([f"`{group}`" if group != before else "", str(entry["row"]),
                     cell(entry["when"]), cell(what)])
        before = group
    return f"\n## Rows of {name}\n\n{text}" if shown else ""


def page(name, merged, rows):
    moving = [item for item in merged.items() if function(item[0][0]) == name]
    moved = [item for item in merged.items()
             if function(item[0][1]) == name and function(item[0][0]) != name]
    moved.sort(key=lambda item: item[0][1])
    text = f"{HEAD}# Couplings of {name}\n\n{NOTE}"
    if not moving and not moved:
        return text + "\nNo coupling was observed.\n" + rules(name, rows)
    text += f"\n![Graph of the couplings]({name}.svg)\n"
    if moving:
        text += f"\n## What the settings of {name} move\n\n{table(moving, 0)}"
    if moved:
        text += f"\n## What moves in {name} by settings of other functions\n\n{table(moved, 1)}"
    return text + rules(name, rows)


def graph(name, merged):
    """The couplings within a function as arrows; another function is one box."""
    edges = {}
    for source, target in merged:
        ends = [end if function(end) == name else function(end) for end in (source, target)]
        if name in (function(source), function(target)):
            edges.setdefault(tuple(ends), None)
    nodes = dict.fromkeys(end for edge in edges for end in edge)
    text = "// SPDX-License-Identifier: MIT\n"
    text += f'digraph "{name}" {{\n  rankdir=LR;\n  node [shape=box, fontname="sans-serif"];\n'
    text += '  bgcolor="white";\n'
    for node in nodes:
        shown = node[len(name) + 1:] if node.startswith(f"{name}/") else node
        style = "" if function(node) == name and node != name else ", style=rounded"
        text += f'  "{node}" [label="{shown}"{style}];\n'
    for source, target in edges:
        text += f'  "{source}" -> "{target}";\n'
    return text + "}\n"


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        answer = json.load(file)
    merged = merge(answer["couplings"])
    for name in [ROOT, *sorted(FUNCTIONS)]:
        contents = {"md": page(name, merged, answer["rows"])}
        if f"({name}.svg)" in contents["md"]:
            contents["dot"] = graph(name, merged)
        for suffix, text in contents.items():
            with open(os.path.join(sys.argv[3], f"{name}.{suffix}"), "w",
                      encoding="utf-8") as file:
                file.write(text)


if __name__ == "__main__":
    with open(sys.argv[2], encoding="utf-8") as tree:
        FUNCTIONS = {node["path"] for node in json.load(tree)["nodes"]
                     if node["kind"] in ("group", "array", "map")}
    main()
