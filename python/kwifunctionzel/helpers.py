# SPDX-License-Identifier: MIT
"""Calculations of the instrument: plain functions of their arguments, but for those of the meter
that read one setting. Enumerations are taken as members, by a name of theirs, or by number. What an
argument outside of its range is answered with is in the reference of C++; it warns."""

from ._core import (
    DDC,
    FFT,
    Common,
    DecimationRate,
    Gain,
    Horizontal,
    NcoFrequency,
    ProbeSettings,
    RecordFacts,
    Registers,
    Vertical,
    is_acquisition_channel,
    is_analog_channel,
    is_analog_trigger,
    is_digital_channel,
    is_hardware_input,
    is_logic_trigger,
    is_serial_bus_channel,
    is_serial_bus_trigger,
    requires_logic_trigger,
)

__all__ = [
    "DDC", "FFT", "Common", "DecimationRate", "Gain", "Horizontal", "NcoFrequency",
    "ProbeSettings", "RecordFacts", "Registers", "Vertical", "is_acquisition_channel",
    "is_analog_channel", "is_analog_trigger", "is_digital_channel", "is_hardware_input",
    "is_logic_trigger", "is_serial_bus_channel", "is_serial_bus_trigger",
    "requires_logic_trigger",
]
