# SPDX-License-Identifier: MIT
"""Builds the package with the project's CMake: `pip install --no-build-isolation .` in a virtual
environment. KWI_BUILD_DIR names a build folder to go on with; another is made without."""

import os
import subprocess
import sys
from pathlib import Path

from setuptools import Distribution, setup
from setuptools.command.build_py import build_py

_HERE = Path(__file__).resolve().parent
_PROJECT = _HERE.parent


class BuildWithCMake(build_py):
    """Installs CMake's component for Python, with the library beside the module, where setuptools
    looks for the package."""

    def run(self) -> None:
        present = os.environ.get("KWI_BUILD_DIR")
        build = Path(present) if present else _PROJECT / "build" / "pip"
        options = ["-DKWI_BUILD_PYTHON=ON"]
        if not present:
            # The one that the virtual environment is made of: it stays when that goes.
            python = getattr(sys, "_base_executable", sys.executable)
            options += [f"-DKWI_PYTHON={python}", "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
                        "-DKWI_BUILD_TESTS=OFF", "-DKWI_BUILD_TOOLS=OFF", "-DCMAKE_UNITY_BUILD=ON",
                        "-DCMAKE_UNITY_BUILD_BATCH_SIZE=12"]
        subprocess.run(["cmake", "-S", _PROJECT, "-B", build, *options], check=True)
        subprocess.run(["cmake", "--build", build, "--target", "kwi_python_package"], check=True)
        subprocess.run(["cmake", "--install", build, "--component", "PythonWheel", "--prefix",
                        Path(self.build_lib).resolve()], check=True)

    def get_outputs(self, include_bytecode: bool = True) -> list[str]:
        return [str(path) for path in Path(self.build_lib).rglob("*") if path.is_file()]


class BinaryDistribution(Distribution):
    """Bound to the platform although setuptools builds nothing itself."""

    def has_ext_modules(self) -> bool:
        return True


setup(packages=["kwifunctionzel"], cmdclass={"build_py": BuildWithCMake},
      distclass=BinaryDistribution)
