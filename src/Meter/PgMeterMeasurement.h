// SPDX-License-Identifier: MIT
#pragma once

#include "Meter/PgMeterMeasurementBase.h"

#include <optional>

enum KW_UNIT : INT32;

/** One reading of a channel; a fresh tree has none. */
class CPgMeterMeasurement : public CPgMeterMeasurementBase
{
public:
    using CPgMeterMeasurementBase::CPgMeterMeasurementBase;

    t_Couplings Rules() const override;

    /** Unit of the multimeter's function, which leaves no choice of a quantity, or of this
       reading's quantity at the input (volt or ampere). A reading in another unit is dropped. */
    void Follow(KW_UNIT atInput, std::optional<KW_UNIT> ofFunction);
    void DropReadings();
    /** Other limits: where the latest reading lies between them, whatever crossed those before. */
    void JudgeReading(double lowest, double highest);
    void ResetStatistics();
    /** Of this reading's quantity at the input (volt or ampere). */
    KW_UNIT UnitOfQuantity(KW_UNIT atInput) const;

private:
    /** Answers whether the unit is another one now. */
    bool WriteUnit(KW_UNIT unit);
};
