// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/Acquisition.h"

class CDbPgRoot;

namespace NSamples
{
/** What the thread that acquires goes by. */
struct t_AcquisitionSettings
{
    KW_ArmedAcquisition armed;
    bool isSingle = false; ///< `armed.left` says when it ends
    /** Results with which the history keeps a record, a bit each. */
    UINT32 kept = ~0U;
};

/** All of it of one moment: under the tree's lock. `settingsCounter` is the caller's. */
t_AcquisitionSettings ReadSettings(const CDbPgRoot& root);
/** Whether the scope runs, and not another function in its place. Never blocks. */
bool IsAcquiring(const CDbPgRoot& root);
/** Whether two acquisitions have the same traces, with the same meaning. */
bool HaveSameTraces(const KW_ArmedAcquisition& one, const KW_ArmedAcquisition& other);
} // namespace NSamples
