// SPDX-License-Identifier: MIT
#include "Root/PgSMLogger.h"

#include "KWEnumerationsOnOff.h"
#include "Names/Logger.h"

using namespace NNames;

t_Couplings CPgSMLogger::Rules() const
{
    static constexpr auto rows = Table<Names>(
        MachineRows(), On(ZEL::Logger / Logger::Start) >> Do<&CPgSMLogger::Run>,
        On(ZEL::Logger / Logger::Stop) >> Do<&CPgSMLogger::Stop>,
        Delivered(ZEL::Logger / Logger::Recording) >> Do<&CPgSMLogger::FollowRecording>);
    return rows;
}

void CPgSMLogger::FollowRecording()
{
    At(ZEL::Logger / Logger::Recording)->Get() == eKW_ONOFF_ON ? Run() : Stop();
}
