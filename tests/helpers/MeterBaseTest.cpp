// SPDX-License-Identifier: MIT
#include "MeterBase/MeterMeasurementBaseData.h"
#include "Reports.h"

#include <gtest/gtest.h>

// Which range of which type has which settings stands in tests/vectors.

namespace
{
using Catalogue = CMeterMeasurementBaseData;

TEST(MeterCatalogue, FailsOnRangeThatTypeLacksOrForgetsIt)
{
    const CReports reports;
    Catalogue catalogue;
    auto& block = *catalogue.GetMeasurementBlocks().at(eKW_ZEL_DMM_MEAS_TYPE_CAPACITY);
    EXPECT_EQ(catalogue.GetRangeSettings(eKW_ZEL_DMM_MEAS_TYPE_CAPACITY, 10.0).range, 0.0);
    EXPECT_EQ(reports.List(), QStringList());
    EXPECT_EQ(block.GetRangeTable().at(eKW_ZEL_METER_RANGE_10).currentSource, -1);
    catalogue.GetRangeSettings(eKW_ZEL_DMM_MEAS_TYPE_CAPACITY, 2.0);
    EXPECT_EQ(block.GetRangeTable().count(KW_ZEL_METER_RANGE(-1)), 1U);
    EXPECT_EQ(block.GetRangeTable().size(), 9U);
    catalogue.GetRangeSettings(KW_ZEL_DMM_MEAS_TYPE(9), 1.0);
    EXPECT_EQ(catalogue.GetMeasurementBlocks().size(), 9U) << "no type is made up";
    EXPECT_EQ(Catalogue()
                  .GetMeasurementBlocks()
                  .at(eKW_ZEL_DMM_MEAS_TYPE_CAPACITY)
                  ->GetRangeTable()
                  .size(),
              7U);
}

} // namespace
