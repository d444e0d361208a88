# SPDX-License-Identifier: MIT
# Generated from the model: change the model, not this file.
"""All enumerations of the tree; each is made when it is first asked for."""

from kwifunctionzel.enumerations import Enumeration

class KW_RATE(Enumeration):
    """Rate; a text that follows a separator begins with a digit, some texts are not set."""
    N10K = 0
    """10 k: Slow."""
    N2U5 = 1
    """2.5 µ\\s."""
    USER = 2
    """"User": Any rate that the user enters; the exact figure is the property beside this
    selector."""

class KW_PROBE(Enumeration):
    """Probe, with a blank entry."""
    X1 = 0
    """x1."""
    N1 = 1
    """1."""

class KW_SIGN(Enumeration):
    """Sign; serial names only."""
    NEGATIVE = 0
    """NEGATIVE."""
    POSITIVE = 1
    """POSITIVE."""

class KW_UNIT(Enumeration):
    """Unit."""
    NONE = 0
    """NONE."""
    FREQ_S_DIV = 1
    """s/div."""
