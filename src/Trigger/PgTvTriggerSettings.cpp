// SPDX-License-Identifier: MIT
#include "Trigger/PgTvTriggerSettings.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsTrigger.h"
#include "Names/TvTriggerSettings.h"
#include "Rules/NumberRules.h"

using namespace NNames;

namespace
{
bool IsInterlaced(KW_TRIGGER_TV_STANDARD standard)
{
    switch (standard)
    {
    case eKW_TRIGGER_TV_STANDARD_PAL:
    case eKW_TRIGGER_TV_STANDARD_NTSC:
    case eKW_TRIGGER_TV_STANDARD_SECAM:
    case eKW_TRIGGER_TV_STANDARD_PAL_M:
    case eKW_TRIGGER_TV_STANDARD_HD_1080I_50:
    case eKW_TRIGGER_TV_STANDARD_HD_1080I_60:
        return true;
    default:
        return false;
    }
}

/** Frames that cameras and films have: they are sent in two segments where equipment expects
   fields. No other standard has such frames. */
bool MayBeSegmented(KW_TRIGGER_TV_STANDARD standard)
{
    return standard == eKW_TRIGGER_TV_STANDARD_HD_1080P_24 ||
           standard == eKW_TRIGGER_TV_STANDARD_HD_1080P_25 ||
           standard == eKW_TRIGGER_TV_STANDARD_HD_1080P_30;
}
} // namespace

t_Couplings CPgTvTriggerSettings::Rules() const
{
    using T = CPgTvTriggerSettings;
    static constexpr auto rows = Table<Names>(
        On(Names::Standard) >> Do<&T::SetNegativePolarity>,
        OnAny() >>
            Derive<&T::OfferScanModes, &T::OfferFields, &T::UpdateLines, &T::UpdateSyncPulse>);
    return rows;
}

void CPgTvTriggerSettings::SetNegativePolarity()
{
    KW_CHECKED(m_pPolarity->DbSet(eKW_TRIGGER_TV_POLARITY_NEGATIVE));
}

void CPgTvTriggerSettings::OfferScanModes()
{
    const KW_TRIGGER_TV_STANDARD standard = m_pStandard->Get();
    const bool isInterlaced = IsInterlaced(standard);
    KW_CHECKED(m_pScanMode->EnableValue(eKW_TRIGGER_TV_SCAN_MODE_INTERLACED, isInterlaced));
    KW_CHECKED(m_pScanMode->EnableValue(eKW_TRIGGER_TV_SCAN_MODE_PROGRESSIVE, !isInterlaced));
    KW_CHECKED(
        m_pScanMode->EnableValue(eKW_TRIGGER_TV_SCAN_MODE_SEGMENTED, MayBeSegmented(standard)));
    KW_CHECKED(m_pScanMode->FollowWish(isInterlaced ? eKW_TRIGGER_TV_SCAN_MODE_INTERLACED
                                                    : eKW_TRIGGER_TV_SCAN_MODE_PROGRESSIVE));
}

void CPgTvTriggerSettings::OfferFields()
{
    const bool hasFields = m_pScanMode->Get() != eKW_TRIGGER_TV_SCAN_MODE_PROGRESSIVE;
    for (const auto field : {eKW_TRIGGER_TV_MODE_ODD_FIELD, eKW_TRIGGER_TV_MODE_EVEN_FIELD})
    {
        KW_CHECKED(m_pMode->EnableValue(field, hasFields));
    }
    for (const auto field : {eKW_TRIGGER_TV_LINEFIELD_FIELD_1, eKW_TRIGGER_TV_LINEFIELD_FIELD_2})
    {
        KW_CHECKED(m_pLineField->EnableValue(field, hasFields));
    }
    KW_CHECKED(m_pMode->FollowWish(eKW_TRIGGER_TV_MODE_ALL_FIELDS));
    KW_CHECKED(m_pLineField->FollowWish(eKW_TRIGGER_TV_LINEFIELD_FRAME));
}

void CPgTvTriggerSettings::UpdateLines()
{
    const auto lines = KWMath::ToInteger<UINT32>(
        m_pStandard->GetNameInfo().GetNumber(m_pStandard->GetAsInt()).value_or(0.0));
    KW_CHECKED(m_pLinesPerFrame->DbSet(lines));
    const KW_TRIGGER_TV_LINEFIELD field = m_pLineField->Get();
    const UINT32 counted = field == eKW_TRIGGER_TV_LINEFIELD_FIELD_1   ? (lines + 1) / 2
                           : field == eKW_TRIGGER_TV_LINEFIELD_FIELD_2 ? lines / 2
                                                                       : lines;
    NRules::SetLimits(*m_pLineNumber, UINT32{1}, counted);
}

void CPgTvTriggerSettings::UpdateSyncPulse()
{
    const bool isHigh = m_pStandard->Get() >= eKW_TRIGGER_TV_STANDARD_HD_720P_50;
    KW_CHECKED(m_pSyncPulseType->DbSet(isHigh ? eKW_TRIGGER_TV_SYNC_PULSE_TYPE_TRILEVEL
                                              : eKW_TRIGGER_TV_SYNC_PULSE_TYPE_BILEVEL));
    KW_CHECKED(m_pCombinedPolaritySyncPulseType->DbSetAsInt(2 * m_pSyncPulseType->GetAsInt() +
                                                            m_pPolarity->GetAsInt()));
}
