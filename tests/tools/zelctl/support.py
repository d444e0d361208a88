# SPDX-License-Identifier: MIT
"""Runs the zelctl whose path is the last argument of the test program."""

import os
import subprocess
import sys

ZELCTL = os.path.abspath(sys.argv.pop())
PROJECT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../..")


def run(*arguments, **options):
    return subprocess.run([ZELCTL, *arguments], capture_output=True, text=True, timeout=120,
                          check=False, **options)
