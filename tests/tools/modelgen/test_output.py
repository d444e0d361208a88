# SPDX-License-Identifier: MIT
"""Which files a run writes, keeps and takes away."""

import os
import shutil
import subprocess
import sys
import unittest

from support import HERE, CWorkspace

_OLD = 1_000_000_000


class OutputTest(unittest.TestCase):
    def setUp(self) -> None:
        self.workspace = self.enterContext(CWorkspace())
        self.workspace.copy_model()
        self._rewritten()

    def _rewritten(self) -> set[str]:
        """Runs; files that were not as they had been left by the last run."""
        for path in self.workspace.out.rglob("*"):
            os.utime(path, (_OLD, _OLD))
        self.assertEqual(self.workspace.run(), (0, [], []))
        return {
            path for path in self.workspace.outputs()
            if (self.workspace.out / path).stat().st_mtime != _OLD
        }

    def test_change_rewrites_other_files(self) -> None:
        self.assertEqual(self._rewritten(), set())
        self.workspace.replace("groups/Words/Texts.toml", 'default = "01X"', 'default = "111"')
        self.assertEqual(self._rewritten(), {
            "docs/settings/Words/Texts.md", "ifc/IKWFunctionTexts.h", "src/Words/Groups_Texts.cpp",
            "src/Words/PgTexts.h", "python/kwifunctionzel/tree.pyi",
        })
        file = "enumerations/More.toml"
        one = '{ remote = "A", serial = "A" }'
        of_the_file = {"database/EnumNames_More.cpp", "docs/settings/enumerations.md",
                       "ifc/KWEnumerationsMore.h", "python/EnumDocs.h",
                       "python/kwifunctionzel/enums.pyi"}
        self.workspace.write(file, f'[KW_MORE]\nbrief = "More."\nvalues = [ {one} ]\n')
        self.assertEqual(self._rewritten(), {*of_the_file, "ifc/KWEnumerations.h",
                                            "python/EnumTypes.h"})
        self.workspace.replace(file, one, f'{one}, {{ remote = "B", serial = "B" }}')
        self.assertEqual(self._rewritten(), of_the_file)

    def test_removed_container_leaves_its_class_behind(self) -> None:
        own = self.workspace.out / "src/PgOwn.h"
        own.write_text("// written by hand\n", encoding="utf-8")
        lost = self.workspace.out / "elsewhere" / "Lost.cpp"
        lost.parent.mkdir()
        lost.write_text("// Generated from the model\n", encoding="utf-8")
        self.workspace.replace("groups/Demo.toml", 'map = true, pattern = "Label%1", max = 100',
                               "array = 2")
        self._rewritten()
        self.assertFalse((self.workspace.out / "src/Words/PgmTexts.h").exists())
        self.assertTrue((self.workspace.out / "src/Words/PgaTexts.h").exists())
        self.assertFalse(lost.exists(), "a folder that no emitter writes to any more")
        self.assertTrue(own.exists(), "a file of other origin was removed")

    def test_listed_outputs_are_not_the_written_ones(self) -> None:
        status, listed, _ = self.workspace.run("--list-outputs")
        self.assertEqual(status, 0)
        prefix = f"{self.workspace.out}/"
        self.assertEqual(sorted(path.removeprefix(prefix) for path in listed),
                         sorted(self.workspace.outputs()))

    def test_listing_checking_or_a_model_with_mistakes_writes_files(self) -> None:
        self.workspace.out = self.workspace.root / "other"
        for options in (["--list-outputs"], ["--check"]):
            self.assertEqual(self.workspace.run(*options)[0], 0)
        self.workspace.replace("groups/Words/Texts.toml", "length = 20", "length = 0")
        for options in ([], ["--list-outputs"], ["--check"]):
            status, listed, mistakes = self.workspace.run(*options)
            self.assertEqual((status, listed, len(mistakes)), (1, [], 1), options)
        self.assertFalse(self.workspace.out.exists())

    def test_long_constructor_stays_in_one_function(self) -> None:
        rows = "".join(f'  {{ name = "P{i}", type = "int32", default = {i}, brief = "P." }},\n'
                       for i in range(30))
        self.workspace.replace("groups/Words/Texts.toml", "properties = [\n",
                               f"properties = [\n{rows}")
        self._rewritten()
        source, header = (self.workspace.outputs()[f"src/Words/{name}"]
                          for name in ("Groups_Texts.cpp", "PgTexts.h"))
        self.assertIn("CPgTexts::CPgTexts()\n{\n    DeclareProperties();\n}\n", source)
        self.assertEqual(source.count("AddPropertyToList("), 34)
        self.assertIn("private:\n    void DeclareProperties();\n", header)

    def test_release_takes_what_is_new_at_the_wrong_place(self) -> None:
        """Also: more than once, or leaves the old ones out."""
        lists = [self.workspace.root / "groups/accessors.txt",
                 self.workspace.root / "enumerations/values.txt"]
        before = [path.read_text(encoding="utf-8") for path in lists]
        for _ in range(2):
            self.assertEqual(self.workspace.run("--release", "1.2.0"), (0, [], []))
        accessors, values = (path.read_text(encoding="utf-8").removeprefix(old)
                             for path, old in zip(lists, before))
        self.assertTrue(accessors.startswith("\n# 1.2.0\nDemo/State property KW_PROBE\n"
                                             "Demo/Label map Texts\n"), accessors)
        self.assertEqual(len(accessors.splitlines()), 13)
        self.assertEqual(values, "\n# 1.2.0\nKW_RATE USER\nKW_PROBE X1 1\nKW_UNIT NONE "
                                 "FREQ_S_DIV\n")
        self.assertEqual(self._rewritten(), set(), "the release moved accessors")

    def test_new_major_version_keeps_the_old_order(self) -> None:
        groups = self.workspace.root / "groups"
        self.assertEqual(self.workspace.run("--release", "2.0.0")[2], [
            "groups/Demo.toml:10: 'Demo/Gone' was never released: its entry can go",
            "groups/Demo.toml:13: 'Demo/Older' was never released: its entry can go",
            "groups/Demo.toml:18: 'Demo/Begin' was never released: its entry can go"])
        text = (groups / "Demo.toml").read_text(encoding="utf-8")
        self.workspace.write("groups/Demo.toml", text.replace("removed = true,", "").replace(
            ", removed = true", ""))
        self.assertEqual(self.workspace.run("--release", "2.0.0"), (0, [], []))
        lines = (groups / "accessors.txt").read_text(encoding="utf-8").splitlines()
        self.assertEqual(lines[lines.index("# 2.0.0") + 1], "Demo/State property KW_PROBE")

    def test_enumerations_alone_are_no_model(self) -> None:
        with CWorkspace() as workspace:
            workspace.copy_model()
            shutil.rmtree(workspace.root / "groups")
            self.assertEqual(workspace.run()[0], 0)
            self.assertIn("ifc/KWEnumerations.h", workspace.outputs())

    def test_folder_is_not_runnable(self) -> None:
        command = [sys.executable, str(HERE.parents[2] / "tools/modelgen"), "--enumerations",
                   str(HERE / "model/enumerations"), "--groups", str(HERE / "model/groups"),
                   "--out", "somewhere", "--list-outputs"]
        environment = {**os.environ, "PYTHONDONTWRITEBYTECODE": "1"}
        run = subprocess.run(command, capture_output=True, text=True, env=environment, check=True,
                             cwd=self.workspace.root)
        self.assertIn("somewhere/ifc/IKWFunctionDemo.h", run.stdout.splitlines())


if __name__ == "__main__":
    unittest.main()
