// SPDX-License-Identifier: MIT
#include "Meter/PgMeter.h"

#include "CommonDatabase/Couplings/DbRules.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "KWEnumerationsMeter.h"
#include "KWEnumerationsUnits.h"
#include "KWEnumerationsVertical.h"
#include "Meter/PgMeterMeasurement.h"
#include "Meter/PgaMeterChannel.h"
#include "Meter/PgaMeterSourceChannel.h"
#include "MeterBase/MeterMeasurementBaseData.h"
#include "Names/Meter.h"
#include "Names/MeterChannel.h"
#include "Names/MeterMeasurement.h"
#include "Names/MeterSourceChannel.h"
#include "Rules/FunctionMemory.h"
#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"

#include <algorithm>
#include <iterator>
#include <limits>

using namespace NNames;

namespace
{
constexpr UINT32 Bit(KW_ZEL_DMM_PROBE_TYPE kind)
{
    return 1U << kind;
}

constexpr UINT32 kVoltage = Bit(eKW_ZEL_DMM_PROBE_TYPE_VOLTAGE);
constexpr UINT32 kCurrent = Bit(eKW_ZEL_DMM_PROBE_TYPE_CURRENT);
constexpr UINT32 kUser = Bit(eKW_ZEL_DMM_PROBE_TYPE_USER);
constexpr UINT32 kThermometers =
    Bit(eKW_ZEL_DMM_PROBE_TYPE_TEMPERATURE) | Bit(eKW_ZEL_DMM_PROBE_TYPE_RTD);
/** Only plain test leads carry the test current back and forth. */
constexpr UINT32 kTestLeads = 0;

/** V that are not safe to touch in dry surroundings (IEC 61010-1): direct, and RMS. */
constexpr double kHazardousDc = 60.0;
constexpr double kHazardousAc = 30.0;
/** Below any resistance. */
constexpr double kNothingConnected = -std::numeric_limits<double>::infinity();

struct t_Function
{
    KW_ZEL_METER_MEAS_TYPE_GUI gui;
    KW_ZEL_DMM_MEAS_TYPE measType;
    UINT32 probes;
};

/** In the order of KW_ZEL_DMM_METER_TYPE. */
constexpr t_Function kFunctions[] = {
    {eKW_ZEL_METER_MEAS_TYPE_GUI_VOLTAGE, eKW_ZEL_DMM_MEAS_TYPE_AC_VOLT, kVoltage | kUser},
    {eKW_ZEL_METER_MEAS_TYPE_GUI_VOLTAGE, eKW_ZEL_DMM_MEAS_TYPE_DC_VOLT, kVoltage | kUser},
    {eKW_ZEL_METER_MEAS_TYPE_GUI_VOLTAGE, eKW_ZEL_DMM_MEAS_TYPE_AD_VOLT, kVoltage | kUser},
    {eKW_ZEL_METER_MEAS_TYPE_GUI_CURRENT, eKW_ZEL_DMM_MEAS_TYPE_AC_VOLT, kCurrent | kUser},
    {eKW_ZEL_METER_MEAS_TYPE_GUI_CURRENT, eKW_ZEL_DMM_MEAS_TYPE_DC_VOLT, kCurrent | kUser},
    {eKW_ZEL_METER_MEAS_TYPE_GUI_CURRENT, eKW_ZEL_DMM_MEAS_TYPE_AD_VOLT, kCurrent | kUser},
    {eKW_ZEL_METER_MEAS_TYPE_GUI_RESISTANCE, eKW_ZEL_DMM_MEAS_TYPE_OHM, kTestLeads},
    {eKW_ZEL_METER_MEAS_TYPE_GUI_CAPACITANCE, eKW_ZEL_DMM_MEAS_TYPE_CAPACITY, kTestLeads},
    {eKW_ZEL_METER_MEAS_TYPE_GUI_FREQUENCY, eKW_ZEL_DMM_MEAS_TYPE_FREQ,
     kVoltage | kCurrent | kUser},
    {eKW_ZEL_METER_MEAS_TYPE_GUI_DIODE, eKW_ZEL_DMM_MEAS_TYPE_DIODE, kTestLeads},
    {eKW_ZEL_METER_MEAS_TYPE_GUI_CONTINUITY, eKW_ZEL_DMM_MEAS_TYPE_CONTINUITY, kTestLeads},
    {eKW_ZEL_METER_MEAS_TYPE_GUI_TEMPERATURE, eKW_ZEL_DMM_MEAS_TYPE_TEMP, kThermometers}};

bool HasCoupling(const t_Function& function)
{
    return function.gui == eKW_ZEL_METER_MEAS_TYPE_GUI_VOLTAGE ||
           function.gui == eKW_ZEL_METER_MEAS_TYPE_GUI_CURRENT;
}

/** The function of a group of the user interface, with `coupling` where it has a choice: the first
    one when that is none of a voltage. */
KW_ZEL_DMM_METER_TYPE MeterTypeOf(KW_ZEL_METER_MEAS_TYPE_GUI gui, KW_ZEL_DMM_MEAS_TYPE coupling)
{
    const auto find = [gui](auto fits)
    {
        return std::find_if(std::begin(kFunctions), std::end(kFunctions),
                            [gui, fits](const t_Function& function)
                            { return function.gui == gui && fits(function); });
    };
    const t_Function* found =
        find([coupling](const t_Function& function)
             { return !HasCoupling(function) || function.measType == coupling; });
    found = found != std::end(kFunctions) ? found : find([](const t_Function&) { return true; });
    return static_cast<KW_ZEL_DMM_METER_TYPE>(found - std::begin(kFunctions));
}

KW_ZEL_DMM_PROBE_TYPE KindOf(KW_PROBE_TYPE probe)
{
    return probe <= eKW_PROBE_TYPE_VOLTAGE_1000_TO_1            ? eKW_ZEL_DMM_PROBE_TYPE_VOLTAGE
           : probe <= eKW_PROBE_TYPE_CURRENT_1_MV_PER_A         ? eKW_ZEL_DMM_PROBE_TYPE_CURRENT
           : probe <= eKW_PROBE_TYPE_TEMPERATURE_1_MV_PER_DEG_F ? eKW_ZEL_DMM_PROBE_TYPE_TEMPERATURE
           : probe <= eKW_PROBE_TYPE_PT1000                     ? eKW_ZEL_DMM_PROBE_TYPE_RTD
                                                                : eKW_ZEL_DMM_PROBE_TYPE_USER;
}

bool IsUsable(KW_PROBE_TYPE probe, const t_Function& function)
{
    if (function.probes == kTestLeads)
    {
        return probe == eKW_PROBE_TYPE_VOLTAGE_1_TO_1;
    }
    return probe != eKW_PROBE_TYPE_6 && (function.probes & Bit(KindOf(probe))) != 0;
}

KW_ZEL_DMM_INPUT_TYPE InputOf(const t_Function& function, KW_ZEL_DMM_PROBE_TYPE probe,
                              KW_ZEL_DMM_TESTMODE testMode)
{
    if (testMode == eKW_ZEL_DMM_TESTMODE_ZERO || testMode == eKW_ZEL_DMM_TESTMODE_REFERENCE)
    {
        return testMode == eKW_ZEL_DMM_TESTMODE_ZERO ? eKW_ZEL_DMM_INPUT_TYPE_SHORT
                                                     : eKW_ZEL_DMM_INPUT_TYPE_REFERENCE;
    }
    const bool drivesCurrent = function.probes == kTestLeads || probe == eKW_ZEL_DMM_PROBE_TYPE_RTD;
    return drivesCurrent ? eKW_ZEL_DMM_INPUT_TYPE_SOURCE : eKW_ZEL_DMM_INPUT_TYPE_VOLTAGE;
}

t_RangeSettings RangeSettings(KW_ZEL_DMM_MEAS_TYPE type, KW_ZEL_METER_RANGE range)
{
    return CMeterMeasurementBaseData().GetRangeSettings(
        type, CMeterMeasurementBaseData::GetRangeAsDoubleValue(range));
}
} // namespace

t_Couplings CPgMeter::Rules() const
{
    using M = CPgMeter;
    using C = MeterChannel;
    using R = MeterMeasurement;
    static constexpr auto everything =
        Derive<&M::OfferChannels, &M::SelectFunction, &M::FollowFunction, &M::UpdateProbe,
               &M::FollowFunctions, &M::UpdatePath, &M::UpdateMultimeterChannel,
               &M::UpdateInputChannels>;
    static constexpr auto channel = Names::MeterChannel / each;
    static constexpr auto reading = channel / C::MeterMeasurement / each;
    static constexpr auto rows = Table<Names>(
        On(Names::MeasTypeGUI) >> Do<&M::FunctionFromGui>, OnAny() >> everything,
        On(channel / C::Range, reading / R::Type,
           Names::MeterSourceChannel / each / MeterSourceChannel::Range) >>
            Derive<&M::FollowFunctions, &M::UpdatePath, &M::UpdateMultimeterChannel,
                   &M::UpdateInputChannels>,
        On(Names::ResetStatistics) >> Do<&M::ResetStatistics>,
        CPgMeterSourceChannel::kOtherProbe >> Derive<&M::FollowFunctions, &M::UpdateInputChannels>,
        Changed(Names::MeterType, Names::ProbeType, Names::TestMode) >>
            Do<&M::DropMultimeterReadings>,
        Changed(channel / C::AutoRange, channel / C::Range, channel / C::RelativeEnabled,
                channel / C::Reference, channel / C::LimitCheckEnabled, channel / C::LowerLimit,
                channel / C::UpperLimit, reading / R::ResultType) >>
            Do<&M::FollowFunctions>,
        // Behind all that decides what the symbols show.
        Changed(Names::Mode, Names::MeterType, Names::TriggerMode, Names::ContinuityThreshold,
                Names::MeterSourceChannel / each / MeterSourceChannel::AutoRange,
                channel / C::Enabled, channel / C::AutoRange, channel / C::RelativeEnabled,
                channel / C::LimitCheckEnabled, reading / R::ResultType, reading / R::Actual,
                reading / R::Unit, reading / R::Status, reading / R::Limit) >>
            Derive<&M::ShowSymbols>,
        Twins(Names::MeterType, Names::MeasTypeGUI));
    return rows;
}

void CPgMeter::FunctionFromGui()
{
    KW_CHECKED(m_pMeterType->DbSet(MeterTypeOf(m_pMeasTypeGUI->Get(), m_pCoupling->Get())));
}

void CPgMeter::FollowFunction()
{
    NRules::FollowFunction(*m_pRememberedSettings,
                           {{m_pMeterType->GetNameInfo(), m_pMeterType->Get()}},
                           {m_pProbeType, m_pProbeUserFactor, m_pProbeUserUnit});
}

void CPgMeter::FollowFunctions()
{
    KW_UNIT unit = eKW_UNIT_NONE;
    ProbeInUse(unit);
    m_pMeterChannel->ItemDirect(eKW_ZEL_METER_CHANNEL_DMM)
        ->FollowFunction({m_pMeterType->GetNameInfo(), m_pMeterType->Get()}, unit);
    for (INT32 i = 0; i < m_pMeterSourceChannel->GetCount(); ++i)
    {
        CPgMeterChannel* const channel = m_pMeterChannel->ItemDirect(i);
        const auto* const type = channel->Main().GetPrType();
        channel->FollowFunction(
            {type->GetNameInfo(), type->Get()},
            channel->Main().UnitOfQuantity(m_pMeterSourceChannel->ItemDirect(i)->Input().unit));
    }
}

void CPgMeter::DropMultimeterReadings()
{
    m_pMeterChannel->ItemDirect(eKW_ZEL_METER_CHANNEL_DMM)->DropReadings();
}

void CPgMeter::ResetStatistics()
{
    for (INT32 i = 0; i < m_pMeterChannel->GetCount(); ++i)
    {
        m_pMeterChannel->ItemDirect(i)->ResetStatistics();
    }
}

void CPgMeter::OfferChannels()
{
    const bool isMultimeter = m_pMode->Get() == eKW_ZEL_METER_MODE_DMM;
    NRules::OfferValues(*m_pSelectedChannel, [isMultimeter](KW_ZEL_METER_CHANNEL channel)
                        { return (channel == eKW_ZEL_METER_CHANNEL_DMM) == isMultimeter; });
}

void CPgMeter::SelectFunction()
{
    const t_Function& function = kFunctions[m_pMeterType->Get()];
    KW_CHECKED(m_pMeasTypeGUI->DbSet(function.gui));
    KW_CHECKED(m_pMeasType->DbSet(function.measType));
    if (HasCoupling(function))
    {
        KW_CHECKED(m_pCoupling->DbSet(function.measType));
    }
}

double CPgMeter::ProbeInUse(KW_UNIT& unitOfReading) const
{
    return CZELDatabaseHelperCommon::GetProbeSettingsDmm(
               m_pMeasType->Get(),
               {m_pProbeType->Get(), m_pProbeUserFactor->Get(), m_pProbeUserUnit->Get()},
               unitOfReading)
        .factor;
}

void CPgMeter::UpdateProbe()
{
    const t_Function& function = kFunctions[m_pMeterType->Get()];
    NRules::OfferValues(*m_pProbeType,
                        [&function](KW_PROBE_TYPE probe) { return IsUsable(probe, function); });
    const bool noAmperes = function.gui == eKW_ZEL_METER_MEAS_TYPE_GUI_VOLTAGE;
    const bool noVolts = function.gui == eKW_ZEL_METER_MEAS_TYPE_GUI_CURRENT;
    NRules::OfferValues(*m_pProbeUserUnit,
                        [noAmperes, noVolts](KW_UNIT unit) {
                            return (unit == eKW_UNIT_LEVEL_V && !noVolts) ||
                                   (unit == eKW_UNIT_LEVEL_A && !noAmperes);
                        });
    KW_UNIT unit = eKW_UNIT_NONE;
    KW_CHECKED(m_pProbeKind->DbSet(KindOf(m_pProbeType->Get())));
    KW_CHECKED(m_pProbeFactor->DbSet(ProbeInUse(unit)));
}

void CPgMeter::UpdatePath()
{
    const KW_ZEL_DMM_MEAS_TYPE type = m_pMeasType->Get();
    const auto block = CMeterMeasurementBaseData().GetMeasurementBlocks().at(type);
    const auto ranges = block->GetRangeTable();
    CPgMeterChannel* const channel = m_pMeterChannel->ItemDirect(eKW_ZEL_METER_CHANNEL_DMM);
    channel->OfferRanges(ranges.begin()->first, ranges.rbegin()->first);
    const KW_ZEL_DMM_INPUT_TYPE input =
        InputOf(kFunctions[m_pMeterType->Get()], m_pProbeKind->Get(), m_pTestMode->Get());
    KW_CHECKED(m_pAdcPath->DbSetAsInt(block->GetMeasurementSettings().second));
    KW_CHECKED(m_pInputType->DbSet(input));
    KW_CHECKED(
        m_pTestCurrent->DbSet(input == eKW_ZEL_DMM_INPUT_TYPE_SOURCE
                                  ? RangeSettings(type, channel->GetPrRange()->Get()).currentSource
                                  : eKW_ZEL_DMM_CURRENT_NONE));
}

void CPgMeter::UpdateMultimeterChannel()
{
    const KW_ZEL_DMM_MEAS_TYPE type = m_pMeasType->Get();
    CPgMeterChannel* const channel = m_pMeterChannel->ItemDirect(eKW_ZEL_METER_CHANNEL_DMM);
    const t_RangeSettings range = RangeSettings(type, channel->GetPrRange()->Get());
    KW_UNIT unit = eKW_UNIT_NONE;
    ProbeInUse(unit);
    // The limits of a frequency are hertz: the probe at its input does not change them.
    const double factor = type == eKW_ZEL_DMM_MEAS_TYPE_FREQ ? 1.0 : m_pProbeFactor->Get();
    const bool isCurrent = m_pProbeKind->Get() == eKW_ZEL_DMM_PROBE_TYPE_CURRENT ||
                           (m_pProbeKind->Get() == eKW_ZEL_DMM_PROBE_TYPE_USER &&
                            m_pProbeUserUnit->Get() == eKW_UNIT_LEVEL_A);
    channel->Follow({.lowest = range.lowerLimit * factor,
                     .highest = range.upperLimit * factor,
                     .atInput = isCurrent ? eKW_UNIT_LEVEL_A : eKW_UNIT_LEVEL_V,
                     .ofFunction = unit});
}

void CPgMeter::UpdateInputChannels()
{
    for (INT32 i = 0; i < m_pMeterSourceChannel->GetCount(); ++i)
    {
        const t_MeterInput input = m_pMeterSourceChannel->ItemDirect(i)->Input();
        m_pMeterChannel->ItemDirect(i)->CloseRange();
        m_pMeterChannel->ItemDirect(i)->Follow({.lowest = -input.highest,
                                                .highest = input.highest,
                                                .atInput = input.unit,
                                                .ofFunction = std::nullopt});
    }
}

void CPgMeter::ShowSymbols()
{
    const KW_ZEL_DMM_METER_TYPE type = m_pMeterType->Get();
    const bool isMultimeter = m_pMode->Get() == eKW_ZEL_METER_MODE_DMM;
    const bool isHeld = m_pTriggerMode->Get() == eKW_ZEL_METER_TRIGGER_MODE_AUTO_HOLD;
    CPgMeterChannel* const multimeter = m_pMeterChannel->ItemDirect(eKW_ZEL_METER_CHANNEL_DMM);
    multimeter->ShowSymbol(
        {.isMeasured = isMultimeter,
         .isAutomatic = multimeter->GetPrAutoRange()->Get() == eKW_ZEL_METER_AUTORANGE_ON,
         .isHeld = isHeld,
         .hazardous = type == eKW_ZEL_DMM_METER_TYPE_DC_VOLT ? kHazardousDc : kHazardousAc,
         .connected = type == eKW_ZEL_DMM_METER_TYPE_CONTINUITY ? m_pContinuityThreshold->Get()
                                                                : kNothingConnected,
         .isDiode = type == eKW_ZEL_DMM_METER_TYPE_DIODE});
    for (INT32 i = 0; i < m_pMeterSourceChannel->GetCount(); ++i)
    {
        CPgMeterChannel* const channel = m_pMeterChannel->ItemDirect(i);
        const auto* const source = m_pMeterSourceChannel->ItemDirect(i);
        const bool isDc = channel->Main().GetPrType()->Get() == eKW_ZEL_METER_TYPE_DC;
        channel->ShowSymbol(
            {.isMeasured = !isMultimeter,
             .isAutomatic = source->GetPrAutoRange()->Get() == eKW_ZEL_METER_AUTORANGE_ON,
             .isHeld = isHeld,
             .hazardous = isDc ? kHazardousDc : kHazardousAc,
             .connected = kNothingConnected,
             .isDiode = false});
    }
}
