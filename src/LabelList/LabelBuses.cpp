// SPDX-License-Identifier: MIT
#include "LabelList/LabelBuses.h"

#include "KWEnumerationsSerialBus.h"
#include "LabelList/SignalBits.h"

#include <algorithm>
#include <array>

namespace
{
constexpr std::array<UINT32, 2> kCanLengths = {11, 29};
constexpr std::array<UINT32, 1> kLinLengths = {6};
constexpr std::array<UINT32, 2> kI2cLengths = {7, 10};
constexpr std::array<UINT32, 3> kSentLengths = {8, 4, 0};
constexpr std::array<UINT32, 2> kStreamLengths = {0, 8};

constexpr UINT32 kShortPayload = 8;
constexpr UINT32 kLongPayload = 64;

constexpr NLabelBuses::t_Bus kCan = {kCanLengths, NSignalBits::kByte, kLongPayload};
constexpr NLabelBuses::t_Bus kLin = {kLinLengths, NSignalBits::kByte, kShortPayload};
constexpr NLabelBuses::t_Bus kI2c = {kI2cLengths, NSignalBits::kByte, kLongPayload};
constexpr NLabelBuses::t_Bus kSent = {kSentLengths, NSignalBits::kNibble, kShortPayload};
constexpr NLabelBuses::t_Bus kStream = {kStreamLengths, NSignalBits::kByte, kLongPayload};
} // namespace

const NLabelBuses::t_Bus& NLabelBuses::Of(KW_ZEL_SERIALBUS_PROTOCOL protocol)
{
    switch (protocol)
    {
    case eKW_ZEL_SERIALBUS_PROTOCOL_CAN:
        return kCan;
    case eKW_ZEL_SERIALBUS_PROTOCOL_LIN:
        return kLin;
    case eKW_ZEL_SERIALBUS_PROTOCOL_I2C:
        return kI2c;
    case eKW_ZEL_SERIALBUS_PROTOCOL_SENT:
        return kSent;
    default:
        return kStream;
    }
}

bool NLabelBuses::HasLength(KW_ZEL_SERIALBUS_PROTOCOL protocol, UINT32 identifierLength)
{
    const auto lengths = Of(protocol).identifierLengths;
    return std::find(lengths.begin(), lengths.end(), identifierLength) != lengths.end();
}
