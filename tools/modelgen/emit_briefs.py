# SPDX-License-Identifier: MIT
"""Third stage: what every property means, for the command line. The library itself carries no
texts of this kind, to stay small."""

import re

from . import cpptext
from .emit_reference import group_paths
from .model import Model


# Every container has one of these of its own.
_OF_CONTAINERS = {
    "array": ("ActiveIndex", "Index of the active item; -1 when none is."),
    "map": ("ActiveKey", "Name of the active item; empty when none is."),
}


def _paths(model: Model) -> dict[str, str]:
    """The brief of each property by its path, in which "[n]" stands for any item."""
    briefs = {}
    for name, places in group_paths(model).items():
        for place in places:
            prefix = re.sub(r"\[[^]]*\]", "[n]", place) + "/" if place else ""
            for prop in model.groups[name].properties:
                briefs[prefix + prop.name] = prop.brief
            for child in model.groups[name].children:
                if child.kind in _OF_CONTAINERS:
                    own, brief = _OF_CONTAINERS[child.kind]
                    briefs[f"{prefix}{child.name}/{own}"] = brief
    return briefs


def emit(model: Model) -> dict[str, str]:
    """The table: path below the output folder, and content."""
    rows = "".join(
        f'    {{"{cpptext.escape(path)}",\n     "{cpptext.escape(brief)}"}},\n'
        for path, brief in sorted(_paths(model).items())
    )
    text = (
        f"{cpptext.head('the model')}#include \"Briefs.h\"\n\n"
        f"const std::vector<t_Brief>& GetBriefs()\n{{\n"
        f"    static const std::vector<t_Brief> briefs{{\n{rows}    }};\n    return briefs;\n}}\n"
    )
    return {"zelctl/Briefs.cpp": text}
