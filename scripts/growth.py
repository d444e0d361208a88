#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""What scripts/check-abi.sh needs to know of client interfaces and of a model that grows.

order KEPT PRESENT      accessors of the kept headers stand at their places in the present ones
client KEPT FILE        writes what a client of the kept headers calls, for tests/abi/Walk.h
grow FOLDER             makes the model below a copy of the sources grow everywhere; prints what it
                        marked as removed
compare OLD NEW REMOVED answers of such a client to the present and to the grown library
"""

import itertools
import re
import sys
from collections.abc import Iterator
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tools"))

from modelgen.diagnostics import Diagnostics  # noqa: E402
from modelgen.reader import Entry, Table, read_folder  # noqa: E402

INTERFACE = re.compile(r"class KW_EXPORT IKWFunction(?!RootBase)(\w+) : public IKWFunction\w*Base\n"
                       r"{(.*?)\n};", re.DOTALL)
ACCESSOR = re.compile(r"virtual\s+std::shared_ptr<(.+?)>\s+(Get(?:Pr|Pg)(\w+))\(\) const = 0;")
ENUMERATION = re.compile(r"^enum (KW_\w+) : INT32\n{(.*?)\n};", re.DOTALL | re.MULTILINE)
ENUMERATOR = re.compile(r"^    (eKW_\w+) = (\d+)", re.MULTILINE)
ENTRY = re.compile(r'\{(?:[^{}"]|"(?:[^"\\]|\\.)*")*\}')

MISSED = ": not reached"

NEW_GROUP = """[Growth]
brief = "Came later."
properties = [ { name = "Size", type = "double", save = 0, brief = "Came later." } ]
"""
NEW = {
    "properties": '{ name = "Grown", remote = "GROWN", type = "double", default = 5, min = 0, max = 10, step = 1, '
                  'brief = "Came later."%s }',
    "children": '{ name = "Growth", remote = "GROWTH" }',
    "actions": '{ name = "Grow", brief = "Came later." }',
}


def interfaces(folder: Path) -> dict[str, list[tuple[str, str, str]]]:
    """By group: handle, accessor and name of each member, in the order of the virtual table."""
    found = {}
    for path in sorted(folder.glob("IKWFunction*.h")):
        for name, body in INTERFACE.findall(path.read_text(encoding="utf-8")):
            found[name] = ACCESSOR.findall(body)
    return found


def check_order(kept: Path, present: Path) -> int:
    now = interfaces(present)
    wrong = 0
    for group, accessors in interfaces(kept).items():
        for i, (handle, accessor, _) in enumerate(accessors):
            found = now.get(group, [])[i:i + 1]
            if not found or found[0][:2] != (handle, accessor):
                shown = f"{found[0][1]} with a {found[0][0]}" if found else "nothing"
                print(f"abi: IKWFunction{group}: {shown} stands where programs that are built look "
                      f"for {accessor} with a {handle}", file=sys.stderr)
                wrong += 1
                break
    return 1 if wrong else 0


def enumerations(folder: Path) -> dict[str, list[tuple[str, str]]]:
    """Enumerators with their numbers, by type that has a name table."""
    texts = [path.read_text(encoding="utf-8") for path in sorted(folder.glob("*.h"))]
    return {name: ENUMERATOR.findall(body) for text in texts
            for name, body in ENUMERATION.findall(text)
            if f"GetStaticEnumNameInfo<{name}>()" in text}


def client(kept: Path) -> str:
    """Includes; counts and names of all known values; a function for each group that calls every
    accessor."""
    groups = interfaces(kept)
    lines = ['#include "Walk.h"', *(f'#include "IKWFunction{name}.h"' for name in groups)]
    for name, values in enumerations(kept).items():
        lines.append(f"template <> inline constexpr INT32 KNOWN_VALUES<{name}> = {len(values)};")
    lines += [f"void Walk(CWalk& walk, const IKWFunction{name}& group);" for name in groups]
    for name, accessors in groups.items():
        calls = "".join(f'    walk.Member("{name}", group.{accessor}(), "{member}");\n'
                        for _, accessor, member in accessors)
        lines.append(f"void Walk(CWalk& walk, const IKWFunction{name}& group)\n{{\n"
                     f'    static_cast<void>(group);\n    walk.Reach("{name}");\n{calls}}}')
    lines.append("void WalkValues(CWalk& walk)\n{")
    for name, values in enumerations(kept).items():
        lines += [f'    walk.Value("{enumerator}", {enumerator});' for enumerator, _ in values]
    names = "".join(f'        "{name}",\n' for name in groups)
    lines.append("}\nconst std::vector<const char*>& KeptGroups()\n{\n"
                 f"    static const std::vector<const char*> groups{{\n{names}    }};\n"
                 "    return groups;\n}\n")
    return "\n".join(lines)


class CText:
    """A model file that is changed in several places."""

    def __init__(self, path: Path) -> None:
        self._path = path
        self._text = path.read_text(encoding="utf-8")
        self._lines = [0, *(found.end() for found in re.finditer("\n", self._text))]
        self._changes: list[tuple[int, str]] = []

    def place(self, entries: list[Entry], index: int) -> re.Match[str]:
        """Where an entry of a list stands."""
        line = entries[index].location.line
        before = sum(entry.location.line == line for entry in entries[:index])
        found = ENTRY.finditer(self._text, self._lines[line - 1])
        return next(itertools.islice(found, before, None))

    def insert(self, offset: int, text: str) -> None:
        self._changes.append((offset, text))

    def write(self) -> None:
        for offset, text in sorted(self._changes, reverse=True):
            self._text = self._text[:offset] + text + self._text[offset:]
        self._path.write_text(self._text, encoding="utf-8")


def grow_groups(text: CText, tables: list[Table]) -> None:
    """A property, a group and an action in the middle of every list that has any. The property is
    a result, or saved, as that which it stands before: settings among results would bring these
    into files."""
    for table in tables:
        for key, new in NEW.items():
            entries = table.lists.get(key, [])
            if entries:
                data = entries[len(entries) // 2].data
                kind = ", result = true" * data.get("result", False)
                kind += f", save = {data['save']}" if "save" in data else ""
                text.insert(text.place(entries, len(entries) // 2).start(),
                            f"{new.replace('%s', kind)}, ")


def grow_values(text: CText, tables: list[Table]) -> None:
    """A value at the end of every type."""
    for table in tables:
        entries = table.lists["values"]
        names = "" if "remote_exempt" in table.data else 'remote = "GROWN", '
        new = f', {{ display = "Grown", {names}serial = "GROWN" }}'
        text.insert(text.place(entries, len(entries) - 1).end(), new)


def candidates(tables: list[Table], words: set[str]) -> Iterator[tuple[str, list[Entry], int, str]]:
    """Members of which the words of the rules do not speak, and of what kind each is."""
    with_rules = {table.name for table in tables if "rules" in table.data}
    leaves = {table.name for table in tables if "children" not in table.lists} - with_rules
    for table in tables:
        for key in NEW:
            for i, entry in enumerate(table.lists.get(key, [])):
                name, data = entry.data["name"], entry.data
                group = data.get("group", name)
                if key == "children" and group not in leaves:
                    continue
                if words & {name, f"m_p{name}", f"GetPr{name}", f"GetPg{name}"}:
                    continue
                kind = "enum" if data.get("type", "").startswith("KW_") else data.get("type", "")
                kind += data.get("kind", "") + "array" * ("array" in data) + "map" * ("map" in data)
                yield f"{table.name}/{name}", table.lists[key], i, f"{key} {kind}"


def remove_some(texts: dict[str, CText], tables: list[Table], folder: Path) -> list[str]:
    """Marks one member of each kind as removed, as far as no rule speaks of one."""
    sources = [path for path in folder.rglob("*") if path.suffix in (".h", ".cpp")]
    words = {word for path in sources for word in re.findall(r"\w+", path.read_text("utf-8"))}
    kinds: dict[str, str] = {}
    for name, entries, index, kind in candidates(tables, words):
        if kind not in kinds:
            kinds[kind] = name
            text = texts[entries[index].location.file]
            text.insert(text.place(entries, index).start() + 1, " removed = true,")
    return list(kinds.values())


def grow(folder: Path) -> list[str]:
    diagnostics = Diagnostics()
    for file in read_folder(folder / "database/Enumerations", diagnostics):
        text = CText(Path(file.path))
        grow_values(text, file.tables)
        text.write()
    files = read_folder(folder / "src", diagnostics)
    texts = {file.path: CText(Path(file.path)) for file in files}
    for file in files:
        grow_groups(texts[file.path], file.tables)
    removed = remove_some(texts, [table for file in files for table in file.tables], folder / "src")
    for text in texts.values():
        text.write()
    (folder / "src/Root/Growth.toml").write_text(NEW_GROUP, encoding="utf-8")
    return removed


def compare(old: list[str], new: list[str], wanted: set[str]) -> int:
    """Lines read `path: answer`; those of removed members `removed Group/Member path`."""
    told = [line.split(" ", 2) for line in new if line.startswith("removed ")]
    gone = sorted({path for _, _, path in told})
    below = re.compile("(?:" + "|".join(map(re.escape, gone or ["\n"])) + r")(?:[/\[].*)?: ")
    stayed = [line for line in old if not below.match(line)]
    # Items of removed containers are out of reach.
    now = [line for line in new if not line.startswith("removed ") and not line.endswith(MISSED)]
    different = [(a, b) for a, b in zip(stayed, now) if a != b]
    for a, b in different[:10]:
        print(f"abi: present: {a}\n     grown:   {b}", file=sys.stderr)
    if len(stayed) != len(now):
        print(f"abi: {len(stayed)} answers of the present library, {len(now)} of the grown one",
              file=sys.stderr)
    if {name for _, name, _ in told} != wanted:
        print(f"abi: removed are {sorted(wanted)}, the client found {gone}", file=sys.stderr)
        return 1
    if different or len(stayed) != len(now):
        return 1
    print(f"abi: {len(now)} answers as before, {len(wanted)} members of all kinds removed")
    return 0


def read_lines(path: str) -> list[str]:
    return Path(path).read_text(encoding="utf-8").splitlines()


def main(arguments: list[str]) -> int:
    match arguments:
        case ["order", kept, present]:
            return check_order(Path(kept), Path(present))
        case ["client", kept, file]:
            Path(file).write_text(client(Path(kept)), encoding="utf-8")
        case ["grow", folder]:
            print("\n".join(grow(Path(folder))))
        case ["compare", old, new, removed]:
            return compare(read_lines(old), read_lines(new), set(read_lines(removed)))
        case _:
            print(__doc__, file=sys.stderr)
            return 2
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
