# SPDX-License-Identifier: MIT
"""The coupling map against couplings that single writes show."""

import json
import os
import tempfile
import unittest

from support import run


def ask(*arguments):
    return json.loads(run("--json", *arguments).stdout)


class Couplings(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        answer = ask("couplings")
        cls.couplings = answer["couplings"]
        cls.rows = {(row["group"], row["row"]): row for row in answer["rows"]}

    def find(self, source, target):
        return next((c for c in self.couplings
                     if c["source"] == source and c["target"] == target), None)

    def test_known_coupling_is_missed(self):
        for known in [
                ("Horizontal/Scale", "Horizontal/AcquisitionTime", "value"),
                ("Horizontal/ScaleGUI", "Horizontal/Scale", "value"),
                ("Horizontal/Scale", "Horizontal/Left", "maximum"),
                ("Setup/Wireless/Country", "Setup/Wireless/WirelessAccesspoint/Channel", "selectable"),
        ]:
            with self.subTest(known):
                source, target, moved = known
                self.assertIn(moved, self.find(source, target)["moved"])

    def test_coupling_is_invented(self):
        # The example of every tenth coupling, carried out as a write of its own.
        chosen = [c for c in self.couplings if not c["while"]][::10]
        self.assertGreater(len(chosen), 50)
        script = ""
        for coupling in chosen:
            value = json.dumps(str(coupling["new"]) if not isinstance(coupling["new"], float)
                               else repr(coupling["new"]), ensure_ascii=False)
            script += f"set --trace {coupling['source']} -- {value}\nundo\n"
        with tempfile.TemporaryDirectory() as folder:
            file = os.path.join(folder, "each.zel")
            with open(file, "w", encoding="utf-8") as text:
                text.write(script)
            done = run("--json", "run", file)
        answers = [json.loads(line) for line in done.stdout.splitlines()]
        writes = [answer for answer in answers if "changes" in answer]
        self.assertEqual(len(writes), len(chosen), done.stderr)
        for coupling, write in zip(chosen, writes):
            with self.subTest(coupling["source"]):
                self.assertIn(coupling["target"], [c["path"] for c in write["changes"]])

    def test_setting_that_is_not_available_is_never_tried(self):
        rate = self.find("SerialBus/CANBusSettings/StandardDataBitRate",
                         "SerialBus/CANBusSettings/DataBitRate")
        self.assertEqual(rate["while"], ["SerialBus/CANBusSettings/Standard = CAN_FD"])

    def test_observation_leaves_traces(self):
        with tempfile.TemporaryDirectory() as folder:
            file = os.path.join(folder, "each.zel")
            with open(file, "w", encoding="utf-8") as text:
                text.write("set Horizontal/Scale 1us\nsave before.xml\ncouplings Zoom\n"
                           "diff before.xml\nundo\nget Horizontal/Scale\n")
            done = run("run", file, cwd=folder)
            self.assertEqual(done.returncode, 0, done.stderr)
            self.assertIn("100 ns/div", done.stdout.splitlines()[-1])

    def test_why_hides_one_direction(self):
        answer = run("why", "Horizontal/AcquisitionTime").stdout
        before, behind = answer.split("moved by")
        self.assertIn("maximum", before)
        self.assertIn("Horizontal/Scale: 100 ns/div → 200 ns/div", behind)
        self.assertEqual(run("why", "Horizontal").returncode, 2)

    def test_row_of_a_coupling_is_not_declared_or_another(self):
        for coupling in self.couplings:
            with self.subTest(coupling["source"] + " > " + coupling["target"]):
                self.assertTrue(coupling["rows"], "no row did it")
                for row in coupling["rows"]:
                    declared = self.rows[row["group"], row["row"]]
                    self.assertEqual(row["when"], declared["when"])
                    self.assertIn(row["step"], declared["steps"])
        # Where no other row comes between, the setting is what starts the row.
        row = self.find("Horizontal/ScaleGUI", "Horizontal/Scale")["rows"][0]
        self.assertEqual((row["group"], row["when"], row["step"]),
                         ("Horizontal", "On(ScaleGUI)", "SetScaleFromGui"))

    def test_why_tells_other_rows_than_the_tables(self):
        path = "Vertical/Channel[1]/Enabled"
        starts = ask("why", path)["starts"]
        started = [row for row in self.rows.values()
                   if {path, "Vertical/Channel[each]/Enabled"} & set(row["sources"])
                   or (row["group"], row["when"]) == ("Vertical/Channel[1]", "OnAny()")]
        self.assertGreater(len(started), 10)
        self.assertEqual(sorted(map(str, starts)), sorted(map(str, started)))
        answer = run("why", "Zoom/Factor").stdout
        self.assertIn("      by Zoom 2, OnAny(): UpdateResults\n", answer)
        self.assertIn("    Zoom 2, OnAny(): ", run("why", "Zoom/Scale").stdout.split("starts")[1])

    def test_graph_has_other_arrows_than_the_list(self):
        graph = run("couplings", "Zoom", "--dot").stdout
        self.assertTrue(graph.startswith("digraph"))
        self.assertEqual(graph.count(" -> "), len(ask("couplings", "Zoom")["couplings"]))


if __name__ == "__main__":
    unittest.main()
