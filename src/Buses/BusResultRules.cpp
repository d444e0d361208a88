// SPDX-License-Identifier: MIT
#include "Buses/BusResultRules.h"

#include "Buses/PgTrackInTable.h"
#include "Names/SerialBus.h"
#include "Names/ZEL.h"

using namespace NNames;

void NRules::FollowFrames(const CDbPropertyGroup& results)
{
    // What is not of the present protocol is not listed: then it marks the same frame again.
    results.At(ZEL::SerialBus / SerialBus::TrackInTable)->UpdateGroup();
}
