// SPDX-License-Identifier: MIT
#pragma once

#include "Meter/PgMeterChannelBase.h"

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

/**
 * One channel of the meter. The user's range ends the automatic one; the limits stay in order; the
 * bar graph has the span of range, limits or reading. Reference and limits can be taken from the
 * latest main reading: eKW_ACC_NOTHING_TO_ACT_ON while there is none.
 */
class CPgMeterChannel : public CPgMeterChannelBase
{
public:
    using CPgMeterChannelBase::CPgMeterChannelBase;

    t_Couplings Rules() const override;

    /** The multimeter's ranges in its present function; the present range goes to the nearest. */
    void OfferRanges(KW_ZEL_METER_RANGE first, KW_ZEL_METER_RANGE last);
    /** Recomputes limits, units and what is drawn; readings of another meaning are dropped. */
    void Follow(const t_MeterReadings& readings);
    void DropReadings();
    void ResetStatistics();

private:
    /** The first of its measurements. */
    CPgMeterMeasurement& Main() const;
    /** The user's range, also where it is the one that the automatic had found. */
    void EndAutoRange();
    void OrderLimits(const CDbPropBase* written);
    /** Recomputes what is derived from the latest main reading. */
    void UpdateReading();
    KW_ACCEPTANCE ReferenceFromReading();
    /** A share of the reading to either side. */
    KW_ACCEPTANCE LimitsFromReading();
    /** Invalid where an end can not be shown. */
    void UpdateBargraph();
};
