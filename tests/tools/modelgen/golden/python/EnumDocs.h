// SPDX-License-Identifier: MIT
// Generated from the enumeration files: change the model, not this file.
#pragma once

/** Docstrings of the enumerations, in UTF-8. */
struct t_EnumDoc
{
    const char* type;
    const char* doc;
};
constexpr t_EnumDoc kEnumDocs[] = {
    {"KW_RATE",
        "Rate; a text that follows a separator begins with a digit, some texts are not set.\n"
        "\n"
        "N10K: 10 k: Slow.\n"
        "N2U5: 2.5 µ\\s.\n"
        "USER: \"User\": Any rate that the user enters; the exact figure is the property beside this selector.\n"},
    {"KW_PROBE",
        "Probe, with a blank entry.\n"
        "\n"
        "X1: x1.\n"
        "N1: 1.\n"},
    {"KW_SIGN",
        "Sign; serial names only.\n"
        "\n"
        "NEGATIVE: NEGATIVE.\n"
        "POSITIVE: POSITIVE.\n"},
    {"KW_UNIT",
        "Unit.\n"
        "\n"
        "NONE: NONE.\n"
        "FREQ_S_DIV: s/div.\n"},
};
