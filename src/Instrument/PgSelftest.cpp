// SPDX-License-Identifier: MIT
#include "Instrument/PgSelftest.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "Instrument/PgaSelftestDevice.h"
#include "KWEnumerationsSelfTest.h"
#include "Rules/NumberRules.h"

using namespace NNames;

t_Couplings CPgSelftest::Rules() const
{
    static constexpr auto rows = Table<Names>(OnAny() >> Derive<&CPgSelftest::UpdateAvailable>,
                                              On(Names::Start) >> Do<&CPgSelftest::Forget>,
                                              On(Names::Abort) >> Do<&CPgSelftest::AbortRunning>);
    return rows;
}

void CPgSelftest::UpdateAvailable()
{
    const KW_ZEL_SELFTEST_SELECTION selection = m_pSelection->Get();
    NRules::SetAvailable({m_pGroup}, selection == eKW_ZEL_SELFTEST_SELECTION_GROUP);
    NRules::SetAvailable({m_pDevice}, selection == eKW_ZEL_SELFTEST_SELECTION_DEVICE);
}

bool CPgSelftest::IsSelected(KW_ZEL_SELFTEST_DEVICE device) const
{
    return m_pSelection->Get() != eKW_ZEL_SELFTEST_SELECTION_DEVICE ||
           m_pDevice->Get() == eKW_ZEL_SELFTEST_DEVICE_ALL || m_pDevice->Get() == device;
}

void CPgSelftest::Forget()
{
    KW_CHECKED(m_pState->DbSet(eKW_ZEL_SELFTEST_STATE_NOT_DONE));
    KW_CHECKED(m_pDialog->DbSet(eKW_ZEL_SELFTEST_DIALOG_NONE));
    KW_CHECKED(m_pProgress->DbSet(0.0));
    for (INT32 i = 0; i < m_pSelftestDevice->GetCount(); ++i)
    {
        const CPgSelftestDevice* const device = m_pSelftestDevice->ItemDirect(i);
        if (IsSelected(device->GetPrDevice()->Get()))
        {
            KW_CHECKED(device->GetPrState()->DbSet(eKW_ZEL_SELFTEST_STATE_NOT_DONE));
            KW_CHECKED(device->GetPrErrorCode()->DbSet(0));
            KW_CHECKED(device->GetPrMessage()->DbSet(QStringLiteral("")));
        }
    }
}

void CPgSelftest::AbortRunning()
{
    const auto abort = [](CDbPropEnum<KW_ZEL_SELFTEST_STATE>& state)
    {
        if (state.Get() == eKW_ZEL_SELFTEST_STATE_RUNNING)
        {
            KW_CHECKED(state.DbSet(eKW_ZEL_SELFTEST_STATE_ABORTED));
        }
    };
    abort(*m_pState);
    for (INT32 i = 0; i < m_pSelftestDevice->GetCount(); ++i)
    {
        abort(*m_pSelftestDevice->ItemDirect(i)->GetPrState());
    }
    KW_CHECKED(m_pDialog->DbSet(eKW_ZEL_SELFTEST_DIALOG_NONE));
}
