// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

/** Figures of the analog inputs, all at the connector: a probe multiplies them by its factor. */
namespace NVerticalHardware
{
/** Scales of the input path, V per division. */
constexpr double kSmallestScale = 2e-3;
constexpr double kLargestScale = 100.0;
/** Largest level that the offset can subtract, V: twice the largest scale takes it to any edge of
    the screen that a mains voltage needs. */
constexpr double kLargestOffset = 200.0;
/** Samples that one part of a stream carries in a clock cycle. */
constexpr UINT32 kSamplesPerPart = 5;
} // namespace NVerticalHardware
