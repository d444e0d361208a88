# SPDX-License-Identifier: MIT
"""All enumerations of the tree; each is made when it is first asked for."""

from . import _core


def __getattr__(name: str) -> object:
    try:
        made = _core.enumeration(name)
    except KeyError:
        raise AttributeError(f"there is no enumeration {name!r}") from None
    globals()[name] = made
    return made


def __dir__() -> list[str]:
    return _core.enumeration_names()
