# SPDX-License-Identifier: MIT
"""How remote control calls a node. The library has the same rule (Values/RemoteName.cpp)."""

from .model import Action, Child, Property

LONGEST_SHORT_FORM = 12
"""IEEE 488.2 lets no word of a header have more characters."""

ITEM_WORD = "ITEM"
"""Below a container leads to its commands, which have a level of their own."""

ROOT_WORDS = ("SYSTem", "STATus")
"""Subsystems that every instrument has beside its own."""

_KEPT = 4
_VOWELS = "aeiou"


def _begins_word(name: str, i: int) -> bool:
    """Where a capital, a digit or a "_" begins another word: SourceY1 is Source, Y, 1."""
    before, at, behind = name[i - 1], name[i], name[i + 1:i + 2]
    if not (before.isalpha() and at.isalpha()):
        return before.isdigit() != at.isdigit() or before.isalpha() != at.isalpha()
    return at.isupper() and (before.islower() or behind.islower())


def _words(name: str) -> list[str]:
    starts = [0, *(i for i in range(1, len(name)) if _begins_word(name, i)), len(name)]
    return [name[begin:end] for begin, end in zip(starts, starts[1:])]


def _word(word: str) -> str:
    kept = len(word)
    if kept > _KEPT:
        kept = _KEPT - 1 if word[_KEPT - 1].lower() in _VOWELS else _KEPT
    return word[:kept].upper() + word[kept:].lower()


def mnemonic(member: Property | Child | Action) -> str:
    """The member's word in a header: the long form is all of it, the short form its capitals,
    digits and "_"."""
    return member.remote or "".join(_word(word) for word in _words(member.name))


def short_form(word: str) -> str:
    """Of a word such as mnemonic makes."""
    return "".join(c for c in word if not c.islower())


def forms(word: str) -> tuple[str, ...]:
    """Long and short form; one where they are the same."""
    return tuple(dict.fromkeys((word.upper(), short_form(word))))
