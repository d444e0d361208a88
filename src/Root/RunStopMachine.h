// SPDX-License-Identifier: MIT
#pragma once

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsAcquisition.h"
#include "Names/Control.h"
#include "Names/SMMode.h"
#include "Names/ZEL.h"

/** Base of a state machine with "Start", "Stop" and "RunStop": a request is also what the user asks
    for. How far it has come is told by whoever carries it out. The stop of the main mode is that of
    all machines. */
template <typename TBase>
class CRunStopMachine : public TBase
{
public:
    t_Couplings Rules() const override
    {
        static constexpr auto rows = NNames::Table<typename TBase::Names>(MachineRows());
        return rows;
    }

protected:
    static constexpr auto MachineRows()
    {
        using namespace NNames;
        using N = typename TBase::Names;
        return Rows(On(N::Start) >> Do<&CRunStopMachine::Run>,
                    On(N::Stop, ZEL::Control / Control::SMMode / SMMode::Stop) >>
                        Do<&CRunStopMachine::Stop>);
    }

    void Run() { KW_CHECKED(this->m_pRunStop->DbSet(eKW_ZEL_RUNSTOP_STATE_RUN)); }
    void Stop() { KW_CHECKED(this->m_pRunStop->DbSet(eKW_ZEL_RUNSTOP_STATE_STOP)); }
};
