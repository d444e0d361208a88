// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelList.h"

#include <QString>
#include <QStringView>

/**
 * When a multiplexed signal is in a frame, as text: "Mode = 3", "Mode = 0-3, 7"; empty for a signal
 * that always is. The multiplexor's name goes up to the last "=", so that it may hold one itself.
 */
namespace NLabelConditions
{
QString TextOf(const KW_LabelSignalDetails& details);

/** Reads such a text into multiplexor and ranges, which it puts in order and merges; blanks do not
    count. False for anything else, which leaves `details` as they were. */
bool Read(QStringView text, KW_LabelSignalDetails& details);

/** Puts ranges in order and merges those that touch. */
void Arrange(std::vector<KW_RawRange>& ranges);

/** Whether the multiplexor's raw value selects the signal; ranges as Arrange leaves them. */
bool Selects(const std::vector<KW_RawRange>& ranges, UINT64 raw);
} // namespace NLabelConditions
