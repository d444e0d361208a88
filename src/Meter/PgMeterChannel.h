// SPDX-License-Identifier: MIT
#pragma once

#include "Meter/PgMeterChannelBase.h"
#include "Rules/FunctionMemory.h"

#include <optional>

class CPgMeterMeasurement;
enum KW_UNIT : INT32;
enum KW_ZEL_METER_RANGE : INT32;

/** What the readings of a channel can be. */
struct t_MeterReadings
{
    double lowest;
    double highest;
    KW_UNIT atInput;                   ///< measured by the probe: volt or ampere
    std::optional<KW_UNIT> ofFunction; ///< of the multimeter's main reading; none for a voltmeter
};

/** What the meter's own settings say about the symbol beside a reading. */
struct t_MeterSymbols
{
    bool isMeasured;  ///< the meter's mode is that of the channel
    bool isAutomatic; ///< the range
    bool isHeld;
    double hazardous; ///< V, at which a voltage is not safe to touch
    double connected; ///< Ohm, up to which test leads count as connected; negative elsewhere
    bool isDiode;
};

/**
 * One channel of the meter. The user's range ends the automatic one; the limits stay in order; the
 * bar graph has the span of range, limits or reading. Range, reference and limits are those of the
 * present function. Reference and limits can be taken from the
 * latest main reading: eKW_ACC_NOTHING_TO_ACT_ON while there is none.
 */
class CPgMeterChannel : public CPgMeterChannelBase
{
public:
    using CPgMeterChannelBase::CPgMeterChannelBase;

    t_Couplings Rules() const override;

    /** The settings that belong to the function, and to the unit of its readings. */
    void FollowFunction(const NRules::t_FunctionPart& function, KW_UNIT unit);
    /** The multimeter's ranges in its present function; another range goes to the nearest. */
    void OfferRanges(KW_ZEL_METER_RANGE first, KW_ZEL_METER_RANGE last);
    /** Channels that have their range at the source. */
    void CloseRange();
    /** Recomputes limits, units and what is drawn; readings of another meaning are dropped. */
    void Follow(const t_MeterReadings& readings);
    void DropReadings();
    void ResetStatistics();
    void ShowSymbol(const t_MeterSymbols& symbols);
    /** The first of its measurements. */
    CPgMeterMeasurement& Main() const;

private:
    /** The user's range, also where it is the one that the automatic had found. */
    void EndAutoRange();
    void OrderLimits(const CDbPropBase* written);
    void JudgeReading();
    /** Recomputes what is derived from the latest main reading. */
    void UpdateReading();
    KW_ACCEPTANCE ReferenceFromReading();
    /** A share of the reading to either side. */
    KW_ACCEPTANCE LimitsFromReading();
    /** Invalid where an end can not be shown. */
    void UpdateBargraph();
};
