// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

/** What the acquisition hardware gives to the timebase. */
namespace NHorizontalHardware
{
/** Points that a trace has at least; shorter records are interpolated up to it. */
constexpr double kRequiredPoints = 1250.0;

/** The logic inputs have one converter clock, whatever the analog inputs do, in samples/s. */
constexpr double kDigitalSampleRate = 1.25e9;

/** Points that the digital filters need before and after a trace until they have settled. */
constexpr UINT32 kMaxPreSettlingSamplesAnalog = 64;
constexpr UINT32 kMaxPostSettlingSamplesAnalog = 64;
constexpr UINT32 kMaxPreSettlingSamplesDigital = 16;
constexpr UINT32 kMaxPostSettlingSamplesDigital = 16;

/** The trigger position register is signed and has 32 bits; it counts points of the record. */
constexpr double kPositionRegisterMax = 2147483647.0;

/** Acquisitions that take at least this long, in seconds, can be shown block by block. */
constexpr double kSlowAcquisitionTime = 1.0;

/** Blocks per second that the slow and roll modes hand over. */
constexpr double kBlocksPerSecond = 20.0;

/** Bus events that the decoder memory holds; the history traces share it. */
constexpr UINT32 kBusEventMemory = 1000000;
} // namespace NHorizontalHardware
