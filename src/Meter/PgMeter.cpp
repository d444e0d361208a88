// SPDX-License-Identifier: MIT
#include "Meter/PgMeter.h"

#include "Channels/PgChannel.h"
#include "Channels/PgVertical.h"
#include "Channels/PgaChannel.h"
#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "KWEnumerationsMeter.h"
#include "KWEnumerationsUnits.h"
#include "KWEnumerationsVertical.h"
#include "Meter/PgaMeterChannel.h"
#include "Meter/PgaMeterSourceChannel.h"
#include "MeterBase/MeterMeasurementBaseData.h"
#include "Root/PgZEL.h"
#include "Rules/NumberRules.h"
#include "Rules/ReadingRules.h"

namespace
{
constexpr INT32 kInputs = 4;

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

/** The function of a group of the user interface, with `coupling` where it has a choice. */
KW_ZEL_DMM_METER_TYPE MeterTypeOf(KW_ZEL_METER_MEAS_TYPE_GUI gui, KW_ZEL_DMM_MEAS_TYPE coupling)
{
    INT32 type = 0;
    while (kFunctions[type].gui != gui ||
           (HasCoupling(kFunctions[type]) && kFunctions[type].measType != coupling))
    {
        ++type;
    }
    return static_cast<KW_ZEL_DMM_METER_TYPE>(type);
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

KW_ACCEPTANCE CPgMeter::OnPropertySet(const CDbPropBase* property)
{
    if (property == m_pMeasTypeGUI)
    {
        KW_CHECKED(m_pMeterType->DbSet(MeterTypeOf(m_pMeasTypeGUI->Get(), m_pCoupling->Get())));
    }
    if (property == m_pProbeType || property == m_pTestMode)
    {
        m_pMeterChannel->ItemDirect(eKW_ZEL_METER_CHANNEL_DMM)->DropReadings();
    }
    UpdateGroup();
    return CPgMeterBase::OnPropertySet(property);
}

KW_ACCEPTANCE CPgMeter::OnFunction(const CDbFunction* function)
{
    for (INT32 i = 0; function == m_pResetStatistics && i < m_pMeterChannel->GetCount(); ++i)
    {
        m_pMeterChannel->ItemDirect(i)->ResetStatistics();
    }
    return CPgMeterBase::OnFunction(function);
}

void CPgMeter::UpdateGroup()
{
    const bool isMultimeter = m_pMode->Get() == eKW_ZEL_METER_MODE_DMM;
    NRules::OfferValues(*m_pSelectedChannel, [isMultimeter](KW_ZEL_METER_CHANNEL channel)
                        { return (channel == eKW_ZEL_METER_CHANNEL_DMM) == isMultimeter; });
    SelectFunction();
    UpdateProbe();
    UpdatePath();
    UpdateMultimeterChannel();
    UpdateInputChannels();
}

std::vector<CDbPropertyGroup::t_Twins> CPgMeter::GetTwins() const
{
    return {{m_pMeterType, m_pMeasTypeGUI}};
}

void CPgMeter::OnTreeCreated()
{
    CPgMeterBase::OnTreeCreated();
    CPgZEL* const root = CPgZEL::Of(*this);
    for (INT32 i = 0; root != nullptr && i < kInputs; ++i)
    {
        const CPgChannel* const channel = root->GetPgVertical()->GetPgChannel()->ItemDirect(i);
        root->GetDependencies().Add(
            *this, {channel->GetPrProbeFactor(), channel->GetPrProbeUnit()},
            [this] { UpdateInputChannels(); }, QStringLiteral("Meter/RangeUpperLimit"));
    }
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
    const CPgZEL* const root = CPgZEL::Of(*this);
    for (INT32 i = 0; root != nullptr && i < kInputs; ++i)
    {
        const CPgChannel* const input = root->GetPgVertical()->GetPgChannel()->ItemDirect(i);
        const double highest = m_pMeterSourceChannel->ItemDirect(i)->GetPrRange()->Get() *
                               input->GetPrProbeFactor()->Get();
        m_pMeterChannel->ItemDirect(i)->Follow({.lowest = -highest,
                                                .highest = highest,
                                                .atInput = input->GetPrProbeUnit()->Get(),
                                                .ofFunction = std::nullopt});
    }
}
