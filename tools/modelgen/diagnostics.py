# SPDX-License-Identifier: MIT
"""What is wrong with a model, and where."""

from dataclasses import dataclass, field


def _one_line(text: str) -> str:
    """What a mistake quotes may hold line ends and what a terminal takes for a command."""
    return "".join(c if c.isprintable() else ascii(c)[1:-1] for c in text)


@dataclass(frozen=True, order=True)
class Location:
    """A line of a model file; lines count from 1."""

    file: str
    line: int

    def __str__(self) -> str:
        return f"{self.file}:{self.line}"


@dataclass
class Diagnostics:
    """Collects mistakes, so that one run shows all of them."""

    found: list[tuple[Location, str]] = field(default_factory=list)

    def report(self, location: Location, text: str) -> None:
        """Adds a mistake. The same mistake at the same line is kept once."""
        if (location, text) not in self.found:
            self.found.append((location, text))

    def lines(self) -> list[str]:
        """`file:line: what is wrong`, in the order of files and lines."""
        return [f"{location}: {_one_line(text)}" for location, text in sorted(self.found)]
