// SPDX-License-Identifier: MIT
#pragma once

#include "Meter/PgMeterBase.h"

enum KW_UNIT : INT32;

/**
 * The meter. Its function, however it was selected, decides the measurement type, the probes to
 * choose from, the input path and the ranges; function, range and probe decide what the readings
 * of a channel mean. Readings lose their validity when that changes. Each function has a probe, a
 * range, a reference and limits of its own.
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
    /** What was measured in another function or mode, or with another probe. */
    void DropMultimeterReadings();
    void ResetStatistics();
    /** The multimeter has one channel, the voltmeter the others. */
    void OfferChannels();
    /** The function's names in the other properties; a coupling is remembered where the function
        has one. */
    void SelectFunction();
    /** The probe of the function; after SelectFunction. */
    void FollowFunction();
    /** Which probes and user units the function offers; after FollowFunction. */
    void UpdateProbe();
    /** Ranges, references and limits of what each channel measures; after UpdateProbe, as they are
        of a unit, too. */
    void FollowFunctions();
    /** Ranges of the function, input, path to the converter and test current; after
        FollowFunctions. */
    void UpdatePath();
    /** These two say last what the readings can be: whatever they mean anew loses its validity
        there. */
    void UpdateMultimeterChannel();
    void UpdateInputChannels();
    void ShowSymbols();
};
