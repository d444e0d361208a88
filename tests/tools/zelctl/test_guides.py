# SPDX-License-Identifier: MIT
"""The guides: what they show is what happens."""

import os
import re
import subprocess
import sys
import tempfile
import textwrap
import unittest

from support import PROJECT, ZELCTL


def read(*path):
    with open(os.path.join(PROJECT, *path), encoding="utf-8") as file:
        return file.read()


def read_blocks(guide, language):
    return re.findall(rf"^```{language}\n(.*?)^```$", read("docs/guides", guide),
                      flags=re.M | re.S)


def read_calls(block):
    """Commands of a block, each with the output that follows it."""
    calls = []
    for line in block.splitlines():
        if line.startswith("$ "):
            calls.append([[line[2:]], []])
        elif line.startswith("> ") and not calls[-1][1] and "<<" in calls[-1][0][0]:
            calls[-1][0].append(line[2:])
        else:
            calls[-1][1].append(line)
    return [("\n".join(command), "\n".join(output)) for command, output in calls]


class Guides(unittest.TestCase):
    def test_shell_answers_otherwise_than_the_guide_says(self):
        path = os.path.dirname(ZELCTL) + os.pathsep + os.environ["PATH"]
        environment = {**os.environ, "PATH": path, "LC_ALL": "C.UTF-8"}
        calls = [call for block in read_blocks("use-from-a-shell.md", "console")
                 for call in read_calls(block)]
        self.assertGreater(len(calls), 15)
        with tempfile.TemporaryDirectory() as folder:
            for command, output in calls:
                with self.subTest(command):
                    done = subprocess.run(["bash", "-c", command], cwd=folder, env=environment,
                                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                          text=True, timeout=120, check=False)
                    self.assertEqual(done.stdout.rstrip("\n"), output)

    def test_code_of_the_guide_is_not_what_is_compiled(self):
        source = textwrap.dedent(read("examples/client/guide.cpp"))
        flat = re.sub(r"^[ ]+", "", source, flags=re.M)
        blocks = read_blocks("use-from-cpp.md", "cpp")
        self.assertGreaterEqual(len(blocks), 9)
        for block in blocks:
            with self.subTest(block.splitlines()[0]):
                self.assertIn(re.sub(r"^[ ]+", "", block, flags=re.M), flat)

    def test_link_leads_nowhere(self):
        checked = [os.path.join(PROJECT, name) for name in ("README.md", "CHANGELOG.md", "docs")]
        done = subprocess.run([sys.executable, "-B",
                               os.path.join(PROJECT, "scripts/check-links.py"), *checked],
                              stdout=subprocess.PIPE, text=True, check=False)
        self.assertEqual((done.returncode, done.stdout), (0, ""))


if __name__ == "__main__":
    unittest.main()
