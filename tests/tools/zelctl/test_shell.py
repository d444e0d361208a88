# SPDX-License-Identifier: MIT
"""The shell in a terminal: what the tabulator completes, and what the next shell remembers."""

import fcntl
import os
import pty
import select
import subprocess
import tempfile
import termios
import time
import unittest

from support import PROJECT, ZELCTL

PROMPT = "zel> "
UP = "\x1b[A"
INTERRUPT = "\x03"


def take_terminal():
    """Interrupts and hang-ups of the terminal at the standard input are the process's."""
    fcntl.ioctl(0, termios.TIOCSCTTY, 0)


class Terminal:
    """A shell at the other end of a pseudo-terminal, with options of the program."""

    def __init__(self, test, home, *options):
        self.master, slave = pty.openpty()
        environment = {**os.environ, "HOME": home, "TERM": "vt100", "LC_ALL": "C.UTF-8"}
        environment.pop("XDG_STATE_HOME", None)
        # libedit keeps the names of added functions until the process ends: not ours to mend.
        sanitizer = environment.get("ASAN_OPTIONS", "")
        environment["ASAN_OPTIONS"] = f"{sanitizer}:detect_leaks=0".lstrip(":")
        self.process = subprocess.Popen([ZELCTL, *options, "shell"], stdin=slave,
                                        stdout=slave, stderr=slave, env=environment, start_new_session=True,
                                        preexec_fn=take_terminal)
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


def end_input(terminal):
    """An end that is typed while the terminal changes its mode is a character of the line: what
    stands there is dropped, and the end typed again, as users do."""
    while terminal.process.poll() is None:
        try:
            terminal.type("\x15\x04")
        except OSError:
            break  # it has just ended
        time.sleep(0.1)


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
                ("expect 0 set Trigger/Ty\tRU\t", "EDGE → RUNT"),
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

    def test_interrupt_ends_the_session_or_keeps_the_line(self):
        terminal = Terminal(self, self.home.name)
        terminal.type("set Horizontal/Scale 1us\n")
        terminal.wait_for("100 ns/div → 1 µs/div")
        terminal.wait_for(PROMPT)
        terminal.type("get Vertical")
        terminal.wait_for("get Vertical")
        terminal.type(INTERRUPT)
        terminal.wait_for(PROMPT)
        terminal.type("get Horizontal/Scale\n")
        terminal.wait_for("\n1 µs/div")
        self.assertEqual(terminal.quit(), 0)

    def test_next_shell_has_forgotten(self):
        # how a shell ends, how many lines it adds by that
        for name, end, lines in [
                ("quit", Terminal.quit, 1),
                ("killed", Terminal.end, 0),
                ("hang-up", lambda terminal: os.close(terminal.master), 0),
                ("end of the input", end_input, 0),
        ]:
            with self.subTest(name), tempfile.TemporaryDirectory() as home:
                for scale in ["Horizontal/Scale", "Zoom/Scale"]:
                    shell = Terminal(self, home)
                    shell.type(f"get {scale}\n")
                    shell.wait_for("ns/div")
                    shell.wait_for(PROMPT)
                    end(shell)
                    shell.process.wait(30)
                last = Terminal(self, home)
                last.type(UP * (2 + 2 * lines))
                last.wait_for("Horizontal/Scale")
                last.type("\n")
                last.wait_for("100 ns/div")
                last.quit()

    def test_history_grows_without_end(self):
        folder = os.path.join(self.home.name, ".local/state/zelctl")
        os.makedirs(folder)
        kept = os.path.join(folder, "history")
        with open(kept, "w", encoding="utf-8") as file:
            file.write("_HiStOrY_V2_\n" + "".join(f"echo\\040{i}\n" for i in range(2000)))
        shell = Terminal(self, self.home.name)
        shell.type("echo last\n")
        shell.wait_for(PROMPT)
        shell.end()
        with open(kept, encoding="utf-8") as file:
            lines = file.read().splitlines()
        self.assertLess(len(lines), 1000)
        self.assertEqual(lines[0::len(lines) - 1], ["_HiStOrY_V2_", "echo\\040last"])
        self.assertEqual(os.listdir(folder), ["history"])

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
        for typed, wanted in [("zelctl re", "recall |redo |remove |rename |reset |"),
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
