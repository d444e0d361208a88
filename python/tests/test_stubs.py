# SPDX-License-Identifier: MIT
"""What editors and type checkers are told is what is there."""

import ast
import html
import pathlib
import re
import subprocess
import sys

import kwifunctionzel as kwi

PROJECT = pathlib.Path(__file__).resolve().parents[2]
PACKAGE = pathlib.Path(kwi.__path__[0])
KINDS = {"_Number": float, "_Whole": int, "_Choice": kwi.Enumeration, "_Switch": kwi.Enumeration,
         "_Text": str, "_Bytes": bytes, "_Reference": str}


def classes() -> dict[str, dict[str, ast.AST]]:
    """Members of each class of the tree's stub: the annotation, or what the getter returns."""
    found = {}
    for node in ast.parse((PACKAGE / "tree.pyi").read_text(encoding="utf-8")).body:
        if isinstance(node, ast.ClassDef) and not node.name.startswith("_"):
            found[node.name] = {
                item.target.id if isinstance(item, ast.AnnAssign) else item.name:
                    item.annotation if isinstance(item, ast.AnnAssign) else item.returns
                for item in node.body if isinstance(item, (ast.AnnAssign, ast.FunctionDef))
            }
    return found


def test_stub_has_the_members_of_the_tree_and_no_others(root):
    stub = classes()

    def check(group: kwi.Group, name: str) -> None:
        members = group.members()
        assert list(stub[name]) == list(members) or set(stub[name]) == set(members), group
        for own, member in members.items():
            kind = ast.unparse(stub[name][own])
            if isinstance(member, kwi.Property):
                base, _, enumeration = kind.partition("[")
                assert isinstance(member.value, KINDS[base.removesuffix("Result")]), member
                assert base.endswith("Result") == member.is_result, member
                if enumeration:
                    assert enumeration == f"enums.{type(member.value).__name__}]", member
            elif isinstance(member, kwi.Action):
                assert kind == "Action"
            elif isinstance(member, (kwi.Array, kwi.Map)):
                container, _, item = kind[:-1].partition("[")
                assert container == type(member).__name__, member
                if isinstance(member, kwi.Map) and not len(member) and member.is_dynamic:
                    member.insert()
                for one in member if isinstance(member, kwi.Array) else member.values():
                    check(one, item.removeprefix("_tree."))
            else:
                check(member, kind.removeprefix("_tree."))

    check(root, "ZEL")


def run(*command: str) -> None:
    done = subprocess.run(command, capture_output=True, text=True, timeout=280)
    assert done.returncode == 0, done.stdout + done.stderr


def mypy_environment(monkeypatch) -> None:
    # An installed package is found by itself, and mypy refuses to be told of its folder.
    if PACKAGE.parent.name not in ("site-packages", "dist-packages"):
        monkeypatch.setenv("MYPYPATH", str(PACKAGE.parent))


def test_examples_and_package_pass_mypy(monkeypatch, tmp_path):
    mypy_environment(monkeypatch)
    run(sys.executable, "-m", "mypy", "--strict", "--cache-dir", str(tmp_path), "-p",
        "kwifunctionzel")
    run(sys.executable, "-m", "mypy", "--strict", "--cache-dir", str(tmp_path), "--config-file",
        str(PROJECT / "python" / "pyproject.toml"),
        *map(str, sorted((PROJECT / "examples" / "python").glob("*.py"))))


def test_mypy_finds_wrong_names_and_types(monkeypatch, tmp_path):
    mypy_environment(monkeypatch)
    good = "import kwifunctionzel as kwi\nroot = kwi.root()\n"
    wrong = ("root.Horizontal.Scael", "root.Horizontal.Scale = None",
             "root.Trigger.Type = kwi.enums.KW_ONOFF.ON", "root.Horizontal.Left = 1.0",
             "y: int = root.Vertical.Channel[0].Scale", "root.Horizontal = root.Horizontal")
    right = ("root.Horizontal.Scale = '2 ms/div'", "x: float = root.Vertical.Channel[0].Scale",
             "root.Trigger.Type = kwi.enums.KW_ZEL_TRIGGER_TYPE.RUNT",
             "root.Vertical.Channel[1].Enabled = True", "root.Preset()")
    program = tmp_path / "program.py"
    program.write_text(good + "\n".join([*right, *wrong]), encoding="utf-8")
    done = subprocess.run([sys.executable, "-m", "mypy", "--strict", "--cache-dir", str(tmp_path),
                           str(program)], capture_output=True, text=True, timeout=280)
    lines = {int(line.split(":")[1]) for line in done.stdout.splitlines() if ": error:" in line}
    first = 3 + len(right)
    assert lines == set(range(first, first + len(wrong))), done.stdout


def test_stubs_are_those_of_the_module(monkeypatch, tmp_path):
    monkeypatch.chdir(tmp_path)
    mypy_environment(monkeypatch)
    # The other modules are their own; classes of groups are compared with the tree above.
    run(sys.executable, "-m", "mypy.stubtest", "kwifunctionzel._core", "kwifunctionzel.enums")


def test_names_on_the_pages_of_the_reference_are_those_of_the_tree(root, tmp_path):
    run(sys.executable, "-B", str(PROJECT / "tools/modelgen"), "--out", str(tmp_path),
        "--enumerations", str(PROJECT / "database/Enumerations"), "--groups", str(PROJECT / "src"),
        "--site", str(PROJECT / "docs/settings/couplings"))

    def shown(page: str, what: str) -> list[str]:
        return [html.unescape(name) for row in re.findall(f"<dt>{what}</dt><dd>(.*?)</dd>", page)
                for name in re.findall("<code>(.*?)</code>", row)]

    seen = 0
    for page in sorted(tmp_path.glob("*.html")):
        text = page.read_text(encoding="utf-8")
        rows = zip(*(shown(text, what) for what in ("Path", "Remote", "Python")), strict=True)
        for path, command, program in rows:
            own, program = with_first_items(root, path, program)
            if not own:
                continue
            group, _, name = program.removesuffix("()").rpartition(".")
            parent = eval(group, {"root": root})
            member = parent.members()[name]
            assert member.path == own and hasattr(parent, name), program
            assert callable(member) == program.endswith("()"), program
            if isinstance(member, kwi.Property):
                assert command.rpartition(":")[2] == member.remote_name, path
            seen += 1
    assert seen > 1000


def with_first_items(root: kwi.Root, path: str, program: str) -> tuple[str, str]:
    """A path and what Python calls it, of the first item of each container; empty where only the
    acquisition's side makes items."""
    while container := re.match(r"(.*?)\[(n|name)\]", path):
        items = root.node(container[1])
        if not items and items.is_dynamic:
            items.append() if isinstance(items, kwi.Array) else items.insert()
        if not items:
            return "", ""
        key = "0" if isinstance(items, kwi.Array) else items.keys()[0]
        path = path.replace(container[0], f"{container[1]}[{key}]", 1)
        program = re.sub(r"\[(\"?)(?:n|name)\1\]", rf"[\g<1>{key}\1]", program, count=1)
    return path, program
