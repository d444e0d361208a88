# SPDX-License-Identifier: MIT
"""zelctl on the living tree of another process."""

import json
import re
import signal
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ZELHOST = sys.argv.pop(1)
ZELCTL = sys.argv[1:]
del sys.argv[1:]


class ConnectTest(unittest.TestCase):
    def serve(self, *options: str) -> str:
        host = subprocess.Popen([ZELHOST, "--port", "0", "--http-port", "0", *options], text=True,
                                stdout=subprocess.PIPE)

        def end() -> None:
            host.send_signal(signal.SIGTERM)
            host.communicate(timeout=20)

        self.addCleanup(end)
        host.stdout.readline()
        return host.stdout.readline().strip().rsplit("/", 1)[-1]

    def run_zelctl(self, place: str, *words: str, status: int = 0) -> str:
        shown = subprocess.run([*ZELCTL, "--connect", place, *words], text=True,
                               capture_output=True, timeout=60)
        self.assertEqual(shown.returncode, status, shown.stderr)
        return (shown.stdout + shown.stderr).rstrip("\n")

    def test_living_tree_is_another_than_the_private_one(self) -> None:
        place = self.serve()
        for words in (["get", "Horizontal/Scale"], ["set", "Horizontal/Scale", "20us"],
                      ["do", "Preset"]):
            private = subprocess.run([*ZELCTL, *words], text=True, capture_output=True, timeout=60)
            self.assertEqual(self.run_zelctl(place, *words), private.stdout.rstrip("\n"))
        self.run_zelctl(place, "set", "Horizontal/Scale", "2 ms/div")
        self.assertEqual(self.run_zelctl(place, "get", "Horizontal/Scale"), "2 ms/div")
        self.assertEqual(self.run_zelctl(place, "--exact", "get", "Horizontal/Scale"),
                         "0.002 s/div")
        self.run_zelctl(place, "undo")
        self.run_zelctl(place, "redo")
        document = json.loads(self.run_zelctl(place, "--json", "get", "Horizontal"))
        values = {node["path"]: node["value"] for node in document["properties"]}
        self.assertEqual(values["Horizontal/Scale"], 0.002)

    def test_refusal_is_taken_for_an_answer(self) -> None:
        place = self.serve()
        self.assertIn("code 3 ABOVE_MAXIMUM",
                      self.run_zelctl(place, "set", "Horizontal/Scale", "1e99", status=1))
        self.assertIn('no node "Nowhere"', self.run_zelctl(place, "get", "Nowhere", status=2))
        self.assertIn("asked 1.3 ms, stands 2 ms",
                      self.run_zelctl(place, "set", "Horizontal/AcquisitionTime", "1.3 ms"))
        self.assertIn("--help", self.run_zelctl(place, "sing", status=2))
        self.assertIn("Connection refused",
                      self.run_zelctl("127.0.0.1:1", "get", "Horizontal", status=2))

    def test_token_is_not_needed(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            token = Path(folder) / "token"
            token.touch(0o600)
            token.write_text("0123456789abcdef\n")
            place = self.serve("--token-file", str(token))
            self.assertIn("--token-file", self.run_zelctl(place, "get", "Horizontal", status=2))
            self.assertEqual(self.run_zelctl(place, "--token-file", str(token), "get",
                                             "Horizontal/Scale"), "100 ns/div")

    def test_change_is_watched_for_ever_or_not_shown(self) -> None:
        place = self.serve()
        watch = subprocess.Popen([*ZELCTL, "--connect", place, "watch", "--count", "1", "--every",
                                  "20", "Horizontal/Scale"], text=True, stdout=subprocess.PIPE)
        for i in range(100):
            self.run_zelctl(place, "set", "Horizontal/Scale", "1ms" if i % 2 else "2ms")
            if watch.poll() is not None:
                break
        shown = watch.communicate(timeout=20)[0]
        self.assertTrue(re.fullmatch(r"Horizontal/Scale: [12] ms/div → [12] ms/div\n", shown), shown)


if __name__ == "__main__":
    unittest.main()
