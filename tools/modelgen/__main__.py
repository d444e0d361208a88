# SPDX-License-Identifier: MIT
"""Entry point of `python3 tools/modelgen`."""

import sys
from pathlib import Path

# Started as a folder, Python puts the folder itself on the path; the package is its parent's.
sys.path[0] = str(Path(__file__).resolve().parent.parent)

from modelgen.command import main  # noqa: E402

sys.exit(main(sys.argv[1:]))
