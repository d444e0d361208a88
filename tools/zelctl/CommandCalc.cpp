// SPDX-License-Identifier: MIT
#include "Commands.h"

void AddCalcCommand(CLI::App& app, t_Run& run)
{
    CLI::App* const calc = app.add_subcommand("calc", "Calculate as the instrument does");
    calc->footer(
        "The calculations need no instrument state. Arguments take prefixes and units as\n"
        "\"set\" does; enumerations are listed by \"zelctl enum TYPE\". An argument that is\n"
        "out of range is reported, answered with the library's fallback, and gives exit\n"
        "status 1.\n"
        "\n"
        "Examples:\n"
        "  zelctl calc decimation 20ms --acquisition PEAK\n"
        "  zelctl calc temperature PT100 138.5\n"
        "  zelctl calc ddc 100kHz 10.7MHz");
    calc->require_subcommand(1);
    AddSignalCalculations(*calc, run);
    AddMeterCalculations(*calc, run);
}
