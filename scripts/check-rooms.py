#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Fails when a source includes what its room may not, when the folders of a room include each other
against their order, when files go round in a circle, or when the model's folders hold code.

The rooms and what they may include are described in docs/architecture.md.
"""

import argparse
import re
import sys
from pathlib import Path

# Longest prefix decides. Generated files belong to the room that they are generated for.
ROOMS = {
    "support": "support",
    "database/CommonDatabase": "frame",
    "database/Enumerations": "model",
    "src": "rules",
    "ifc": "ifc",
    "tools": "tools",
    "tools/shared": "shared",
    "service": "service",
    "qt": "adapter",
    "python": "python",
    "examples": "client",
    "examples/service": "service client",
    "tests": "tests",
    "tests/client": "client tests",
    "tests/abi": "client tests",
    "tests/service": "service tests",
    "tests/qt": "adapter tests",
    "bench/qt": "adapter tests",
    "tests/Together.h": "test basics",
    "tests/TreeWalk.h": "test basics",
    "bench": "tests",
    "generated/database": "name tables",
    "generated/ifc": "ifc",
    "generated/python": "python",
    "generated/ifc/KWEnumerations.h": "all enumerations",
    "generated/src": "rules",
}

MAY_INCLUDE = {
    "support": {"support", "ifc basics"},
    "frame": {"frame", "support", "ifc basics", "ifc of the frame"},
    "rules": {"rules", "frame", "support", "ifc", "ifc basics", "ifc of the frame"},
    "name tables": {"frame", "ifc", "ifc of the frame"},
    "ifc": {"ifc", "ifc basics", "ifc of the frame"},
    "all enumerations": {"ifc", "ifc of the frame"},
    "shared": {"shared", "ifc", "ifc basics", "ifc of the frame"},
    "tools": {"tools", "shared", "ifc", "ifc basics", "ifc of the frame"},
    "service": {"service", "shared", "ifc", "ifc basics", "ifc of the frame"},
    "adapter": {"adapter", "ifc", "ifc basics", "ifc of the frame"},
    "adapter tests": {"adapter", "ifc", "ifc basics", "ifc of the frame"},
    "python": {"python", "ifc", "ifc basics", "ifc of the frame", "all enumerations"},
    "client": {"client", "ifc", "ifc basics", "ifc of the frame", "all enumerations"},
    "service client": {"service", "ifc", "ifc basics", "ifc of the frame"},
    "client tests": {
        "client tests", "test basics", "ifc", "ifc basics", "ifc of the frame", "all enumerations",
    },
    "test basics": {"ifc basics", "ifc of the frame"},
    "service tests": {
        "service tests", "service", "test basics", "ifc", "ifc basics", "ifc of the frame",
    },
    "tests": {
        "tests", "test basics", "service tests", "rules", "frame", "support", "ifc", "ifc basics", "ifc of the frame",
        "all enumerations",
    },
}

# Parts of ifc/ that know no group of the instrument, so that lower rooms may implement them.
IFC_BASICS = {"KWTypes.h", "KWErrorReport.h", "KWAcceptance.h"}
IFC_OF_THE_FRAME = {
    "EnumNameInfo.h", "IDbObject.h", "IKWFunctionBase.h", "IKWFunctionRootBase.h",
    "IKWProperties.h", "KWBrackets.h", "KWCouplings.h", "KWEnumerationsUnits.h", "KWHistory.h",
    "KWNodeTypes.h", "KWRemoteNames.h", "KWSettingsFile.h", "KWTexts.h",
}

# Folders of a room: which others each may include, the lower ones first. A name stands for itself;
# generated files belong to the folder of their model file.
BELOW = {"Names", "Rules", "Mathematics"}
NODES = {"Values", "Couplings", "History", "Nodes"}
FOLDERS_MAY_INCLUDE = {
    "database/CommonDatabase": {
        "Values": set(),
        "Couplings": set(),
        "History": {"Values"},
        "Nodes": {"Values", "Couplings", "History"},
        "Properties": NODES,
        "Containers": {"Properties", *NODES},  # they hold their active item as a property
        "Handles": {"Properties", "Containers", *NODES},
        "Files": {"Properties", "Containers", *NODES},
    },
    "src": {
        "Names": set(),  # generated
        "Rules": {"Names", "Mathematics"},
        "LabelList": set(),
        "Masks": {"LabelList", "Streams"},
        "Mathematics": {"Streams"},
        "MeterBase": set(),
        "Streams": set(),
        "IKWFunctionZELHelpers": {"MeterBase", *BELOW},
        "Samples": {"Analysis", "IKWFunctionZELHelpers", "Masks", "Streams", *BELOW},
        "Channels": BELOW,
        "Analysis": {"Channels", "Masks", *BELOW},  # the cursors hold a level
        "Buses": {"LabelList", *BELOW},
        "Trigger": {"Buses", *BELOW},  # it holds the conditions of each bus
        "Harmonic": BELOW,
        "Instrument": BELOW,
        "Logger": BELOW,
        "Meter": BELOW,
        "Spectrum": BELOW,
        "Timebase": BELOW,
        "Root": None,  # every folder: it holds the groups of all
    },
}

# Rooms whose files may not include each other in a circle.
CIRCLES_IN = ("support/", "database/", "src/", "ifc/", "generated/")

# Where the compiler looks for quoted names, after the folder of the including file.
SEARCH = ("ifc", "support", "database", "src", "tests", "generated/ifc", "generated/src",
          "tools/zelctl", "tools/shared", "service", "qt", "python/src", "generated/python")

# Libraries: Qt headers without a folder, the standard library in lower case without ".h".
STANDARD = re.compile(r"(Q[A-Za-z]+|[a-z_]+)$")
FURTHER_LIBRARIES = {
    "support": r"boost/.*|(fcntl|unistd|sys/stat)\.h",
    "frame": r"boost/.*",
    "rules": r"boost/.*|(poll|sys/eventfd|unistd)\.h",
    "name tables": None,
    "ifc": None,
    "all enumerations": None,
    "tools": r"CLI/.*|boost/.*|nlohmann/json\.hpp|histedit\.h|editline/.*|(sys/)?[a-z]+\.h",
    "shared": None,
    "client": None,
    "test basics": None,
    "service": r"boost/.*|CLI/.*|(sys/|netinet/)?[a-z]+\.h",
    "service client": None,
    "adapter": None,
    "adapter tests": r"(gtest|benchmark)/.*",
    "service tests": r"boost/.*|(gtest|gmock|rapidcheck)/.*|rapidcheck\.h|(sys/)?[a-z]+\.h",
    "client tests": r"(gtest|gmock|rapidcheck)/.*|rapidcheck\.h",
    "tests": r"boost/.*|(gtest|gmock|rapidcheck|benchmark)/.*|rapidcheck\.h|(sys/)?[a-z]+\.h",
}

INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)')
SKIPPED = ("tests/tools/modelgen/golden",)


class CTree:
    """The sources of the project by their names, generated ones below "generated"."""

    def __init__(self, root: Path, generated: Path) -> None:
        folders = {name: root / name for name in
                   ("support", "database", "src", "ifc", "tools", "service", "qt", "examples",
                    "tests", "bench")}
        folders["generated"] = generated
        self.files = {
            (name / path.relative_to(folder)).as_posix(): path
            for name, folder in ((Path(name), folder) for name, folder in folders.items())
            for path in sorted(folder.rglob("*"))
            if path.suffix in (".h", ".cpp") and "__pycache__" not in path.parts
        }

    def resolve(self, source: str, include: str) -> str | None:
        """Name of the file that a quoted include means, as the compiler would find it."""
        here = (Path("/") / source).parent
        for folder in (here, *(Path("/") / name for name in SEARCH)):
            name = str((folder / include).resolve()).lstrip("/")
            if name in self.files:
                return name
        return None


def room_of(source: str) -> str:
    fitting = [folder for folder in ROOMS if f"{source}/".startswith(f"{folder}/")]
    room = ROOMS[max(fitting, key=len)] if fitting else "generated"
    if room == "ifc" and Path(source).name in IFC_BASICS:
        return "ifc basics"
    if room == "ifc" and Path(source).name in IFC_OF_THE_FRAME:
        return "ifc of the frame"
    return room


def complaint(tree: CTree, source: str, quoted: str | None, library: str | None) -> str | None:
    room = room_of(source)
    room = "ifc" if room.startswith("ifc") else room
    name = quoted or library
    target = tree.resolve(source, name)
    if target is not None:
        if room_of(target) in MAY_INCLUDE[room]:
            return None
        return f'{room} may not include {room_of(target)} ("{name}")'
    if quoted:
        return f'no file is named "{quoted}"'
    further = FURTHER_LIBRARIES[room]
    if STANDARD.match(library) or (further and re.fullmatch(further, library)):
        return None
    return f"{room} may not use <{library}>"


def folder_of(source: str) -> tuple[str, str] | None:
    """Room and folder that a file stands in, generated or not, of a room that has folders."""
    name = source.removeprefix("generated/")
    for room in FOLDERS_MAY_INCLUDE:
        folder, _, rest = name.removeprefix(f"{room}/").partition("/")
        if name.startswith(f"{room}/") and rest:
            return room, folder
    return None


def breach(source: str, target: str) -> str | None:
    """What is wrong with an include from one folder of a room to another."""
    (room, folder), (other_room, other) = (folder_of(name) or ("", "") for name in (source, target))
    if not folder or room != other_room or folder == other:
        return None
    if folder not in FOLDERS_MAY_INCLUDE[room]:
        return f"{room}/{folder} is no folder that scripts/check-rooms.py knows"
    allowed = FOLDERS_MAY_INCLUDE[room][folder]
    return None if allowed is None or other in allowed else f"{folder} may not include {other}"


def includes(path: Path) -> list[tuple[int, str | None, str | None]]:
    """Line, quoted name, name of a library."""
    lines = path.read_text(encoding="utf-8").splitlines()
    found = ((number, INCLUDE.match(line)) for number, line in enumerate(lines, 1))
    return [(number, *include.groups()) for number, include in found if include]


def circles(tree: CTree) -> list[str]:
    """Modules, a header with its source, that include each other in a circle."""
    module = {name: name.rsplit(".", 1)[0] for name in tree.files if name.startswith(CIRCLES_IN)}
    graph: dict[str, set[str]] = {}
    for source, own in module.items():
        targets = {tree.resolve(source, quoted)
                   for _, quoted, _ in includes(tree.files[source]) if quoted}
        graph.setdefault(own, set()).update(module[t] for t in targets if t in module)
    found = []
    done: set[str] = set()

    def visit(node: str, way: list[str]) -> None:
        if node in way:
            found.append(" -> ".join([*way[way.index(node):], node]))
        elif node not in done:
            for target in sorted(graph[node] - {node}):
                visit(target, [*way, node])
            done.add(node)

    for node in sorted(graph):
        visit(node, [])
    return [f"files go round in a circle: {circle}" for circle in found]


def check(root: Path, generated: Path) -> list[str]:
    tree = CTree(root, generated)
    found = []
    for source, path in tree.files.items():
        if source.startswith(SKIPPED):
            continue
        if room_of(source) == "model":
            found.append(f"{source}: the model is data, not code")
            continue
        for number, quoted, library in includes(path):
            problem = complaint(tree, source, quoted, library)
            target = quoted and tree.resolve(source, quoted)
            problem = problem or (target and breach(source, target))
            if problem:
                found.append(f"{source}:{number}: {problem}")
    found += circles(tree)
    return found


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--root", type=Path, default=Path(__file__).resolve().parent.parent)
    parser.add_argument("--generated", type=Path, required=True,
                        help="folder of generated files, such as build/release/generated")
    options = parser.parse_args()
    found = check(options.root, options.generated)
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
