// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgMeasurementBase.h"

/** One automatic measurement. Its results are those of one quantity of one source in one unit: with
    another they are invalid, and statistics begin anew. A power needs a voltage and a current; with
    other sources there is nothing to measure. */
class CPgMeasurement : public CPgMeasurementBase
{
public:
    using CPgMeasurementBase::CPgMeasurementBase;

    t_Couplings Rules() const override;

    /** Led by CPgMeasurements, as Disable; the latest result stays. */
    void ResetStatistics();
    void Disable();

private:
    void OrderLimits(const CDbPropBase* written);
    /** What can be measured now; of anything else than before there are no results yet. */
    void Follow();
    void OfferSource();
    /** For a power those that make one with the source, where there are any. */
    void OfferSecondSource();
    /** A digital trace has no levels: a quantity that needs them gives way to the frequency. */
    void OfferQuantities();
    /** Of the quantity, of all results and of their limits. */
    void UpdateUnit();
    void DropLimitTest();
    void DropOfProbe(const CDbPropBase* probe);
    void DropOfMathematics();
    /** What is delivered for a power of sources that make none. */
    void DropUnmeasurable();
};
