// SPDX-License-Identifier: MIT
#pragma once

#include "CheckedAccess.h"
#include "KWEnumerationsAcquisition.h"

class CDbFunction;

/** Base of a state machine with "Start", "Stop" and "RunStop": a request is also what the user asks
    for. How far it has come is told by whoever carries it out. */
template <typename TBase>
class CRunStopMachine : public TBase
{
public:
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override
    {
        if (function == this->m_pStart)
        {
            KW_CHECKED(this->m_pRunStop->DbSet(eKW_ZEL_RUNSTOP_STATE_RUN));
        }
        if (function == this->m_pStop)
        {
            KW_CHECKED(this->m_pRunStop->DbSet(eKW_ZEL_RUNSTOP_STATE_STOP));
        }
        return TBase::OnFunction(function);
    }
};
