// SPDX-License-Identifier: MIT
#pragma once

#include "LabelText.h"

/** A difference of two label lists: of the whole list (no message), of a message, or of a signal.
 */
struct t_LabelDifference
{
    QString message; ///< "0x123 EngineData"
    QString signal;
    QString field; ///< empty where the whole of it came or went
    QString from;
    QString to;
    bool isAdded = false; ///< of no field: came; else went
};

/** All differences in the order of the first list, with what the second alone has behind. Messages
    belong together by their identifier, else by their name; signals by their name, else by their
    place. */
std::vector<t_LabelDifference> Compare(const KW_LabelList& first, const KW_LabelList& second);
