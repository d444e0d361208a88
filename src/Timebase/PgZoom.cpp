// SPDX-License-Identifier: MIT
#include "Timebase/PgZoom.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperHorizontal.h"
#include "KWEnumerationsOnOff.h"
#include "Names/Cursor.h"
#include "Names/Horizontal.h"
#include "Names/ZEL.h"
#include "Names/Zoom.h"
#include "Rules/NumberRules.h"

#include <algorithm>
#include <cmath>

using namespace NNames;

namespace
{
constexpr double kFinest = 1e5;
/** Points that a zoom shows at least, as far as the record has them. */
constexpr UINT32 kMinimumPoints = 50;
} // namespace

t_Couplings CPgZoom::Rules() const
{
    using Z = CPgZoom;
    static constexpr auto zoomed =
        Derive<&Z::LimitScale, &Z::FollowCursors, &Z::LimitPosition, &Z::UpdateResults>;
    static constexpr auto rows = Table<Names>(
        On(Names::Scale, Names::Position) >> Do<&Z::EndCoupling>, OnAny() >> zoomed,
        On(Names::CenterOnTrigger) >> Do<&Z::EndCoupling, &Z::CenterOnTrigger, &Z::UpdateGroup>,
        Changed(ZEL::Horizontal / Horizontal::Scale, ZEL::Horizontal / Horizontal::Left,
                ZEL::Horizontal / Horizontal::Right, ZEL::Horizontal / Horizontal::RecordLength,
                ZEL::Horizontal / Horizontal::InterpolationFactor) >>
            zoomed,
        // A row of its own: the cursors may follow the timebase after the zoom has.
        Changed(ZEL::Cursor / Cursor::X1, ZEL::Cursor / Cursor::X2) >>
            Derive<&Z::FollowCursors, &Z::UpdateResults>);
    return rows;
}

void CPgZoom::EndCoupling()
{
    KW_CHECKED(m_pCoupleToCursor->DbSet(eKW_ONOFF_OFF));
}

KW_ACCEPTANCE CPgZoom::CenterOnTrigger()
{
    return NRules::MoveTo(*m_pPosition, 0.0);
}

void CPgZoom::LimitScale()
{
    const double main = At(ZEL::Horizontal / Horizontal::Scale)->Get();
    NRules::SetLimits(*m_pScale, main / kFinest, main);
}

void CPgZoom::FollowCursors()
{
    if (m_pCoupleToCursor->Get() == eKW_ONOFF_OFF)
    {
        return;
    }
    const double first = At(ZEL::Cursor / Cursor::X1)->Get();
    const double second = At(ZEL::Cursor / Cursor::X2)->Get();
    NRules::MoveTo(*m_pScale, std::fabs(second - first) / NRules::kHorizontalDivisions);
    LimitPosition();
    NRules::MoveTo(*m_pPosition, (first + second) * 0.5);
}

void CPgZoom::LimitPosition()
{
    const double half = NRules::ScreenWidth(m_pScale->Get()) * 0.5;
    const double left = At(ZEL::Horizontal / Horizontal::Left)->Get() + half;
    const double right = At(ZEL::Horizontal / Horizontal::Right)->Get() - half;
    // Rounding may cross them where the zoom is as wide as the record.
    NRules::SetLimits(*m_pPosition, std::min(left, right), std::max(left, right));
    KW_CHECKED(m_pPosition->SetStep(NRules::StepOf(m_pScale->Get())));
}

void CPgZoom::UpdateResults()
{
    using t_Helper = CZELDatabaseHelperHorizontal;
    const double factor = At(ZEL::Horizontal / Horizontal::Scale)->Get() / m_pScale->Get();
    double left = 0.0;
    double right = 0.0;
    t_Helper::CalculateHorizontalBoundariesZoom(NRules::ScreenWidth(m_pScale->Get()),
                                                m_pPosition->Get(), left, right);
    const UINT32 record = At(ZEL::Horizontal / Horizontal::RecordLength)->Get();
    unsigned int points = 0;
    double interpolation = 1.0;
    t_Helper::CalculateZoomParameter(record, factor,
                                     At(ZEL::Horizontal / Horizontal::InterpolationFactor)->Get(),
                                     std::min(record, kMinimumPoints), points, interpolation);
    KW_CHECKED(m_pFactor->DbSet(
        KWMath::Bound(m_pFactor->GetDeclaredMin(), factor, m_pFactor->GetDeclaredMax())));
    KW_CHECKED(m_pLeft->DbSet(left));
    KW_CHECKED(m_pRight->DbSet(right));
    KW_CHECKED(m_pPoints->DbSet(points));
    KW_CHECKED(m_pInterpolationFactor->DbSet(interpolation));
}
