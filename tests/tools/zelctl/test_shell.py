# SPDX-License-Identifier: MIT
"""The shell in a terminal: what the tabulator completes, and what the next shell remembers."""

import os
import pty
import select
import subprocess
import tempfile
import time
import unittest

from support import PROJECT, ZELCTL

PROMPT = "zel> "
UP = "\x1b[A"


class Terminal:
    """A shell at the other end of a pseudo-terminal."""

    def __init__(self, test, home):
        self.master, slave = pty.openpty()
        environment = {**os.environ, "HOME": home, "TERM": "vt100", "LC_ALL": "C.UTF-8"}
        environment.pop("XDG_STATE_HOME", None)
        # libedit keeps the names of added functions until the process ends: not ours to mend.
        sanitizer = environment.get("ASAN_OPTIONS", "")
        environment["ASAN_OPTIONS"] = f"{sanitizer}:detect_leaks=0".lstrip(":")
        self.process = subprocess.Popen([ZELCTL, "shell"], stdin=slave, stdout=slave,
                                        stderr=slave, env=environment, start_new_session=True)
        os.close(slave)
        self.text = ""
        test.addCleanup(self.end)
        self.wait_for(PROMPT)

    def end(self):
        self.process.kill()
        self.process.wait()

    def wait_for(self, piece, seconds=30):
        """All that is shown until a piece of text comes."""
        end = time.monotonic() + seconds
        while piece not in self.text:
            left = end - time.monotonic()
            if left <= 0 or not select.select([self.master], [], [], left)[0]:
                raise AssertionError(f"{piece!r} does not come, but {self.text!r}")
            self.text += os.read(self.master, 4096).decode("utf-8", "replace")
        shown, self.text = self.text.split(piece, 1)
        return shown + piece

    def type(self, keys):
        os.write(self.master, keys.encode())

    def quit(self):
        self.type("\x15quit\n")
        status = self.process.wait(30)
        os.close(self.master)
        return status


class Shell(unittest.TestCase):
    def setUp(self):
        self.home = tempfile.TemporaryDirectory()
        self.addCleanup(self.home.cleanup)

    def test_tab_completes_too_little(self):
        terminal = Terminal(self, self.home.name)
        # what is typed, what a complete line answers
        for typed, answer in [
                ("ge\tHorizontal/Sca\t\t\x15get Horizontal/Scale", "100 ns/div"),
                ("ge\tHoriz\tHistoryD\t", "100"),
                ("ge\tVertical/Chan\t1]/Ena\t", "ON"),
                ("set Trigger/Type RU\t", "EDGE → RUNT"),
                ("calc samplera\tZEL_C", "5 GSa/s"),
        ]:
            with self.subTest(typed):
                terminal.type(typed)
                terminal.type("\n")
                self.assertIn(answer, terminal.wait_for(answer))
                terminal.wait_for(PROMPT)
        self.assertEqual(terminal.quit(), 0)

    def test_tab_does_not_show_the_choice(self):
        terminal = Terminal(self, self.home.name)
        terminal.type("set Horizontal/DSPMode \t")
        choice = terminal.wait_for(PROMPT)  # of the line, shown again behind the choice
        for name in ["ROLL", "NORMAL"]:
            self.assertIn(name, choice)
        terminal.quit()

    def test_next_shell_has_forgotten(self):
        first = Terminal(self, self.home.name)
        first.type("get Horizontal/Scale\n")
        first.wait_for("100 ns/div")
        first.wait_for(PROMPT)
        self.assertEqual(first.quit(), 0)
        kept = os.path.join(self.home.name, ".local/state/zelctl/history")
        self.assertTrue(os.path.exists(kept))
        second = Terminal(self, self.home.name)
        second.type(UP + UP)  # behind "quit"
        second.wait_for("Horizontal/Scale")
        second.type("\n")
        second.wait_for("100 ns/div")
        second.quit()

    def test_history_keeps_a_secret(self):
        terminal = Terminal(self, self.home.name)
        for line in ['set Setup/Wireless/WirelessClient/Passphrase hunter2',
                     'set "setup/wireless/WirelessClient/Pasphrase" "hunter2',
                     'get Setup/Wireless/WirelessClient/Passphrase']:
            terminal.type(line + "\n")
            terminal.wait_for(PROMPT)
        terminal.quit()
        with open(os.path.join(self.home.name, ".local/state/zelctl/history"),
                  encoding="utf-8") as file:
            kept = file.read()
        self.assertIn("Passphrase", kept)
        self.assertNotIn("hunter2", kept)

    def test_bash_completes_otherwise_than_zelctl(self):
        script = """source "$1/tools/zelctl/zelctl.bash"
            COMP_LINE=$3 COMP_POINT=${#3} COMP_WORDS=("$2")
            _zelctl; printf '%s|' "${COMPREPLY[@]}" """
        for typed, wanted in [("zelctl re", "recall |remove |rename |reset |"),
                              ("zelctl --load x.xml get Zoo", "Zoom/|"),
                              ("zelctl get Vertical/Chan", "Vertical/Channel[|"),
                              ("zelctl set Trigger/Type run", "RUNT |"),
                              ("zelctl step --tr", "--trace |"),
                              ("zelctl nonsen", "|")]:
            with self.subTest(typed):
                done = subprocess.run(["bash", "-c", script, "bash", PROJECT, ZELCTL, typed],
                                      capture_output=True, text=True, timeout=60, check=False)
                self.assertEqual((done.stdout, done.stderr), (wanted, ""))

    def test_shell_needs_a_home(self):
        terminal = Terminal(self, "/proc/nowhere")
        terminal.type("get Horizontal/Scale\n")
        terminal.wait_for("100 ns/div")
        self.assertEqual(terminal.quit(), 0)


if __name__ == "__main__":
    unittest.main()
