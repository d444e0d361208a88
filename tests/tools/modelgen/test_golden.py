# SPDX-License-Identifier: MIT
"""Output for a model with every feature. MODELGEN_ACCEPT=1 takes the present output as right:
review the difference before it is committed."""

import os
import shutil
import unittest

from support import HERE, CWorkspace

_GOLDEN = HERE / "golden"


def _stored() -> dict[str, str]:
    return {
        str(path.relative_to(_GOLDEN)): path.read_bytes().decode("utf-8")
        for path in _GOLDEN.rglob("*") if path.is_file()
    }


class GoldenTest(unittest.TestCase):
    maxDiff = None

    def test_output_differs_from_the_reviewed_one(self) -> None:
        with CWorkspace() as workspace:
            workspace.copy_model()
            self.assertEqual(workspace.run()[0], 0)
            made = workspace.outputs()
            if os.environ.get("MODELGEN_ACCEPT") == "1":
                shutil.rmtree(_GOLDEN, ignore_errors=True)
                shutil.copytree(workspace.out, _GOLDEN)
        stored = _stored()
        self.assertEqual(sorted(made), sorted(stored))
        for path, content in made.items():
            with self.subTest(path):
                self.assertMultiLineEqual(content, stored[path])


if __name__ == "__main__":
    unittest.main()
