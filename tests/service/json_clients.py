# SPDX-License-Identifier: MIT
"""JSON over HTTP and WebSocket as clients see it that were not written here: curl, a subscriber on
node, a validator of schemas. All answers are held against the description that is served."""

import json
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

ROOT = Path(__file__).resolve().parents[2]
GUIDES = [ROOT / "docs/guides/use-json.md", ROOT / "docs/guides/use-panel.md"]
DESCRIPTION = ROOT / "docs/openapi.json"
SUBSCRIBER = Path(__file__).with_name("subscriber.js")
MODULES = {**os.environ, "NODE_PATH": os.environ.get("NODE_PATH", "/usr/share/nodejs")}
ZELHOST = sys.argv.pop(1)

try:
    import jsonschema
except ImportError:
    jsonschema = None


def has_subscriber() -> bool:
    return shutil.which("node") is not None and subprocess.run(
        ["node", "-e", "require('ws')"], env=MODULES, capture_output=True).returncode == 0


class CHost:
    """A running zelhost with a folder of its own."""

    def __init__(self, *options: str) -> None:
        self.folder = tempfile.TemporaryDirectory()
        self.process = subprocess.Popen(
            [ZELHOST, "--port", "0", "--http-port", "0", "--settings", self.folder.name, *options],
            text=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.raw = int(self.process.stdout.readline().rsplit(":")[-1])
        self.port = int(self.process.stdout.readline().rsplit(":")[-1])

    def curl(self, target: str, *options: str) -> tuple[int, str]:
        shown = subprocess.run(
            ["curl", "-sS", "-g", "-m", "20", "-w", "\n%{http_code}", *options,
             f"http://127.0.0.1:{self.port}{target}"], text=True, capture_output=True)
        body, _, status = shown.stdout.rpartition("\n")
        return int(status or 0), body

    def ask(self, target: str, body: object = None) -> tuple[int, dict]:
        status, text = self.curl(target, *([] if body is None else ["-d", json.dumps(body)]))
        return status, json.loads(text)

    def subscribe(self, message: dict, milliseconds: int) -> subprocess.Popen:
        process = subprocess.Popen(
            ["node", str(SUBSCRIBER), str(self.port), json.dumps(message), str(milliseconds)],
            env=MODULES, text=True, stdout=subprocess.PIPE)
        process.standing = json.loads(process.stdout.readline())
        return process

    def connect(self) -> socket.socket:
        return socket.create_connection(("127.0.0.1", self.port), timeout=20)

    def memory(self) -> int:
        """Bytes of memory in use."""
        pages = Path(f"/proc/{self.process.pid}/statm").read_text().split()[1]
        return int(pages) * os.sysconf("SC_PAGE_SIZE")

    def end(self) -> None:
        self.process.send_signal(signal.SIGTERM)
        self.process.wait(20)
        self.process.stdout.close()
        self.folder.cleanup()


WRITE = {"writes": [{"path": "Horizontal/Scale", "value": "2 ms"}]}
REFUSED = {"writes": [{"path": "Horizontal/Scale", "value": 1e99}]}
UPGRADE = ["-H", "Connection: Upgrade", "-H", "Upgrade: websocket", "-H",
           "Sec-WebSocket-Version: 13", "-H", "Sec-WebSocket-Key: AAAAAAAAAAAAAAAAAAAAAA=="]
MARKERS = "Spectrum/SpectrumMarkers/SpectrumMarker"

# Every request once taken, and once refused where it can be.
REQUESTS = [
    ("get", "/openapi.json", None), ("get", "/tree", None), ("get", "/tree?detail=full", None),
    ("get", "/tree?path=Horizontal/Scale&detail=full", None), ("get", "/tree?path=Preset", None),
    ("get", "/tree?path=none", None), ("get", "/history", None), ("get", "/standing", None),
    ("get", "/files?path=SaveRecall/File", None), ("get", "/files?path=Horizontal", None),
    ("get", "/couplings", None),
    ("get", "/couplings?path=none", None), ("get", "/why?path=Horizontal/Scale", None),
    ("get", "/why?path=none", None), ("get", "/changes", None), ("get", "/waves", None),
    ("post", "/write", WRITE),
    ("post", "/write", REFUSED), ("post", "/write", {}), ("post", "/write", {**REFUSED, "together": False}),
    ("post", "/trial", WRITE), ("post", "/trial", REFUSED), ("post", "/trial", {}),
    ("post", "/run", {"path": "Preset"}), ("post", "/run", {"path": "Horizontal"}),
    ("post", "/items", {"path": MARKERS, "do": "insert"}),
    ("post", "/items", {"path": MARKERS, "do": "remove", "key": "99"}),
    ("post", "/undo", {}), ("post", "/redo", {}), ("post", "/redo", {}), ("post", "/preset", {}),
    ("post", "/save", {"file": "a.xml"}), ("post", "/save", {"file": "../a.xml"}),
    ("get", "/settings?format=csv", None), ("get", "/settings?format=pdf", None),
    ("post", "/settings", {"format": "csv", "settings": "?"}),
    ("post", "/recall", {"file": "a.xml"}), ("post", "/recall", {"file": "none.xml"}),
]


class JsonClientsTest(unittest.TestCase):
    def start(self, *options: str) -> CHost:
        host = CHost(*options)
        self.addCleanup(host.end)
        return host

    def test_description_is_another_one(self) -> None:
        served = self.start().ask("/openapi.json")[1]
        self.assertEqual(served, json.loads(DESCRIPTION.read_text(encoding="utf-8")),
                         f"curl …/openapi.json | python3 -m json.tool > {DESCRIPTION}")

    @unittest.skipUnless(jsonschema, "needs python3-jsonschema")
    def test_answers_are_not_as_described(self) -> None:
        host = self.start()
        description = host.ask("/openapi.json")[1]
        seen = set()
        for method, target, body in REQUESTS:
            status, answer = host.ask(target, body)
            path = target.partition("?")[0]
            responses = description["paths"][path][method]["responses"]
            kind = "200" if status == 200 else "default"
            seen.add((path, kind))
            schema = responses[kind]["content"]["application/json"]["schema"]
            with self.subTest(f"{method} {target} {status}"):
                jsonschema.validate(answer, {**schema, "components": description["components"]})
        self.assertEqual({path for path, _ in seen}, set(description["paths"]))
        self.assertGreaterEqual(len([kind for _, kind in seen if kind == "default"]), 9)

    @unittest.skipUnless(has_subscriber(), "needs node and its package ws")
    def test_subscriber_misses_or_repeats_changes(self) -> None:
        host = self.start()
        offset = "Vertical/Channel[0]/Offset"
        first = host.subscribe({"subscribe": [offset]}, 20000)
        raw = socket.create_connection(("127.0.0.1", host.raw), timeout=20)
        begun = time.monotonic()
        for i in range(1, 1000):  # a thousand in a second
            raw.sendall(f"VERT:CHAN1:OFFS {i / 1000}\n".encode())
            time.sleep(0.001)
        lines = []
        for line in first.stdout:  # ends with the subscriber, after 20 s
            lines.append(json.loads(line))
            if lines[-1]["changes"][0]["now"]["value"] == 0.999:
                break
        looks = (time.monotonic() - begun) / 0.05
        first.terminate()
        first.communicate(timeout=20)
        numbers = [line["number"] for line in lines]
        values = [line["changes"][0]["now"]["value"] for line in lines]
        self.assertEqual((numbers, values), (sorted(set(numbers)), sorted(values)))
        self.assertEqual(values[-1], 0.999)
        self.assertLess(len(lines), looks + 3)
        raw.sendall(b"VERT:CHAN1:OFFS 0.5;*OPC?\n")
        self.assertEqual(raw.recv(10), b"1\n")
        raw.close()
        time.sleep(0.2)
        again = host.subscribe({"subscribe": [offset], "number": numbers[-1],
                                "stream": first.standing["stream"]}, 20000)
        self.assertFalse(again.standing["resync"])
        missed = json.loads(again.stdout.readline())
        again.terminate()
        again.communicate(timeout=20)
        self.assertEqual([change["now"]["value"] for change in missed["changes"]], [0.5])

    @unittest.skipUnless(has_subscriber() and jsonschema, "needs node, its package ws and jsonschema")
    def test_picture_is_not_as_described(self) -> None:
        host = self.start("--demo")
        host.ask("/write", {"writes": [{"path": "Logic/Enabled", "value": True},
                                       {"path": "Mask/Enabled", "value": True}], "together": False})
        ran = self.view(host, {"traces": {"columns": 300}, "spectrum": {"columns": 200}}, 1500)
        schemas = host.ask("/openapi.json")[1]["components"]
        pictures = [line["picture"] for line in ran if "picture" in line]
        self.assertTrue(5 <= len(pictures) <= 35, len(pictures))
        for line in ran:
            kind = ("WavePicture" if "picture" in line else "WaveMasks" if "masks" in line
                    else "WaveStanding")
            jsonschema.validate(line.get("picture", line), {
                "$ref": f"#/components/schemas/{kind}", "components": schemas})
        head = pictures[-1]
        numbers = [picture["record"]["number"] for picture in pictures]
        # One with a new spectrum may be of the same record.
        self.assertEqual(numbers, sorted(numbers))
        self.assertEqual((head["record"]["left"], head["record"]["right"]), (-5e-07, 5e-07))
        names = [trace["name"] for trace in head["record"]["traces"]]
        self.assertEqual((names[0], names[-1], head["spectrum"]["traces"][0]["name"]),
                         ("C1", "D0", "FFT 1"))
        # 5 MHz of the source stand out.
        self.assertEqual([line["peak"] for line in ran if "picture" in line][-1], 5)
        quiet = self.view(self.start(), {"traces": {"columns": 300}}, 300)
        self.assertEqual(quiet, [{"traces": False, "spectrum": False}])
        self.assertEqual(self.view(host, {"traces": {"columns": 5000}}, 200)[0]["name"], "BAD_TEXT")

    def view(self, host: CHost, wish: dict, milliseconds: int) -> list[dict]:
        """Texts, heads of pictures, and where the spectrum is highest, MHz."""
        script = f"""
            const socket = new (require("ws"))("ws://127.0.0.1:{host.port}/waves", ["waves"]);
            socket.on("open", () => socket.send({json.dumps(json.dumps(wish))}));
            socket.on("message", (data, isBinary) => {{
                if (!isBinary) {{ console.log(data.toString()); return; }}
                const body = 4 + data.readUInt32LE(0);
                const picture = JSON.parse(data.subarray(4, body).toString());
                const at = (i) => data.readFloatLE(body + 4 * i);
                const {{traces, columns, from, to}} = picture.spectrum;
                let peak = 0;
                for (let i = 0; i < columns; ++i) {{
                    peak = at(traces[0].begin + 2 * i + 1) > at(traces[0].begin + 2 * peak + 1) ? i : peak;
                }}
                console.log(JSON.stringify(
                    {{picture, peak: Math.round((from + (to - from) * peak / columns) / 5e6) * 5}}));
            }});
            setTimeout(() => process.exit(), {milliseconds});"""
        ran = subprocess.run(["node", "-e", script], env=MODULES, text=True, timeout=20,
                             capture_output=True, check=True)
        return [json.loads(line) for line in ran.stdout.splitlines()]

    def test_viewer_that_reads_nothing_is_queued_for(self) -> None:
        host = self.start("--demo", "--connections", "60")
        upgrade = (b"GET /waves HTTP/1.1\r\nHost: localhost\r\nConnection: Upgrade\r\n"
                   b"Upgrade: websocket\r\nSec-WebSocket-Version: 13\r\n"
                   b"Sec-WebSocket-Key: AAAAAAAAAAAAAAAAAAAAAA==\r\n\r\n")
        wish = json.dumps({"traces": {"columns": 4096}, "spectrum": {"columns": 4096}}).encode()
        frame = b"\x81" + bytes([0x80 + len(wish)]) + bytes(4) + wish  # masked by zeros
        silent = []
        for _ in range(40):
            client = host.connect()
            client.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 4096)
            client.sendall(upgrade)
            self.assertIn(b" 101 ", client.recv(4096))
            client.sendall(frame)
            silent.append(client)
        time.sleep(1)
        before = host.memory()
        time.sleep(2)
        self.assertLess(host.memory() - before, 4 << 20)
        begun = time.monotonic()
        self.assertEqual(host.curl("/history")[0], 200)
        self.assertLess(time.monotonic() - begun, 1)
        answer = b""
        while b"CONTAINER_FULL" not in answer:
            answer += silent[-1].recv(4096)
        for client in silent:
            client.close()

    def test_large_body_is_read(self) -> None:
        host = self.start()
        before = host.memory()
        with tempfile.NamedTemporaryFile() as body:
            body.truncate(100 << 20)
            for options in ([], ["-H", "Expect:"]):
                status, answer = host.curl("/write", *options, "--data-binary", f"@{body.name}")
                self.assertEqual((status, json.loads(answer)["name"]), (413, "TOO_LONG"))
        chunked = host.connect()
        self.addCleanup(chunked.close)
        chunked.sendall(b"POST /write HTTP/1.1\r\nHost: localhost\r\nTransfer-Encoding: chunked\r\n\r\n")
        with self.assertRaises((ConnectionError, AssertionError)):
            for _ in range(2000):
                chunked.sendall(b"10000\r\n" + bytes(65536) + b"\r\n")
            self.fail("all of it was read")
        self.assertLess(host.memory() - before, 16 << 20)

    def test_long_head_or_garbage_is_taken(self) -> None:
        host = self.start()
        self.assertEqual(host.curl("/history", "-H", "X: " + "x" * 20000)[0], 431)
        for garbage in (b"\x00\xff\x16\x03\x01 \r\n\r\n", b"*IDN?\n\n\r\n\r\n",
                        b"GET /tree HTTP/9.9\r\n\r\n",
                        b"POST /write HTTP/1.1\r\nHost: localhost\r\nContent-Length: -1\r\n\r\n"):
            client = host.connect()
            client.sendall(garbage)
            self.assertIn(client.recv(100)[:12], (b"HTTP/1.1 400", b""), garbage)
            client.close()
        self.assertEqual(host.curl("/history")[0], 200)

    def test_page_of_another_host_is_answered(self) -> None:
        host = self.start()
        self.assertEqual(host.curl("/tree", "-H", "Host: evil.example")[0], 421)
        self.assertEqual(host.curl("/write", "-H", "Origin: http://evil.example", "-d",
                                   json.dumps(WRITE))[0], 403)
        self.assertEqual(host.curl("/tree?path=Horizontal/Scale", "-I")[0], 405)
        self.assertEqual(host.curl("/changes", "-H", "Origin: http://evil.example", *UPGRADE)[0], 403)

    def test_stranger_needs_no_token(self) -> None:
        with tempfile.NamedTemporaryFile("w") as token:
            token.write("0123456789abcdef\n")
            token.flush()
            host = self.start("--token-file", token.name)
            for target in ("/history", "/changes", "/waves"):
                upgrade = [] if target == "/history" else UPGRADE
                self.assertEqual(host.curl(target, *upgrade)[0], 401, target)
            self.assertEqual(host.curl("/history", "-H", "Authorization: Bearer 0123456789abcdef")[0],
                             200)

    def test_panel_is_served_without_guard(self) -> None:
        with tempfile.NamedTemporaryFile("w") as token:
            token.write("0123456789abcdef\n")
            token.flush()
            host = self.start("--token-file", token.name)
            status, head = host.curl("/", "-D", "-", "-o", "/dev/null", "--compressed")
            self.assertEqual(status, 200)
            self.assertIn("script", host.curl("/", "--compressed")[1])
            for line in ("Content-Encoding: gzip", "Content-Security-Policy: default-src 'self'",
                         "X-Content-Type-Options: nosniff", "X-Frame-Options: DENY",
                         "Content-Type: text/html; charset=utf-8"):
                self.assertIn(line, head)
            self.assertNotIn("unsafe", head)
            self.assertIn("require-trusted-types-for 'script'; trusted-types 'none'", head)
            tag = re.search(r"ETag: (\S+)", head)[1]
            self.assertEqual(host.curl("/", "--compressed", "-H", f"If-None-Match: {tag}"), (304, ""))
            self.assertEqual(host.curl("/panel.js", "-I")[0], 200)
            self.assertEqual(host.curl("/panel.js", "-H", "Host: evil.example")[0], 421)
            self.assertEqual(host.curl("/panel.js", "-d", "x")[0], 401)
            self.assertEqual(host.curl("/other.js")[0], 401)

    def test_silent_clients_hold_up_others(self) -> None:
        host = self.start("--connections", "40")
        silent = [host.connect() for _ in range(38)]
        for i, client in enumerate(silent):
            # Half of a request, and requests whose answers nobody reads.
            client.sendall(b"GET /tr" if i % 2 else
                           b"GET /tree?detail=full HTTP/1.1\r\nHost: localhost\r\n\r\n" * 20)
        times = []
        for _ in range(20):
            begun = time.monotonic()
            self.assertEqual(host.curl("/history")[0], 200)
            times.append(time.monotonic() - begun)
        self.assertLess(sorted(times)[10], 1)
        further = [host.connect() for _ in range(10)]
        self.assertIn(b"", [client.recv(1) for client in further[3:]])
        for client in silent + further:
            client.close()
        time.sleep(0.2)
        self.assertEqual(host.curl("/history")[0], 200)

    @unittest.skipUnless(shutil.which("jq"), "needs jq")
    def test_guide_shows_other_answers(self) -> None:
        folder = self.enterContext(tempfile.TemporaryDirectory())
        for guide in GUIDES:
            host = self.start()
            for block in re.findall(r"^```console\n(.*?)^```$", guide.read_text(encoding="utf-8"),
                                    flags=re.M | re.S):
                for shown in re.split(r"^\$ ", block, flags=re.M)[1:]:
                    command, answers = re.fullmatch(r"(.*\n(?:> .*\n)*)((?:.*\n)*)", shown).groups()
                    command = command.replace("\n> ", "\n").replace("5026", str(host.port))
                    ran = subprocess.run(command, shell=True, text=True, capture_output=True,
                                         timeout=20, cwd=folder)
                    self.assertEqual(ran.stdout, answers, command)


if __name__ == "__main__":
    unittest.main()
