// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsMeter.h"
#include "MeterBase/MeasurementBlockBase.h"

#include <map>
#include <memory>

/**
 * The multimeter's catalogue: one block per measurement type. Made, asked and dropped by one caller
 * at a time, usually on the stack; it has no link to the tree.
 *
 * The blocks are shared: a copy of the catalogue or of its block map refers to the same blocks and
 * may outlive the original.
 */
class KW_EXPORT CMeterMeasurementBaseData
{
public:
    /** Blocks by measurement type. */
    using t_BlockMap = std::map<KW_ZEL_DMM_MEAS_TYPE, std::shared_ptr<CMeasurementBlockBase>>;

    /** A row of the second table. */
    struct t_IndexedRow
    {
        double a; ///< first figure
        double b; ///< second figure
        double c; ///< third figure
        double d; ///< fourth figure
    };
    /** Rows by index. */
    using t_IndexedTable = std::map<INT32, t_IndexedRow>;

    CMeterMeasurementBaseData();
    virtual ~CMeterMeasurementBaseData();
    /** Copies share the blocks. */
    ///@{
    CMeterMeasurementBaseData(const CMeterMeasurementBaseData&) = default;
    CMeterMeasurementBaseData& operator=(const CMeterMeasurementBaseData&) = default;
    ///@}

    /**
     * Path settings of a measurement type in the range of nominal value `rangeValue`, in the type's
     * base unit. A range that the type lacks gives a default-made record and leaves one in the
     * type's block.
     *
     * A type without a block reports the error "No valid measurement selected." from
     * "ifc/MeterBase" and gives a default-made record, whatever the range. A value that is no
     * nominal range is reported by GetRangeAsEnumValue and then looked up as range −1.
     */
    t_RangeSettings GetRangeSettings(KW_ZEL_DMM_MEAS_TYPE type, double rangeValue);

    /** The range whose nominal value equals `value` within the tolerance of comparisons. Any other
        value reports the error "Invalid Range selected: " and the value, from "src/MeterBase", and
        gives −1. Callable from any thread. */
    static KW_ZEL_METER_RANGE GetRangeAsEnumValue(double value);

    /** Nominal value of a range in the base unit of the measurement type. An illegal range reports
        the error "Invalid Range selected." from "src/MeterBase" and gives 0.0. The ranges run from
        1e-8 in decades, but 0.1 is not among them: value 6 is 0.01 and value 7 is 1. Callable from
        any thread. */
    static double GetRangeAsDoubleValue(KW_ZEL_METER_RANGE range);

    /** The blocks by type. */
    const t_BlockMap& GetMeasurementBlocks() const;

    /** The second table, indexes 0 to 6: figures that the catalogue carries for the meter's path
        calculations. It uses none of them itself and gives them no meaning. */
    const t_IndexedTable& GetIndexedTable() const;

private:
    t_BlockMap m_blocks;
    t_IndexedTable m_indexedTable;
};
