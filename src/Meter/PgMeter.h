// SPDX-License-Identifier: MIT
#pragma once

#include "Meter/PgMeterBase.h"

enum KW_UNIT : INT32;

/**
 * The meter. Its function, however it was selected, decides the measurement type, the probes to
 * choose from, the input path and the ranges; function, range and probe decide what the readings
 * of a channel mean. Readings lose their validity when that changes.
 */
class CPgMeter : public CPgMeterBase
{
public:
    t_Couplings Rules() const override;

private:
    /** Factor of the probe in the present measurement, and the unit of what is read. */
    double ProbeInUse(KW_UNIT& unitOfReading) const;
    void FunctionFromGui();
    void DropMultimeterReadings();
    void ResetStatistics();
    void OfferChannels();
    void SelectFunction();
    void UpdateProbe();
    void UpdatePath();
    void UpdateMultimeterChannel();
    void UpdateInputChannels();
};
