// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgSelftestBase.h"

enum KW_ZEL_SELFTEST_DEVICE : INT32;

/** Self-test: a new run begins without results of the selected devices, an aborted one leaves what
    was running as aborted. */
class CPgSelftest : public CPgSelftestBase
{
public:
    t_Couplings Rules() const override;

private:
    void UpdateAvailable();
    bool IsSelected(KW_ZEL_SELFTEST_DEVICE device) const;
    void Forget();
    void AbortRunning();
};
