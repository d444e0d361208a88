# SPDX-License-Identifier: MIT
"""Command line of the generator."""

import argparse
import sys
from pathlib import Path

from . import (
    emit_enums, emit_groups, emit_interfaces, emit_names, emit_python, emit_reference,
    emit_sources,
)
from . import emit_schemas, emit_site
from .check_enums import check_enums
from .check_groups import check_groups
from .check_released import check_released
from .check_remote import check_remote
from .couplings import read_couplings
from .diagnostics import Diagnostics
from .model import Model
from .output import update
from .reader import read_folder
from .released import Released, begins_anew, read_released, release


def load(
    enumerations: Path, groups: Path, released: Released, diagnostics: Diagnostics
) -> Model:
    """Reads and checks a model. It may be emitted only when nothing was reported. What a damaged
    file would have declared is not complained about as missing: checking stops before."""
    model = Model()
    enum_files = read_folder(enumerations, diagnostics)
    group_files = read_folder(groups, diagnostics)
    if not diagnostics.found:
        model.enums = check_enums(enum_files, diagnostics)
    if not diagnostics.found:
        model.groups = check_groups(group_files, model.enums, diagnostics)
    if not diagnostics.found:
        check_released(model, released, diagnostics)
        check_remote(model.groups, diagnostics)
    return model


def emit(model: Model) -> dict[str, str]:
    """All files that a model makes: path below the output folder, and content."""
    files: dict[str, str] = {}
    for emitter in (
        emit_enums, emit_interfaces, emit_names, emit_groups, emit_sources, emit_reference,
        emit_python,
    ):
        files.update(emitter.emit(model))
    return files


def _arguments(arguments: list[str]) -> argparse.Namespace:
    parser = argparse.ArgumentParser(
        prog="modelgen", description="Makes C++ and a settings reference from the model."
    )
    parser.add_argument("--enumerations", type=Path, required=True, help="folder of enumerations")
    parser.add_argument("--groups", type=Path, required=True, help="folder of property groups")
    parser.add_argument("--out", type=Path, required=True, help="folder to write below")
    mode = parser.add_mutually_exclusive_group()
    mode.add_argument("--list-outputs", action="store_true", help="print the files, write none")
    mode.add_argument("--check", action="store_true", help="check the model, write nothing")
    mode.add_argument("--site", metavar="COUPLINGS", type=Path,
                      help="write the reference as pages for a browser, with the couplings that "
                           "were observed (folder), and schemas of files")
    mode.add_argument("--release", metavar="VERSION",
                      help="append to the lists of what was released; X.0.0 begins them anew")
    return parser.parse_args(arguments)


def main(arguments: list[str]) -> int:
    """Exit status: 0 done, 1 the model has mistakes, 2 wrong usage."""
    options = _arguments(arguments)
    diagnostics = Diagnostics()
    folders = options.enumerations, options.groups
    anew = options.release is not None and begins_anew(options.release)
    released = Released() if anew else read_released(*folders, diagnostics)
    model = load(*folders, released, diagnostics)
    if diagnostics.found:
        print("\n".join(diagnostics.lines()), file=sys.stderr)
        return 1
    if options.release:
        release(*folders, options.release, model, released)
    if options.release or options.check:
        return 0
    if options.site:
        update(options.out, {**emit_site.emit(model, read_couplings(options.site)),
                             **emit_schemas.emit(model)})
        return 0
    files = emit(model)
    if options.list_outputs:
        print("\n".join(str(options.out / path) for path in files))
    else:
        update(options.out, files)
    return 0
