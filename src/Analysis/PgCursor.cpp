// SPDX-License-Identifier: MIT
#include "Analysis/PgCursor.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsMathematics.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsReadings.h"
#include "KWEnumerationsUnits.h"
#include "Mathematics/UnitRules.h"
#include "Names/Cursor.h"
#include "Names/Horizontal.h"
#include "Names/XY.h"
#include "Names/ZEL.h"
#include "Rules/ChannelRules.h"

#include <cmath>

using namespace NNames;

namespace
{
/** Two lines at a share of the screen to either side of its middle. */
void Spread(CDbPropNumDouble& first, CDbPropNumDouble& second, double share)
{
    const double middle = (first.GetMin() + first.GetMax()) * 0.5;
    const double distance = (first.GetMax() - first.GetMin()) * share;
    NRules::MoveTo(first, middle - distance);
    NRules::MoveTo(second, middle + distance);
}
} // namespace

t_Couplings CPgCursor::Rules() const
{
    using C = CPgCursor;
    static constexpr auto all =
        Derive<&C::UpdateSources, &C::LimitLines, &C::UpdateReadout, &C::UpdateDeltas>;
    static constexpr auto lines = Derive<&C::LimitLines, &C::UpdateDeltas>;
    static constexpr auto sources = Derive<&C::UpdateSources, &C::LimitLines, &C::UpdateDeltas>;
    static constexpr auto rows = Table<Names>(
        On(Names::X1, Names::X2, Names::Y1, Names::Y2, Names::LevelX1, Names::LevelX2) >>
            Do<&C::MoveCoupled>,
        OnAny() >> all, On(Names::SetToScreen) >> Do<&C::SetToScreen, &C::UpdateGroup>,
        On(Names::SetAsReference) >> Do<&C::SetAsReference, &C::UpdateGroup>,
        NRules::kSwitched >> sources,
        Changed(ZEL::Horizontal / Horizontal::Left, ZEL::Horizontal / Horizontal::Right) >> lines,
        // A row of its own: the axis follows the channels, as the time scale does before it.
        Changed(ZEL::XY / XY::SourceX) >> lines, NRules::kScreens >> lines,
        NRules::kMathematicsScreen >> sources);
    return rows;
}

std::array<CPgCursor::t_Pair, 3> CPgCursor::Pairs() const
{
    return {{{m_pX1, m_pX2, m_pDeltaX},
             {m_pY1, m_pY2, m_pDeltaY},
             {m_pLevelX1, m_pLevelX2, m_pDeltaLevelX}}};
}

KW_ZEL_CHANNEL CPgCursor::SecondTrace() const
{
    return m_pSecondSourceEnabled->Get() == eKW_ONOFF_ON ? m_pSecondSource->Get()
                                                         : m_pSource->Get();
}

/** The differences are still those from before the move. */
KW_ACCEPTANCE CPgCursor::MoveCoupled(const CDbPropBase* line)
{
    if (m_pCoupled->Get() == eKW_ONOFF_OFF)
    {
        return eKW_ACC_OK;
    }
    for (const t_Pair& pair : Pairs())
    {
        if (pair.delta->GetValidity() != eKW_VALIDITY_VALID)
        {
            continue; // no distance to keep
        }
        if (line == pair.first)
        {
            return NRules::MoveTogether(*pair.first, *pair.second, pair.delta->Get());
        }
        if (line == pair.second)
        {
            return NRules::MoveTogether(*pair.second, *pair.first, -pair.delta->Get());
        }
    }
    return eKW_ACC_OK;
}

void CPgCursor::UpdateSources()
{
    NRules::OfferSources(*m_pSource, NRules::eSOURCES_TRACES);
    NRules::OfferSources(*m_pSecondSource, NRules::eSOURCES_TRACES);
    KW_CHECKED(m_pSourceType->DbSet(NRules::TraceTypeOf(m_pSource->Get())));
}

void CPgCursor::LimitLines()
{
    const double left = At(ZEL::Horizontal / Horizontal::Left)->Get();
    const double right = At(ZEL::Horizontal / Horizontal::Right)->Get();
    const double step = At(ZEL::Horizontal / Horizontal::Position)->GetStep();
    for (CDbPropNumDouble* const line : {m_pX1, m_pX2})
    {
        NRules::SetLimits(*line, left, right);
        KW_CHECKED(line->SetStep(step));
    }
    KW_CHECKED(m_pReferenceX->SetStep(m_pX1->GetStep()));
    LimitLevel(*m_pY1, m_pSource->Get());
    LimitLevel(*m_pY2, SecondTrace());
    KW_CHECKED(m_pReferenceY->SetStep(m_pY1->GetStep()));
    for (CDbPropNumDouble* const line : {m_pLevelX1, m_pLevelX2})
    {
        LimitLevel(*line, At(ZEL::XY / XY::SourceX)->Get());
    }
}

void CPgCursor::LimitLevel(CDbPropNumDouble& line, KW_ZEL_CHANNEL trace)
{
    if (const auto screen = NRules::ScreenOf(*this, trace))
    {
        NRules::PutOnScreen(line, *screen);
    }
    else
    {
        KW_CHECKED(line.SetUnit(eKW_UNIT_NONE));
    }
}

void CPgCursor::UpdateReadout()
{
    const bool hasReference = m_pReferenceX->Get() > 0.0 || m_pReferenceY->Get() > 0.0;
    KW_CHECKED(m_pReadout->EnableValue(eKW_READOUT_PERCENT, hasReference));
    KW_CHECKED(m_pReadout->EnableValue(eKW_READOUT_DECIBEL, m_pReferenceY->Get() > 0.0));
    KW_CHECKED(m_pReadout->FollowWish(eKW_READOUT_VALUE));
}

void CPgCursor::UpdateDeltas()
{
    const bool hasDifference = HasLevelDifference();
    for (const t_Pair& pair : Pairs())
    {
        const bool isThere = hasDifference || pair.delta != m_pDeltaY;
        const double difference = NRules::Distance(pair.first->Get(), pair.second->Get());
        NRules::WriteResult(*pair.delta, isThere ? difference : NAN);
    }
    // Without a distance both are infinite: no results then.
    const double distance = m_pDeltaX->Get();
    const double rise = hasDifference ? m_pDeltaY->Get() : NAN;
    NRules::WriteResult(*m_pInverseDeltaX, distance != 0.0 ? 1.0 / std::fabs(distance) : NAN);
    NRules::WriteResult(*m_pSlope, distance != 0.0 ? rise / distance : NAN);
    UpdateUnits(hasDifference);
}

bool CPgCursor::HasLevelDifference() const
{
    const auto first = NRules::ScreenOf(*this, m_pSource->Get());
    const auto second = NRules::ScreenOf(*this, SecondTrace());
    return first && second && first->unit == second->unit;
}

void CPgCursor::UpdateUnits(bool hasDifference)
{
    const KW_UNIT level = hasDifference ? m_pY1->GetUnit() : eKW_UNIT_NOT_DEFINED;
    KW_CHECKED(m_pDeltaY->SetUnit(level));
    KW_CHECKED(m_pReferenceY->SetUnit(level));
    KW_CHECKED(m_pSlope->SetUnit(NUnits::PerSecond(level)));
    KW_CHECKED(m_pDeltaLevelX->SetUnit(m_pLevelX1->GetUnit()));
}

void CPgCursor::SetToScreen()
{
    constexpr double kTwoDivisions = 2.0;
    Spread(*m_pX1, *m_pX2, kTwoDivisions / NRules::kHorizontalDivisions);
    Spread(*m_pY1, *m_pY2, kTwoDivisions / NRules::kVerticalDivisions);
    Spread(*m_pLevelX1, *m_pLevelX2, kTwoDivisions / NRules::kVerticalDivisions);
}

void CPgCursor::SetAsReference()
{
    KW_CHECKED(m_pReferenceX->DbSet(std::fabs(m_pDeltaX->Get())));
    if (m_pDeltaY->GetValidity() == eKW_VALIDITY_VALID)
    {
        KW_CHECKED(m_pReferenceY->DbSet(std::fabs(m_pDeltaY->Get())));
    }
}
