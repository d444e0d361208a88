# SPDX-License-Identifier: MIT
"""zelctl on the living tree of another process."""

import os
import re
import select
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import unittest
from pathlib import Path
from typing import TextIO

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
redo
undo 2
redo 2
undo
history
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

# Apart, as a recall of settings is the beginning of another run of the acquisition.
LABELS_SCRIPT = """
labels load {project}/examples/labels/vehicle.dbc --bus CAN
labels save vehicle.csv --bus CAN
tree {labels}
labels load vehicle.csv --bus CAN
undo
undo
""".format(project=Path(__file__).resolve().parents[3], labels=LABELS)

# What no script goes on behind.
WRONG = ["get Nowhere", "get Vertical/Channel[9]/Scale", "get Vertical", "set Horizontal 1",
         "do Horizontal/Scale", "set Horizontal/Scale blue", "set Trigger/Type RUNTS",
         "insert Horizontal", "commit", "undo 99", "enum Horizontal/Scale", "reset Horizontal/Nothing",
         "set Vertical/Channel[0]/Scale 1e99", "diff none.xml", "find nothingisnamedso"]

if os.environ.get("KWI_FEW_TRIALS"):  # those hundreds take a sanitizer minutes, and are alike
    SCRIPT = re.sub(r"^(why|couplings) .*\n", "", SCRIPT, flags=re.MULTILINE)

ZELHOST = sys.argv.pop(1)
ZELCTL = sys.argv[1:]

from test_shell import INTERRUPT, PROMPT, Terminal  # noqa: E402, which takes the rest of the words


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

    def answer(self, *texts: bytes) -> str:
        """A service that answers each request so and hangs up."""
        server = socket.create_server(("127.0.0.1", 0))
        self.addCleanup(server.close)

        def serve() -> None:
            for text in texts:
                client = server.accept()[0]
                with client:
                    client.recv(65536)
                    client.sendall(text)

        threading.Thread(target=serve, daemon=True).start()
        return f"127.0.0.1:{server.getsockname()[1]}"

    def run_zelctl(self, place: str, *words: str, status: int = 0) -> str:
        shown = subprocess.run([*ZELCTL, "--connect", place, *words], text=True,
                               capture_output=True, timeout=60)
        self.assertEqual(shown.returncode, status, shown.stderr)
        return (shown.stdout + shown.stderr).rstrip("\n")

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
        answer = self.answer
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

    def test_terminal_does_less_on_a_living_tree_or_breaks_when_it_is_lost(self) -> None:
        place = self.serve()
        self.run_zelctl(place, "insert", LABELS, "Engine")
        with tempfile.TemporaryDirectory() as home:
            terminal = Terminal(self, home, "--connect", place)
            terminal.type(f"get {LABELS}[\t")
            terminal.wait_for("Engine]/")
            terminal.type(INTERRUPT)
            terminal.wait_for(PROMPT)
            terminal.type('set Setup/Wireless/WirelessClient/Passphrase "correct horse"\n')
            terminal.wait_for("→ •")
            terminal.wait_for(PROMPT)
            terminal.type("watch Horizontal/Scale\n")
            terminal.wait_for("\n")
            for i in range(100):
                self.run_zelctl(place, "set", "Horizontal/Scale", "1ms" if i % 2 else "2ms")
                if select.select([terminal.master], [], [], 0.2)[0]:
                    break
            terminal.wait_for("ms/div")
            terminal.type(INTERRUPT)
            terminal.wait_for(PROMPT)
            self.hosts[-1].send_signal(signal.SIGTERM)
            self.hosts[-1].wait(timeout=20)
            terminal.type("get Horizontal/Sc\t")
            terminal.type("ale\n")
            terminal.wait_for("Connection refused")
            terminal.wait_for(PROMPT)
            self.serve(port=place.rsplit(":", 1)[-1])
            terminal.type("get Horizontal/Sca\t\n")
            terminal.wait_for("\n100 ns/div")
            terminal.wait_for(PROMPT)
            self.assertEqual(terminal.quit(), 0)
            kept = (Path(home) / ".local/state/zelctl/history").read_text(encoding="utf-8")
        self.assertIn("watch\\040Horizontal/Scale\n", kept)
        self.assertNotIn("horse", kept)

    def test_refusal_is_taken_for_an_answer(self) -> None:
        place = self.serve()
        self.assertIn("code 3 ABOVE_MAXIMUM",
                      self.run_zelctl(place, "set", "Horizontal/Scale", "1e99", status=1))
        told = subprocess.run([*ZELCTL, "--connect", place, "shell"], text=True, timeout=60,
                              input='same Setup/Wireless/WirelessClient/Passphrase ""\n',
                              capture_output=True).stderr
        self.assertIn("can not be compared", told)

    def test_token_is_not_needed(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            token = Path(folder) / "token"
            token.touch(0o600)
            token.write_text("0123456789abcdef\n")
            place = self.serve("--token-file", str(token))
            self.assertIn("--token-file", self.run_zelctl(place, "get", "Horizontal", status=2))
            self.assertEqual(self.run_zelctl(place, "--token-file", str(token), "get",
                                             "Horizontal/Scale"), "100 ns/div")
            watch = self.watch(place, "--token-file", str(token), "watch", "--count", "1",
                               "Horizontal/Scale")
            self.assertRegex(watch.communicate(timeout=20)[0],
                             r"^Horizontal/Scale: .* → [12] ms/div\n$")
            token.write_text("fedcba9876543210\n")
            self.assertIn("does not take this token",
                          self.run_zelctl(place, "--token-file", str(token), "tree", status=2))

    def watch(self, place: str, *words: str) -> subprocess.Popen:
        """A watch that has shown its first change, which is one of Horizontal/Scale."""
        watch = subprocess.Popen([*ZELCTL, "--connect", place, *words], text=True,
                                 stdout=subprocess.PIPE, stderr=subprocess.PIPE)

        patience = threading.Timer(60, watch.kill)
        patience.start()

        def end() -> None:
            patience.cancel()
            watch.kill()
            watch.communicate(timeout=20)

        self.addCleanup(end)
        # Nobody sees when it has begun: what comes before that is no change for it.
        for i in range(100):
            self.run_zelctl(place, *words[:words.index("watch")], "set", "Horizontal/Scale",
                            "1ms" if i % 2 else "2ms")
            if select.select([watch.stdout], [], [], 0.2)[0]:
                break
        return watch

    def wait_for(self, stream: TextIO, piece: str) -> str:
        """The next line that holds a piece of text."""
        while piece not in (line := stream.readline()):
            self.assertNotEqual(line, "", f"{piece} does not come")
        return line

    def test_watch_ends_with_its_service_or_forgets_what_it_knew(self) -> None:
        for style in ([], ["--json"]):
            with self.subTest(style=style):
                place = self.serve()
                watch = self.watch(place, *style, "watch", "Horizontal/Scale", "Trigger")
                self.run_zelctl(place, "set", "Horizontal/Scale", "5ms")
                self.wait_for(watch.stdout, '"new":0.005' if style else "→ 5 ms/div")
                self.hosts[-1].send_signal(signal.SIGTERM)
                self.hosts[-1].wait(timeout=20)
                told = watch.stdout if style else watch.stderr
                self.wait_for(told, "hung up; waiting for it")
                self.serve(port=place.rsplit(":", 1)[-1])
                self.wait_for(told, "the service answers again")
                self.wait_for(watch.stdout, '"new":1e-07' if style else "5 ms/div → 100 ns/div")
                self.run_zelctl(place, "set", "Trigger/Type", "RUNT")
                self.wait_for(watch.stdout, "RUNT")
                watch.send_signal(signal.SIGINT)
                self.assertEqual(watch.wait(timeout=20), 0)

    def test_watch_ends_when_its_item_goes(self) -> None:
        place = self.serve()
        self.run_zelctl(place, "insert", LABELS, "Engine")
        watch = self.watch(place, "watch", f"{LABELS}[Engine]", "Horizontal/Scale")
        self.run_zelctl(place, "remove", LABELS, "Engine")
        self.wait_for(watch.stdout, f"{LABELS}[Engine]: removed")
        self.run_zelctl(place, "insert", LABELS, "Engine")
        self.wait_for(watch.stdout, f"{LABELS}[Engine]: added")

    def test_large_change_is_the_last_one(self) -> None:
        place = self.serve()
        watch = self.watch(place, "watch", LABELS, "Horizontal/Scale")
        self.run_zelctl(place, "labels", "load",
                        str(Path(__file__).resolve().parents[3] / "examples/labels/vehicle.dbc"),
                        status=1)
        self.wait_for(watch.stdout, f"{LABELS}[Label1]: added with")
        self.run_zelctl(place, "set", "Horizontal/Scale", "5ms")
        self.wait_for(watch.stdout, "→ 5 ms/div")

    def test_watch_takes_any_answer(self) -> None:
        root = b'HTTP/1.1 200 OK\r\n\r\n{"path":"","kind":"group"}'
        for answer in (b"HTTP/1.1 200 OK\r\n\r\n{}", b"SSH-2.0-x\r\n", b"",
                       b"HTTP/1.1 101 Switching\r\nSec-WebSocket-Accept: x\r\n\r\n"):
            with self.subTest(answer=answer):
                self.assertIn("tells of no changes",
                              self.run_zelctl(self.answer(root, root, answer), "watch", ".", status=2))
        self.assertIn("living", subprocess.run([*ZELCTL, "watch", "."], text=True, timeout=60,
                                               capture_output=True).stderr)


if __name__ == "__main__":
    unittest.main()
