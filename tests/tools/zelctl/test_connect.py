# SPDX-License-Identifier: MIT
"""zelctl on the living tree of another process."""

import json
import re
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import unittest
from pathlib import Path

LABELS = "SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem"

# Every command that reads or writes a tree, and its refusals.
SCRIPT = """
why Horizontal/AcquisitionTime
couplings Zoom
get Horizontal Trigger/State
get --info Vertical/Channel[0]/Scale Horizontal/Position Setup/Wireless/WirelessClient/Passphrase
get Vertical/Channel
set Horizontal/Scale 20us --trace
set Vertical/Channel[0]/Scale 200 mV/div --trace
expect ABOVE_MAXIMUM set Horizontal/Scale 1e99
expect NOT_IN_VALUE_LIST set Horizontal/Scale 3us
expect READ_ONLY set Horizontal/SampleCounter/Acquisitions 1
expect TOO_LONG set Setup/Wireless/WirelessClient/NetworkName {long}
expect BAD_NAME set SaveRecall/File ../a.xml
set Horizontal/AcquisitionTime 1.3ms --trace
enum Trigger/Type
enum KW_ONOFF
enum
set Trigger/Type RUNT --trace
undo --trace
redo
step Horizontal/Scale
step Vertical/Channel[0]/Scale -3 --trace
step Horizontal/Scale 0
reset Horizontal/Scale --trace
reset Trigger --trace
insert {labels} Engine --trace
rename {labels} Engine Motor --trace
expect NAME_IN_USE insert {labels} Motor
copy {labels} Motor Second --trace
get {labels}
activate {labels} Second
remove {labels} Motor --trace
expect FIXED_SIZE insert Vertical/Channel
insert Spectrum/SpectrumMarkers/SpectrumMarker --trace
expect BAD_INDEX remove Spectrum/SpectrumMarkers/SpectrumMarker 7
do Preset --trace
save state.xml
save state.csv
set Trigger/Type RUNT
expect 1 diff state.xml
recall state.csv --trace
diff state.xml
diff state.xml state.csv
expect FILE_NOT_READABLE recall none.xml
begin "Slow and large"
set Horizontal/Scale 5ms --trace
get Horizontal/AcquisitionTime
set Vertical/Channel[0]/Scale 5 --trace
expect ABOVE_MAXIMUM set Horizontal/Scale 1e99
commit --trace
undo --trace
redo --trace
begin "Never"
set Horizontal/Scale 1ms
rollback --trace
begin "Twice"
step Horizontal/Scale 2
reset Vertical
commit
undo
reset . --trace
tree --depth 1
tree Vertical/Channel[1]
find trigger level --in Trigger
same Trigger/Type EDGE
tree
undo
set Setup/Wireless/WirelessClient/Passphrase "correct horse"
set Setup/Wireless/WirelessClient/Passphrase "correct horse"
""".format(long="x" * 200, labels=LABELS)

# A recall of settings counts as a run of the acquisition, and undo calls it so.
LABELS_SCRIPT = """
labels load {project}/examples/labels/vehicle.dbc --bus CAN
labels save vehicle.csv --bus CAN
tree {labels}
labels load vehicle.csv --bus CAN
""".format(project=Path(__file__).resolve().parents[3], labels=LABELS)

# What no script goes on behind.
WRONG = ["get Nowhere", "get Vertical/Channel[9]/Scale", "get Vertical", "set Horizontal 1",
         "do Horizontal/Scale", "set Horizontal/Scale blue", "set Trigger/Type RUNTS",
         "insert Horizontal", "commit", "undo", "enum Horizontal/Scale", "reset Horizontal/Nothing",
         "set Vertical/Channel[0]/Scale 1e99", "diff none.xml", "find nothingisnamedso"]

ZELHOST = sys.argv.pop(1)
ZELCTL = sys.argv[1:]
del sys.argv[1:]


class ConnectTest(unittest.TestCase):
    def setUp(self) -> None:
        self.hosts: list[subprocess.Popen] = []

    def serve(self, *options: str, port: str = "0") -> str:
        host = subprocess.Popen([ZELHOST, "--port", "0", "--http-port", port, *options], text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.hosts.append(host)

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

    def run_both(self, options: list[str], text: str) -> list[tuple[int, str, str]]:
        """What a script answers on a private and on a living tree, each new."""
        answers = []
        for place in ([], ["--connect", self.serve()]):
            with tempfile.TemporaryDirectory() as folder:
                done = subprocess.run([*ZELCTL, *place, *options], input=text, text=True, cwd=folder,
                                      capture_output=True, timeout=120)
                answers.append((done.returncode, done.stdout, done.stderr))
        return answers

    def test_script_has_other_answers_than_on_a_private_tree(self) -> None:
        self.maxDiff = 4000
        for style in ([], ["--json", "--exact"]):
            for script in (SCRIPT, LABELS_SCRIPT):
                private, living = self.run_both([*style, "run", "-"], script)
                self.assertEqual(private[0], 0, private[2])
                # What the library reports beside its answers stays with the tree's process.
                shown = [re.sub(r',"reports":\[[^]]*\]', "", answer[1]).splitlines()
                         for answer in (private, living)]
                self.assertEqual(shown[1], shown[0])
                self.assertEqual(living[0], private[0])

    def test_failure_is_told_otherwise_than_on_a_private_tree(self) -> None:
        private, living = self.run_both(["shell"], "\n".join(WRONG))
        self.assertEqual(len(private[2].splitlines()), len(WRONG))
        self.assertEqual(living, private)
        private, living = self.run_both(["--json", "shell"], "\n".join(WRONG))
        self.assertEqual(living, private)

    def test_step_is_open_to_others_or_half_carried_out(self) -> None:
        place = self.serve()
        with subprocess.Popen([*ZELCTL, "--connect", place, "shell"], text=True,
                              stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE) as shell:
            shell.stdin.write("begin Both\nset Horizontal/Scale 1ms\n"
                              "set Vertical/Channel[0]/Scale 5\n")
            shell.stdin.flush()
            self.assertIn("1 ms/div", shell.stdout.readline() + shell.stdout.readline())
            shell.stdout.readline()
            self.assertEqual(self.run_zelctl(place, "get", "Horizontal/Scale"), "100 ns/div")
            self.run_zelctl(place, "set", "Horizontal/Scale", "2ms")
            shown, problems = shell.communicate("do Preset\ncommit\n", timeout=60)
        self.assertEqual((shown, problems.count("consists of writes of settings alone")),
                         ("commit\n", 1))
        self.assertEqual(self.run_zelctl(place, "get", "Horizontal/Scale"), "1 ms/div")
        self.assertEqual(self.run_zelctl(place, "undo"), 'undo "Both"')

    def test_paths_are_completed_of_another_tree(self) -> None:
        place = self.serve()
        labels = "SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem"
        self.run_zelctl(place, "insert", labels, "Engine")
        shown = subprocess.run([*ZELCTL, "complete", "--", f"--connect {place} get {labels}["],
                               text=True, capture_output=True, timeout=60).stdout
        self.assertEqual(shown, f"{labels}[Engine]/\n")

    def test_service_that_ends_or_is_none_is_not_told(self) -> None:
        def answer(text: bytes) -> str:
            """A service that answers one request so and hangs up."""
            server = socket.create_server(("127.0.0.1", 0))
            self.addCleanup(server.close)

            def serve() -> None:
                client = server.accept()[0]
                with client:
                    client.recv(65536)
                    client.sendall(text)

            threading.Thread(target=serve, daemon=True).start()
            return f"127.0.0.1:{server.getsockname()[1]}"

        head = b"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n"
        for place, wanted in (
                (answer(b""), "hung up"), (answer(b"SSH-2.0-x\r\n"), "no answer of the service"),
                (answer(head + b'{"path"'), "lost in the middle"), (answer(head[:20]), "lost in"),
                (answer(b"HTTP/1.1 200 OK\r\n\r\n<html>"), "no answer of the service"),
                (answer(b"HTTP/1.1 200 OK\r\n\r\n{}"), "no answer of the service"),
                ("no.host.invalid", "no.host.invalid, port 5026"),
                ("127.0.0.1:none", "port none"), ("127.0.0.1:1", "Connection refused")):
            with self.subTest(wanted=wanted):
                self.assertIn(wanted, self.run_zelctl(place, "get", "Horizontal", status=2))

    def test_shell_ends_with_its_service(self) -> None:
        place = self.serve()
        with subprocess.Popen([*ZELCTL, "--connect", place, "shell"], text=True,
                              stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE) as shell:
            shell.stdin.write("set Horizontal/Scale 1ms\n")
            shell.stdin.flush()
            shell.stdout.readline()
            self.hosts[-1].send_signal(signal.SIGTERM)
            self.hosts[-1].wait(timeout=20)
            shell.stdin.write("get Horizontal/Scale\n")
            shell.stdin.flush()
            self.assertIn("Connection refused", shell.stderr.readline())
            self.serve(port=place.rsplit(":", 1)[-1])
            shown = shell.communicate("get Horizontal/Scale\n", timeout=60)[0]
        self.assertEqual(shown, "100 ns/div\n")

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
            token.write_text("fedcba9876543210\n")
            self.assertIn("does not take this token",
                          self.run_zelctl(place, "--token-file", str(token), "tree", status=2))

    def test_read_only_service_is_written(self) -> None:
        place = self.serve("--read-only")
        self.assertIn("NO_WRITE_ACCESS",
                      self.run_zelctl(place, "set", "Horizontal/Scale", "1ms", status=1))
        self.assertIn("NO_WRITE_ACCESS", self.run_zelctl(place, "do", "Preset", status=1))

    def test_change_is_watched_for_ever_or_not_shown(self) -> None:
        place = self.serve()
        watch = subprocess.Popen([*ZELCTL, "--connect", place, "watch", "--count", "1", "--every",
                                  "20", "Horizontal/Scale"], text=True, stdout=subprocess.PIPE)
        for i in range(100):
            self.run_zelctl(place, "set", "Horizontal/Scale", "1ms" if i % 2 else "2ms")
            if watch.poll() is not None:
                break
        shown = watch.communicate(timeout=20)[0]
        self.assertTrue(re.fullmatch(r"Horizontal/Scale: .* → [12] ms/div\n", shown), shown)


if __name__ == "__main__":
    unittest.main()
