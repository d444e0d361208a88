// SPDX-License-Identifier: MIT
#pragma once

#include "MeterBase/MeasurementBlockBase.h"

/** The blocks differ only in name, settings and ranges, which their constructors fill in. */

/** AC voltage, "VOLT:AC": 1, 10, 100 and 1000 V, unipolar, AC path. */
class KW_EXPORT CEvMeasurementBlockVoltageAC : public CMeasurementBlockBase
{
public:
    CEvMeasurementBlockVoltageAC();
};

/** DC voltage, "VOLT:DC": ±1, ±10, ±100 and ±1000 V. */
class KW_EXPORT CEvMeasurementBlockVoltageDC : public CMeasurementBlockBase
{
public:
    CEvMeasurementBlockVoltageDC();
};

/** AC+DC voltage, "VOLT:AD": as AC voltage. */
class KW_EXPORT CEvMeasurementBlockVoltageAD : public CMeasurementBlockBase
{
public:
    CEvMeasurementBlockVoltageAD();
};

/** Capacitance, "CAP": 10 nF to 10 mF. The greater the capacitance, the more current and the
    greater the range factor. */
class KW_EXPORT CEvMeasurementBlockCapacity : public CMeasurementBlockBase
{
public:
    CEvMeasurementBlockCapacity();
};

/** Continuity, "CONT": 1 kΩ. The range factor of 128 is wanted: continuity trades resolution for
    speed. */
class KW_EXPORT CEvMeasurementBlockContinuity : public CMeasurementBlockBase
{
public:
    CEvMeasurementBlockContinuity();
};

/** Diode test, "DIODE": 10 V. The upper limit of 3 V is wanted: it is the highest forward voltage
    that the test shows, in a path made for 10 V. */
class KW_EXPORT CEvMeasurementBlockDiode : public CMeasurementBlockBase
{
public:
    CEvMeasurementBlockDiode();
};

/** Frequency, "FREQ": measured at the voltage input, so the ranges are volts; the limits are
    0.01 Hz to 250 kHz in each of them. AC path. */
class KW_EXPORT CEvMeasurementBlockFrequency : public CMeasurementBlockBase
{
public:
    CEvMeasurementBlockFrequency();
};

/** Resistance, "RESI": 1 kΩ to 100 MΩ. The test current falls a decade per range down to about
    100 nA at 10 MΩ; the 100 MΩ range keeps it and switches the ×10 stage in. The table is fixed: no
    setting of the instrument changes it. */
class KW_EXPORT CEvMeasurementBlockResistance : public CMeasurementBlockBase
{
public:
    CEvMeasurementBlockResistance();
};

/** Temperature, "TEMP": one range. */
class KW_EXPORT CEvMeasurementBlockTemperature : public CMeasurementBlockBase
{
public:
    CEvMeasurementBlockTemperature();
};
