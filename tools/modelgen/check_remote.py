# SPDX-License-Identifier: MIT
"""Second stage: words of remote control, which must lead to one node each."""

import re

from . import remote
from .diagnostics import Diagnostics
from .model import Action, Child, Group, Property

_Member = Property | Child | Action

_SUFFIX = re.compile(r"[0-9]+")


class _GroupCheck:
    """Checks the words of one group's members against each other."""

    def __init__(self, group: Group, diagnostics: Diagnostics, reserved: tuple[str, ...]) -> None:
        self._members: tuple[_Member, ...] = (*group.properties, *group.children, *group.actions)
        self._diagnostics = diagnostics
        self._reserved = {form for word in reserved for form in remote.forms(word)}
        self._taken: dict[str, _Member] = {}

    def _check_word(self, member: _Member) -> bool:
        word, short = remote.mnemonic(member), remote.short_form(remote.mnemonic(member))
        if word.upper() != member.name.upper():
            text = f"remote '{word}' is not '{member.name}' with the letters of its short form"
            self._diagnostics.report(member.location, f"{text} as capitals")
        elif not short[:1].isalpha():
            self._diagnostics.report(
                member.location, f"remote short form '{short}' begins with no letter"
            )
        elif len(short) > remote.LONGEST_SHORT_FORM:
            text = f"remote short form '{short}' of '{member.name}' has more than"
            text += f" {remote.LONGEST_SHORT_FORM} characters: the key 'remote' must give another"
            self._diagnostics.report(member.location, text)
        else:
            return True
        return False

    def _check_forms(self, member: _Member) -> None:
        for form in remote.forms(remote.mnemonic(member)):
            other = self._taken.setdefault(form, member)
            if other is not member:
                text = f"remote name '{form}' of '{member.name}' is one of '{other.name}', too"
                text += f" ({other.location}): the key 'remote' must tell them apart"
                self._diagnostics.report(member.location, text)
            if form in self._reserved:
                text = f"remote name '{form}' of '{member.name}' is a command of remote control"
                self._diagnostics.report(member.location, text)

    def _check_suffixes(self, member: _Member) -> None:
        """CHANnel2 is the second item of Channel and nothing else."""
        if not isinstance(member, Child) or member.kind == "single":
            return
        for form in remote.forms(remote.mnemonic(member)):
            for taken, other in self._taken.items():
                if taken.startswith(form) and _SUFFIX.fullmatch(taken[len(form):]):
                    text = f"remote name '{taken}' of '{other.name}' is that of an item of"
                    text += f" '{member.name}' ({member.location})"
                    self._diagnostics.report(other.location, text)

    def run(self) -> None:
        for member in self._members:
            if self._check_word(member):
                self._check_forms(member)
        for member in self._members:
            self._check_suffixes(member)


def check_remote(groups: dict[str, Group], diagnostics: Diagnostics) -> None:
    """Both forms of every member are its own among its siblings and beside the commands that
    stand on their level."""
    items = {c.group for group in groups.values() for c in group.children if c.kind != "single"}
    for group in groups.values():
        reserved = remote.ROOT_WORDS if group.root else ()
        reserved += (remote.ITEM_WORD,) if group.name in items else ()
        _GroupCheck(group, diagnostics, reserved).run()
