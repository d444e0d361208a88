// SPDX-License-Identifier: MIT
#pragma once

#include "Commands.h"
#include "LabelFile.h"

/** The commands below "labels". */
///@{
void AddLabelShow(CLI::App& labels, t_Run& run);
void AddLabelDiff(CLI::App& labels, t_Run& run);
///@}

inline void DeclareSkipping(CLI::App& command, bool& skipsBad)
{
    command.add_flag("--skip-bad", skipsBad,
                     "Leave messages out that can not be read, instead of refusing the file");
}
