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
    /** A group of functions of the user interface, with the coupling that was used last. */
    void FunctionFromGui();
    /** What was measured with another probe or in another mode. */
    void DropMultimeterReadings();
    void ResetStatistics();
    /** The multimeter has one channel, the voltmeter the others. */
    void OfferChannels();
    /** The function's names in the other properties; a coupling is remembered where the function
        has one. */
    void SelectFunction();
    /** Which probes and user units the function offers; after SelectFunction. */
    void UpdateProbe();
    /** Ranges of the function, input, path to the converter and test current; after UpdateProbe. */
    void UpdatePath();
    /** These two say last what the readings can be: whatever they mean anew loses its validity
        there. */
    void UpdateMultimeterChannel();
    void UpdateInputChannels();
};
