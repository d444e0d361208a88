// SPDX-License-Identifier: MIT
#include "Meter/PgMeterChannel.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsMeter.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsReadings.h"
#include "KWEnumerationsUnits.h"
#include "KWMath.h"
#include "Meter/PgMeterMeasurement.h"
#include "Meter/PgaMeterMeasurement.h"
#include "Names/MeterChannel.h"
#include "Names/MeterMeasurement.h"
#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"

#include <cmath>

using namespace NNames;

namespace
{
constexpr double kLimitShare = 0.1;
constexpr double kZoomShare = 0.1;
/** One press of a key moves a reference or limit by this share of the range. */
constexpr double kStepShare = 1e-3;
} // namespace

t_Couplings CPgMeterChannel::Rules() const
{
    using C = CPgMeterChannel;
    static constexpr auto rows = Table<Names>(
        On(Names::Range) >> Do<&C::EndAutoRange>, OnAny() >> Do<&C::OrderLimits, &C::UpdateReading>,
        On(Names::SetReference) >> Do<&C::ReferenceFromReading, &C::UpdateReading>,
        On(Names::SetLimits) >> Do<&C::LimitsFromReading>,
        On(Names::ResetStatistics) >> Do<&C::ResetStatistics>,
        Delivered(Names::MeterMeasurement / each / MeterMeasurement::Actual) >>
            Do<&C::UpdateReading>,
        Changed(Names::LowerLimit, Names::UpperLimit) >> Do<&C::JudgeReading>);
    return rows;
}

void CPgMeterChannel::EndAutoRange()
{
    KW_CHECKED(m_pAutoRange->DbSet(eKW_ZEL_METER_AUTORANGE_OFF));
}

void CPgMeterChannel::OrderLimits(const CDbPropBase* written)
{
    NRules::KeepOrdered(*m_pLowerLimit, *m_pUpperLimit, written);
}

void CPgMeterChannel::JudgeReading()
{
    Main().JudgeReading(m_pLowerLimit->Get(), m_pUpperLimit->Get());
}

void CPgMeterChannel::FollowFunction(const NRules::t_FunctionPart& function, KW_UNIT unit)
{
    NRules::FollowFunction(
        *m_pRememberedSettings, {function, {GetStaticEnumNameInfo<KW_UNIT>(), unit}},
        {m_pAutoRange, m_pRange, m_pRelativeEnabled, m_pReference, m_pLimitCheckEnabled,
         m_pLowerLimit, m_pUpperLimit, Main().GetPrResultType()});
    OrderLimits(nullptr);
}

void CPgMeterChannel::OfferRanges(KW_ZEL_METER_RANGE first, KW_ZEL_METER_RANGE last)
{
    NRules::OfferValues(
        *m_pRange,
        [first, last](KW_ZEL_METER_RANGE range) { return range >= first && range <= last; },
        std::optional(KWMath::Bound(first, m_pRange->Get(), last)));
}

void CPgMeterChannel::CloseRange()
{
    NRules::SetAvailable({m_pAutoRange, m_pRange}, false);
}

void CPgMeterChannel::Follow(const t_MeterReadings& readings)
{
    const bool isOtherRange = m_pRangeLowerLimit->Get() != readings.lowest ||
                              m_pRangeUpperLimit->Get() != readings.highest;
    KW_CHECKED(m_pRangeLowerLimit->DbSet(readings.lowest));
    KW_CHECKED(m_pRangeUpperLimit->DbSet(readings.highest));
    const double step =
        NRules::RoundStep(std::max(-readings.lowest, readings.highest) * kStepShare);
    for (CDbPropNumDouble* const setting : {m_pReference, m_pLowerLimit, m_pUpperLimit})
    {
        KW_CHECKED(setting->SetStep(step));
    }
    for (INT32 i = 0; i < m_pMeterMeasurement->GetCount(); ++i)
    {
        const bool isOfFunction = i == 0 && readings.ofFunction.has_value();
        m_pMeterMeasurement->ItemDirect(i)->Follow(
            readings.atInput, isOfFunction ? readings.ofFunction : std::nullopt);
    }
    if (isOtherRange)
    {
        DropReadings();
    }
    UpdateReading();
}

void CPgMeterChannel::DropReadings()
{
    for (INT32 i = 0; i < m_pMeterMeasurement->GetCount(); ++i)
    {
        m_pMeterMeasurement->ItemDirect(i)->DropReadings();
    }
}

void CPgMeterChannel::ResetStatistics()
{
    for (INT32 i = 0; i < m_pMeterMeasurement->GetCount(); ++i)
    {
        m_pMeterMeasurement->ItemDirect(i)->ResetStatistics();
    }
}

void CPgMeterChannel::UpdateReading()
{
    NRules::WriteDifference(*Main().GetPrRelative(), *Main().GetPrActual(), m_pReference->Get());
    UpdateBargraph();
}

CPgMeterMeasurement& CPgMeterChannel::Main() const
{
    return *m_pMeterMeasurement->ItemDirect(0);
}

KW_ACCEPTANCE CPgMeterChannel::ReferenceFromReading()
{
    return NRules::TakeReading(*m_pReference, *Main().GetPrActual());
}

KW_ACCEPTANCE CPgMeterChannel::LimitsFromReading()
{
    const CDbPropNumDouble& reading = *Main().GetPrActual();
    if (reading.GetValidity() != eKW_VALIDITY_VALID)
    {
        return eKW_ACC_NOTHING_TO_ACT_ON;
    }
    const double distance = kLimitShare * std::fabs(reading.Get());
    const KW_ACCEPTANCE lower = NRules::MoveTo(*m_pLowerLimit, reading.Get() - distance);
    return std::max(lower, NRules::MoveTo(*m_pUpperLimit, reading.Get() + distance));
}

void CPgMeterChannel::ShowSymbol(const t_MeterSymbols& symbols)
{
    const CDbPropNumDouble& reading = *Main().GetPrActual();
    const bool isValid = reading.GetValidity() == eKW_VALIDITY_VALID;
    const bool isVoltage = Main().GetPrUnit()->GetValidity() == eKW_VALIDITY_VALID &&
                           Main().GetPrUnit()->Get() == eKW_ZEL_DMM_UNIT_VOLT;
    const KW_ZEL_METER_RESULT_TYPE shown = Main().GetPrResultType()->Get();
    const std::pair<KW_ZEL_DMM_STATUS_ICON_TYPE, bool> all[] = {
        {eKW_ZEL_DMM_STATUS_ICON_TYPE_AUTO_RANGE, symbols.isAutomatic},
        {eKW_ZEL_DMM_STATUS_ICON_TYPE_HOLD, symbols.isHeld},
        {eKW_ZEL_DMM_STATUS_ICON_TYPE_RELATIVE,
         m_pRelativeEnabled->Get() == eKW_ONOFF_ON || shown == eKW_ZEL_METER_RESULT_TYPE_RELATIVE},
        {eKW_ZEL_DMM_STATUS_ICON_TYPE_MIN_MAX,
         shown == eKW_ZEL_METER_RESULT_TYPE_MINIMUM || shown == eKW_ZEL_METER_RESULT_TYPE_MAXIMUM},
        {eKW_ZEL_DMM_STATUS_ICON_TYPE_OVERLOAD,
         Main().GetPrStatus()->Get() == eKW_ZEL_METER_STATUS_OVERLOAD},
        {eKW_ZEL_DMM_STATUS_ICON_TYPE_HAZARDOUS_VOLTAGE,
         isValid && isVoltage && std::fabs(reading.Get()) > symbols.hazardous},
        {eKW_ZEL_DMM_STATUS_ICON_TYPE_CONTINUITY, isValid && reading.Get() <= symbols.connected},
        {eKW_ZEL_DMM_STATUS_ICON_TYPE_DIODE, isValid && symbols.isDiode},
        {eKW_ZEL_DMM_STATUS_ICON_TYPE_LIMIT_VIOLATED,
         m_pLimitCheckEnabled->Get() == eKW_ONOFF_ON &&
             Main().GetPrLimit()->Get() != eKW_ZEL_LIMIT_INSIDE}};
    KW_ZEL_DMM_STATUS_ICON_TYPE last = eKW_ZEL_DMM_STATUS_ICON_TYPE_NONE;
    for (const auto& [icon, applies] : all)
    {
        const bool isShown = symbols.isMeasured && m_pEnabled->Get() == eKW_ONOFF_ON;
        last = isShown && applies ? icon : last;
    }
    KW_CHECKED(m_pStatusIcon->DbSet(last));
}

void CPgMeterChannel::UpdateBargraph()
{
    double lower = m_pRangeLowerLimit->Get();
    double upper = m_pRangeUpperLimit->Get();
    switch (m_pBargraphRange->Get())
    {
    case eKW_ZEL_METER_BARGRAPH_RANGE_ZERO_CENTER:
        lower = -upper;
        break;
    case eKW_ZEL_METER_BARGRAPH_RANGE_ZOOM:
    {
        const CDbPropNumDouble& reading = *Main().GetPrActual();
        const bool isValid = reading.GetValidity() == eKW_VALIDITY_VALID;
        const double middle = isValid ? reading.Get() : 0.5 * (lower + upper);
        const double half = 0.5 * kZoomShare * (upper - lower);
        lower = middle - half;
        upper = middle + half;
        break;
    }
    case eKW_ZEL_METER_BARGRAPH_RANGE_LIMITS:
        lower = m_pLowerLimit->Get();
        upper = m_pUpperLimit->Get();
        break;
    default:
        break;
    }
    NRules::WriteResult(*m_pBargraphLowerEnd, lower);
    NRules::WriteResult(*m_pBargraphUpperEnd, upper);
}
