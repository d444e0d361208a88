// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

/** What the acquisition hardware and the screen give to the spectrum functions. The limits that the
    model declares for the settings are these figures. Frequencies in Hz. */
namespace NSpectrumHardware
{
/** Rate of the A/D converters for which the filters of the down-converter are designed. */
constexpr double kDownConverterSampleRate = 1.25e9;

/** Half of that rate: above it nothing of a signal is left when the down-converter runs. */
constexpr double kHighestFrequency = kDownConverterSampleRate / 2.0;

/** The narrowest span that the down-converter decimates to, by 1,000,000. */
constexpr double kSmallestSpan = 825.0;

/** Left end of the widest logarithmic axis. A decade from here on is 900 Hz wide, the first round
    frequency for which that is not below the smallest span. */
constexpr double kLogarithmicStartMinimum = 100.0;

/** Absolute floor of the resolution bandwidth: a thousandth of the smallest span. The hardware
    reaches it: at 1250 Sa/s behind the greatest decimation the neediest window (length factor 7.66)
    asks for 11,607 samples, which is less than the largest FFT has. */
constexpr double kResolutionBandwidthFloor = kSmallestSpan / 1000.0;

/** Absolute ceiling: a tenth of the widest span. The hardware reaches it without decimation with
    256 samples for the neediest window. */
constexpr double kResolutionBandwidthCeiling = kHighestFrequency / 10.0;

/** The FFT unit works on powers of two from 128 to 65,536 samples. */
constexpr UINT32 kSmallestFFTSize = 128;
constexpr UINT32 kLargestFFTSize = 65536;

/** Bandwidth of an input without its low-pass filter. */
constexpr double kInputBandwidth = 5e8;

/** Height of the logarithmic magnitude axis in decibels: eight divisions of 10 dB, which is the
    dynamic range of the converters with averaging. */
constexpr double kMagnitudeHeight = 80.0;

/** Levels are set automatically in steps of one division, in decibels. */
constexpr double kMagnitudeDivision = 10.0;
} // namespace NSpectrumHardware
