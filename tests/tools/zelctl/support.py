# SPDX-License-Identifier: MIT
"""Runs the zelctl whose path is the last argument of the test program; those before it are the
emulator that runs it, if it is for another machine."""

import os
import subprocess
import sys

ZELCTL = os.path.abspath(sys.argv.pop())
EMULATOR = sys.argv[1:]
del sys.argv[1:]
PROJECT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../..")


def run(*arguments, **options):
    return subprocess.run([*EMULATOR, ZELCTL, *arguments], capture_output=True, text=True,
                          timeout=120, check=False, **options)
