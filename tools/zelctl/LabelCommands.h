// SPDX-License-Identifier: MIT
#pragma once

#include "Commands.h"
#include "LabelFile.h"

/** The commands below "labels". */
///@{
void AddLabelShow(CLI::App& labels, t_Run& run);
void AddLabelDiff(CLI::App& labels, t_Run& run);
/** "load" and "save". */
void AddLabelTreeCommands(CLI::App& labels, t_Run& run);
void AddLabelDecode(CLI::App& labels, t_Run& run);
///@}

/** The messages of a name, else those of an identifier ("0x123"), all for an empty text; fails
   where there is none. */
std::vector<const KW_LabelEntry*> FindMessages(const KW_LabelList& list, const QString& wanted,
                                               const QString& file);

inline void DeclareSkipping(CLI::App& command, bool& skipsBad)
{
    command.add_flag("--skip-bad", skipsBad,
                     "Leave messages out that can not be read, instead of refusing the file");
}
