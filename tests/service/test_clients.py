# SPDX-License-Identifier: MIT
"""zelhost and clients that were not written here: what the guide shows is what happens."""

import contextlib
import io
import os
import re
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

GUIDES = Path(__file__).resolve().parents[2] / "docs/guides"
ZELHOST = sys.argv.pop(1)
ZELCTL = sys.argv.pop(1) if sys.argv[1:] else None

try:
    import pyvisa  # noqa: F401
except ImportError:
    pyvisa = None


def blocks(language: str, guide: str = "use-remote-control.md") -> list[str]:
    return re.findall(rf"^```{language}\n(.*?)^```$", (GUIDES / guide).read_text(encoding="utf-8"),
                      flags=re.M | re.S)


def free_port() -> int:
    with socket.create_server(("127.0.0.1", 0)) as server:
        return server.getsockname()[1]


class CHost:
    """A running zelhost."""

    def __init__(self, *options: str) -> None:
        self.process = subprocess.Popen([ZELHOST, "--port", "0", "--http-port", "0", *options], text=True,
                                        stdout=subprocess.PIPE)
        self.port = int(self.process.stdout.readline().rsplit(":")[-1])

    def ask(self, message: str) -> str:
        with socket.create_connection(("127.0.0.1", self.port), timeout=20) as client:
            client.sendall(f"{message}\n".encode())
            return client.makefile().readline().rstrip("\n")

    def end(self) -> int:
        self.process.send_signal(signal.SIGTERM)
        status = self.process.wait(20)
        self.process.stdout.close()
        return status


class ClientsTest(unittest.TestCase):
    def start(self, *options: str) -> CHost:
        host = CHost(*options)
        self.addCleanup(lambda: host.process.poll() is None and host.end())
        return host

    @unittest.skipUnless(pyvisa, "needs python3-pyvisa")
    def test_guide_shows_other_answers(self) -> None:
        port = self.start().port
        for block in blocks("python"):
            printed = io.StringIO()
            with contextlib.redirect_stdout(printed):
                exec(block.replace("5025", str(port)), {})
            self.assertEqual(printed.getvalue().splitlines(),
                             re.findall(r"^print\(.*\)\s+# (.*)$", block, flags=re.M))

    @unittest.skipUnless(shutil.which("nc") and shutil.which("lxi"), "needs netcat and lxi-tools")
    def test_shell_of_the_guide_shows_other_answers(self) -> None:
        port = self.start().port
        for block in blocks("console"):
            command, _, answers = block.removeprefix("$ ").partition("\n")
            shown = subprocess.run(command.replace("5025", str(port)), shell=True, text=True,
                                   capture_output=True, timeout=20)
            self.assertEqual(shown.stdout, answers)

    @unittest.skipUnless(shutil.which("curl") and ZELCTL, "needs curl and zelctl")
    def test_guide_of_serving_shows_other_answers(self) -> None:
        ports = {"5025": str(free_port()), "5026": str(free_port())}
        commands = 0
        with tempfile.TemporaryDirectory() as programs, tempfile.TemporaryDirectory() as folder:
            program = Path(programs) / "zelhost"
            program.write_text(f"#!/bin/sh\nexec {Path(ZELHOST).resolve()} --port {ports['5025']} "
                               f"--http-port {ports['5026']} \"$@\"\n")
            program.chmod(0o755)
            (Path(programs) / "zelctl").symlink_to(Path(ZELCTL).resolve())
            environment = dict(os.environ, PATH=f"{programs}:{os.environ['PATH']}")
            for block in blocks("console", "serve-your-tree.md"):
                for part in re.findall(r"^\$ (.*\n(?:[^$].*\n)*)", block, flags=re.M):
                    for port, free in ports.items():
                        part = part.replace(port, free)
                    command, _, answers = part.partition("\n")
                    shown = subprocess.run(["bash", "-c", command], text=True, cwd=folder,
                                           stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                           env=environment, timeout=60)
                    self.assertEqual(shown.stdout, answers, command)
                    commands += 1
        self.assertEqual(commands, 8)

    @unittest.skipUnless(pyvisa, "needs python3-pyvisa")
    def test_two_visa_clients_and_a_dead_one_disturb_each_other(self) -> None:
        port = self.start().port
        manager = pyvisa.ResourceManager("@py")

        def connect() -> "pyvisa.resources.MessageBasedResource":
            client = manager.open_resource(f"TCPIP::127.0.0.1::{port}::SOCKET")
            client.read_termination = "\n"
            return client

        one, other, dead = connect(), connect(), connect()
        one.write("*ESE 1;:HOR:SCAL 1e99")
        self.assertEqual(other.query("SYST:ERR:COUN?;*ESE?"), "0;0")
        self.assertEqual(one.query("SYST:ERR:COUN?;*ESE?"), "1;1")
        dead.write("SYST:RWL;:HOR:SCAL 1ms")
        self.assertEqual(dead.query("SETUP:REMCONT:LOCLOCK?"), "1")
        dead.write_raw(b"HOR:SCAL 5ms;SETUP:BGDET:SERVI2CACC:WRITDATA #3100ab")
        dead.close()
        deadline = time.monotonic() + 20
        while other.query("SETUP:REMCONT:LOCLOCK?") == "1" and time.monotonic() < deadline:
            pass
        self.assertEqual(other.query("SETUP:REMCONT:LOCLOCK?;CONN?;:HOR:SCAL?"), "0;1;0.001")
        self.assertEqual(len(one.query_binary_values("SYST:HELP:HEAD?", datatype="B")) > 20000, True)
        self.assertEqual(one.query("HOR:SCAL?"), "0.001")

    def test_settings_end_with_the_host(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            host = self.start("--settings", folder)
            self.assertEqual(host.ask("HOR:SCAL 1ms;*OPC?"), "1")
            self.assertEqual(host.end(), 0)
            self.assertEqual(self.start("--settings", folder).ask("HOR:SCAL?"), "0.001")

    def test_manual_page_knows_other_options(self) -> None:
        shown = subprocess.run([ZELHOST, "--help"], text=True, capture_output=True, timeout=20)
        page = (GUIDES.parent / "zelhost.1").read_text(encoding="utf-8").replace("\\-", "-")
        self.assertEqual(set(re.findall(r"^  (?:-\w,)?(--[\w-]+)", shown.stdout, flags=re.M)),
                         set(re.findall(r"^\.BI? (--[\w-]+)", page, flags=re.M)) | {"--help"})

    def test_port_is_served_twice(self) -> None:
        first = self.start()
        second = subprocess.run([ZELHOST, "--port", str(first.port), "--http-port", "0"], text=True,
                                capture_output=True, timeout=20)
        self.assertEqual((second.returncode, second.stdout), (1, ""))
        self.assertIn(f"zelhost: address 127.0.0.1, port {first.port}: ", second.stderr)

    def test_read_only_host_takes_writes(self) -> None:
        host = self.start("--read-only")
        self.assertEqual(host.ask("HOR:SCAL 1ms;:SYST:ERR?;:HOR:SCAL?"),
                         '-203,"Command protected;the service only reads";1E-07')


if __name__ == "__main__":
    unittest.main()
