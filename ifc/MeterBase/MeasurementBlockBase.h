// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsMeter.h"

#include <map>
#include <string>
#include <utility>

/** Settings of the measurement path in one range of a measurement type. Default-made, it stands for
    a range that the type does not have. */
struct t_RangeSettings
{
    double range = 0.0;       ///< nominal range in the type's base unit
    double lowerLimit = 0.0;  ///< lowest value shown: negative for bipolar types
    double upperLimit = 0.0;  ///< highest value shown
    double divider = 0.0;     ///< factor of the input divider: 1.0, 0.1, 0.01 or 0.001
    INT32 gain = 0;           ///< amplification after the divider: 1 or 10
    INT32 gainStage = 0;      ///< 1 when the ×10 stage is switched in
    double rangeFactor = 0.0; ///< factor of the range for the path calculations
    /** Test current path; none (0) for voltages and frequency, −1 in a default-made record. */
    KW_ZEL_DMM_CURRENT currentSource = static_cast<KW_ZEL_DMM_CURRENT>(-1);
};

/**
 * Catalogue of one measurement type: its name, how its path is set up, and its ranges. The
 * constructors of the blocks fill it completely. Not for several threads at once: a lookup may file
 * a range.
 */
class KW_EXPORT CMeasurementBlockBase
{
public:
    /** Settings by range. */
    using t_RangeTable = std::map<KW_ZEL_METER_RANGE, t_RangeSettings>;

    /** A block without ranges, whose measurement settings are both −1. */
    explicit CMeasurementBlockBase(const std::string& name);
    virtual ~CMeasurementBlockBase();

    /** Path settings of a range. A range that the type lacks is not an error: it is filed with
        default-made settings, which are answered, and stays in the table from then on. */
    virtual t_RangeSettings GetRangeSettings(KW_ZEL_METER_RANGE range);

    /** A copy of all ranges, in the order of the enumeration. */
    virtual t_RangeTable GetRangeTable();

    /** Remote control's name of the measurement, such as "VOLT:DC". */
    std::string GetName() const;

    /** Input selection (0 for every type) and, second, the converter path: 1 for the types that are
        measured through the AC path, 0 for the others. −1 in either when not set. */
    std::pair<INT32, INT32> GetMeasurementSettings() const;

protected:
    /** Copies, ranges included. */
    ///@{
    CMeasurementBlockBase(const CMeasurementBlockBase&) = default;
    CMeasurementBlockBase& operator=(const CMeasurementBlockBase&) = default;
    ///@}

    std::string m_name;                            ///< what GetName answers
    std::pair<INT32, INT32> m_measurementSettings; ///< what GetMeasurementSettings answers
    t_RangeTable m_ranges;                         ///< grows with lookups of ranges it lacks
};
