// SPDX-License-Identifier: MIT
#include "Timebase/PgZoom.h"

#include "Analysis/PgCursor.h"
#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperHorizontal.h"
#include "Root/PgZEL.h"
#include "Rules/RuleHelpers.h"
#include "Timebase/PgHorizontal.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double kFinest = 1e5;
/** Points that a zoom shows at least, as far as the record has them. */
constexpr UINT32 kMinimumPoints = 50;
} // namespace

KW_ACCEPTANCE CPgZoom::OnPropertySet(const CDbPropBase* property)
{
    if (property == m_pScale || property == m_pPosition)
    {
        KW_CHECKED(m_pCoupleToCursor->DbSet(eKW_ONOFF_OFF));
    }
    UpdateGroup();
    return CPgZoomBase::OnPropertySet(property);
}

KW_ACCEPTANCE CPgZoom::OnFunction(const CDbFunction* function)
{
    if (function == m_pCenterOnTrigger)
    {
        KW_CHECKED(m_pCoupleToCursor->DbSet(eKW_ONOFF_OFF));
        const KW_ACCEPTANCE code = NRules::MoveTo(*m_pPosition, 0.0);
        UpdateGroup();
        return code;
    }
    return CPgZoomBase::OnFunction(function);
}

void CPgZoom::UpdateGroup()
{
    if (CPgZEL::Of(*this) != nullptr)
    {
        LimitScale();
        FollowCursors();
        LimitPosition();
        UpdateResults();
    }
}

void CPgZoom::OnTreeCreated()
{
    CPgZoomBase::OnTreeCreated();
    if (CPgZEL* const root = CPgZEL::Of(*this))
    {
        const CPgHorizontal* const main = root->GetPgHorizontal();
        root->GetDependencies().Add(
            *this,
            {main->GetPrScale(), main->GetPrLeft(), main->GetPrRight(), main->GetPrRecordLength(),
             main->GetPrInterpolationFactor()},
            [this] { UpdateGroup(); }, QStringLiteral("Zoom/Scale"));
        // An entry of its own: the cursors may follow the time base after the zoom has.
        const CPgCursor* const cursor = root->GetPgCursor();
        root->GetDependencies().Add(
            *this, {cursor->GetPrX1(), cursor->GetPrX2()}, [this] { UpdateGroup(); },
            QStringLiteral("Zoom/CoupleToCursor"));
    }
}

void CPgZoom::LimitScale()
{
    const double main = CPgZEL::Of(*this)->GetPgHorizontal()->GetPrScale()->Get();
    NRules::SetLimits(*m_pScale, main / kFinest, main);
}

void CPgZoom::FollowCursors()
{
    if (m_pCoupleToCursor->Get() == eKW_ONOFF_OFF)
    {
        return;
    }
    const CPgCursor* const cursor = CPgZEL::Of(*this)->GetPgCursor();
    const double first = cursor->GetPrX1()->Get();
    const double second = cursor->GetPrX2()->Get();
    NRules::MoveTo(*m_pScale, std::fabs(second - first) / NRules::kHorizontalDivisions);
    LimitPosition();
    NRules::MoveTo(*m_pPosition, (first + second) * 0.5);
}

void CPgZoom::LimitPosition()
{
    const CPgHorizontal* const main = CPgZEL::Of(*this)->GetPgHorizontal();
    const double half = NRules::ScreenWidth(m_pScale->Get()) * 0.5;
    const double left = main->GetPrLeft()->Get() + half;
    const double right = main->GetPrRight()->Get() - half;
    // Rounding may cross them where the zoom is as wide as the record.
    NRules::SetLimits(*m_pPosition, std::min(left, right), std::max(left, right));
    KW_CHECKED(m_pPosition->SetStep(NRules::StepOf(m_pScale->Get())));
}

void CPgZoom::UpdateResults()
{
    using t_Helper = CZELDatabaseHelperHorizontal;
    const CPgHorizontal* const main = CPgZEL::Of(*this)->GetPgHorizontal();
    const double factor = main->GetPrScale()->Get() / m_pScale->Get();
    double left = 0.0;
    double right = 0.0;
    t_Helper::CalculateHorizontalBoundariesZoom(NRules::ScreenWidth(m_pScale->Get()),
                                                m_pPosition->Get(), left, right);
    const UINT32 record = main->GetPrRecordLength()->Get();
    unsigned int points = 0;
    double interpolation = 1.0;
    t_Helper::CalculateZoomParameter(record, factor, main->GetPrInterpolationFactor()->Get(),
                                     std::min(record, kMinimumPoints), points, interpolation);
    KW_CHECKED(m_pFactor->DbSet(
        KWMath::Bound(m_pFactor->GetDeclaredMin(), factor, m_pFactor->GetDeclaredMax())));
    KW_CHECKED(m_pLeft->DbSet(left));
    KW_CHECKED(m_pRight->DbSet(right));
    KW_CHECKED(m_pPoints->DbSet(points));
    KW_CHECKED(m_pInterpolationFactor->DbSet(interpolation));
}
