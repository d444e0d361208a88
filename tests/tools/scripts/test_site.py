# SPDX-License-Identifier: MIT
"""The settings reference as pages: complete, linked, readable by machines, found by the search."""

import json
import shutil
import subprocess
import sys
import tempfile
import unittest
from html.parser import HTMLParser
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[3]
EMPTY = {"meta", "link", "input", "br"}


class Balance(HTMLParser):
    """Names the first end that ends something else, and ids that are used twice."""

    def __init__(self, text: str) -> None:
        super().__init__()
        self.open: list[str] = []
        self.ids: set[str] = set()
        self.faults: list[str] = []
        self.feed(text)

    def handle_starttag(self, tag: str, attrs: list[tuple[str, str | None]]) -> None:
        if tag not in EMPTY:
            self.open.append(tag)
        for value in (value for name, value in attrs if name == "id"):
            if value in self.ids:
                self.faults.append(f"id {value} twice")
            self.ids.add(value or "")

    def handle_endtag(self, tag: str) -> None:
        if not self.open or self.open.pop() != tag:
            self.faults.append(f"</{tag}> in line {self.getpos()[0]}")


class Site(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        cls.folder = tempfile.TemporaryDirectory()
        cls.site = Path(cls.folder.name) / "site"
        subprocess.run([PROJECT / "scripts/site.sh", cls.site], check=True, capture_output=True)
        cls.entries = json.loads((cls.site / "entries.js").read_text(encoding="utf-8")
                                 .removeprefix("window.entries = ").rstrip().removesuffix(";")
                                 .replace("],\n];", "]\n]"))

    @classmethod
    def tearDownClass(cls) -> None:
        cls.folder.cleanup()

    def test_pages_are_well_formed(self) -> None:
        for page in self.site.glob("*.html"):
            balance = Balance(page.read_text(encoding="utf-8"))
            self.assertEqual((page.name, balance.faults, balance.open), (page.name, [], []))

    def test_every_command_of_remote_control_is_found(self) -> None:
        listed = (PROJECT / "docs/settings/remote.md").read_text(encoding="utf-8")
        known = {entry[3] for entry in self.entries}
        nodes = listed.split("## Commands of this instrument")[1]
        headers = [line.split("`")[1] for line in nodes.splitlines() if line.startswith("| `")]
        self.assertGreater(len(headers), 1000)
        self.assertEqual([h for h in headers if h not in known and not h.endswith(":ITEM")], [])

    def test_a_property_has_all_its_names_and_couplings(self) -> None:
        page = (self.site / "Horizontal.html").read_text(encoding="utf-8")
        article = page.split('<article id="Horizontal.Scale">')[1].split("</article>")[0]
        for text in ("HORizontal:SCALe", "root.Horizontal.Scale", "s/div", "Horizontal/Scale",
                     '<a href="Horizontal.html#Horizontal.AcquisitionTime">', "Moved by"):
            self.assertIn(text, article)

    def test_a_broken_place_is_reported(self) -> None:
        page = self.site / "broken.html"
        page.write_text('<a href="Zoom.html#Nowhere">x</a><img src="https://example.org/x.png">')
        done = subprocess.run([sys.executable, "-B", PROJECT / "scripts/check-links.py", page],
                              capture_output=True, text=True)
        page.unlink()
        self.assertEqual(done.returncode, 1)
        self.assertIn("Zoom.html#Nowhere", done.stdout)
        self.assertIn("https://example.org", done.stdout)

    @unittest.skipUnless(shutil.which("node"), "nodejs is not installed")
    def test_the_search_finds_by_name_meaning_and_unit(self) -> None:
        script = ("global.window = {}; require(process.argv[1] + '/entries.js');"
                  "const { search } = require(process.argv[1] + '/search.js');"
                  "const of = (text) => search(window.entries, text).map((e) => e[1]);"
                  "console.log(JSON.stringify(process.argv.slice(2).map(of)));")
        questions = ["horizontal scale", "HOR:SCAL", "hysteresis %", "", "no such thing anywhere"]
        done = subprocess.run(["node", "-e", script, self.site, *questions], check=True,
                              capture_output=True, text=True)
        scale, command, unit, nothing, unknown = json.loads(done.stdout)
        self.assertEqual(scale[0], "Horizontal/Scale")
        self.assertTrue(unit and all("ysteresis" in path for path in unit[:3]), msg=unit[:3])
        self.assertEqual((nothing, unknown), ([], []))
        self.assertEqual(command[:1], ["Horizontal/Scale"])


if __name__ == "__main__":
    unittest.main()
