# SPDX-License-Identifier: MIT
"""The guides: what they show is what happens."""

import os
import re
import subprocess
import sys
import tempfile
import textwrap
import unittest

from support import PROJECT, ZELCTL, run


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


# Words that stand for others.
PLACEHOLDER = re.compile(r"\b(COMMAND|FILE|PATH|TEXT|TYPE|VALUE)\b")


def read_helps(*words):
    """The help of the program, of each command, and of those that commands consist of; not of the
    calculations, whose examples are a test of their own."""
    text = run(*words, "--help").stdout
    if "Subcommands:" not in text or words == ("calc",):
        return [text]
    commands = re.findall(r"^  (\w+)", text.split("Subcommands:")[1].split("\n\n")[0], flags=re.M)
    return [text, *(help for command in commands for help in read_helps(*words, command))]


def read_examples():
    """Command lines in the helps, in the manual page and in documents, by the name of the text: on
    lines of their own, with an explanation behind several blanks, or in the text. What a guide
    shows with its answers is another test's."""
    texts = {"help": "\n".join(read_helps()),
             "zelctl.1": re.sub(r"\\(.)", r"\1", read("docs/zelctl.1")), "README.md": read("README.md")}
    for folder in ["docs", "docs/guides"]:
        texts |= {name: read(folder, name) for name in sorted(os.listdir(os.path.join(PROJECT, folder)))
                  if name.endswith(".md")}
    for name, text in texts.items():
        text = re.sub(r"^```.*?^```", "", text, flags=re.M | re.S)
        lines = re.findall(r"^ *(zelctl (?!- |--connect\b)[^`(]*?)(?: {3,}.*)?$", text, flags=re.M)
        for example in dict.fromkeys([*lines, *re.findall(r"`(zelctl (?!--connect\b)[^`]+)`", text)]):
            if not PLACEHOLDER.search(example):
                yield name, " ".join(example.split())


class Guides(unittest.TestCase):
    def run_as_written(self, command, folder):
        path = os.path.dirname(ZELCTL) + os.pathsep + os.environ["PATH"]
        environment = {**os.environ, "PATH": path, "LC_ALL": "C.UTF-8"}
        return subprocess.run(["bash", "-c", command], cwd=folder, env=environment,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, text=True, timeout=120, check=False)

    def test_example_fails(self):
        examples = list(read_examples())
        self.assertGreater(len(examples), 35)
        self.assertGreaterEqual({name for name, _ in examples},
                                {"help", "zelctl.1", "README.md", "use-from-a-shell.md"})
        with tempfile.TemporaryDirectory() as folder:
            os.symlink(os.path.join(PROJECT, "examples"), os.path.join(folder, "examples"))
            for name in ["my", "before", "after"]:
                run("--save", os.path.join(folder, f"{name}.xml"), "get", "Horizontal")
            for name, example in examples:
                with self.subTest(f"{name}: {example}"):
                    # A program behind a pipe need not be there; status 1 says that states differ,
                    # or that there is something to say of a label list.
                    done = self.run_as_written(example.split(" | ")[0], folder)
                    may_report = " diff " in example or " labels " in example
                    self.assertLessEqual(done.returncode, may_report, done.stdout)

    def test_shell_answers_otherwise_than_the_guide_says(self):
        for guide in ["use-from-a-shell.md", "from-a-can-database-to-named-signals.md"]:
            calls = [call for block in read_blocks(guide, "console") for call in read_calls(block)]
            self.assertGreater(len(calls), 15)
            with tempfile.TemporaryDirectory() as folder:
                os.symlink(os.path.join(PROJECT, "examples"), os.path.join(folder, "examples"))
                for command, output in calls:
                    with self.subTest(f"{guide}: {command}"):
                        done = self.run_as_written(command, folder)
                        self.assertEqual(done.stdout.rstrip("\n"), output)

    def test_code_of_the_guide_is_not_what_is_compiled(self):
        source = "".join(textwrap.dedent(read("examples/client", name))
                         for name in ("guide.cpp", "acquire.cpp", "show.cpp"))
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
