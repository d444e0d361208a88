// SPDX-License-Identifier: MIT
#include "LabelList/SignalValues.h"

#include "KWEnumerationsSerialBus.h"
#include "LabelList/LabelListConversion.h"
#include "LabelList/LabelListMessage.h"
#include "LabelList/SignalBits.h"

#include <gtest/gtest.h>

#include <random>

namespace
{
constexpr UINT32 kPayload = 64;

/** Writes a number into a payload as the notation is told: little-endian from the start bit up,
    big-endian from it down to bit 0 and on with the highest bit of the next unit. False where it
    leaves the payload. */
bool Put(std::string& payload, const NSignalBits::t_Signal& signal, UINT64 value)
{
    const bool isBig = signal.endianness == eKW_ENDIANNESS_BIG_ENDIAN;
    UINT32 unit = signal.startBit / signal.unit;
    UINT32 bit = signal.startBit % signal.unit;
    for (UINT32 i = 0; i < signal.bitLength; ++i)
    {
        const UINT32 order = isBig ? signal.bitLength - 1 - i : i;
        const UINT32 place = unit * signal.unit + (signal.unit - 1 - bit);
        if (place >= payload.size())
        {
            return false;
        }
        payload[place] = (value >> order & 1U) != 0 ? '1' : '0';
        const UINT32 end = isBig ? 0 : signal.unit - 1;
        unit += bit == end ? 1 : 0;
        bit = bit == end ? (isBig ? signal.unit - 1 : 0) : (isBig ? bit - 1 : bit + 1);
    }
    return true;
}

/** What stands at the places of a signal, most significant bit first. */
std::string Bits(const std::string& payload, const NSignalBits::t_Signal& signal)
{
    std::string bits;
    for (UINT32 i = 0; i < signal.bitLength; ++i)
    {
        bits += payload[NSignalBits::PlaceOf(signal, i)];
    }
    return bits;
}

void CheckSignal(const NSignalBits::t_Signal& signal, UINT64 value)
{
    const bool fits = NSignalBits::BitsUpTo(signal) <= kPayload;
    std::string payload(kPayload, '0');
    ASSERT_EQ(Put(payload, signal, value), fits) << signal.startBit << '|' << signal.bitLength;
    if (fits)
    {
        const std::string bits = Bits(payload, signal);
        EXPECT_EQ(std::stoull(bits, nullptr, 2), value) << signal.startBit;
        // Sixteen bits are all that the conversion knows of a number.
        if (signal.bitLength <= 16)
        {
            EXPECT_EQ(getRawValue(static_cast<double>(value), static_cast<UINT16>(signal.bitLength),
                                  eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT, 1.0, 0.0),
                      bits);
        }
    }
}

TEST(SignalBits, StandElsewhereThanTheNotationSays)
{
    std::mt19937_64 random(1);
    for (const auto endianness : {eKW_ENDIANNESS_BIG_ENDIAN, eKW_ENDIANNESS_LITTLE_ENDIAN})
    {
        for (const UINT32 unit : {NSignalBits::kByte, NSignalBits::kNibble})
        {
            for (UINT32 start = 0; start < kPayload; ++start)
            {
                for (UINT32 length = 1; length <= kPayload; ++length)
                {
                    CheckSignal({start, length, endianness, unit}, random() >> (64 - length));
                }
            }
        }
    }
}

struct t_Value
{
    const char* name;
    KW_SIGNAL_TRANSLATION_VALUE_TYPE type;
    UINT32 startBit;
    UINT32 bitLength;
    KW_ENDIANNESS endianness;
    double factor;
    double offset;
    const char* payload; ///< hexadecimal
    const char* text;
};

constexpr auto kUnsigned = eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT;
constexpr auto kSigned = eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT;
constexpr auto kEnum = eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM;
constexpr auto kFloat = eKW_SIGNAL_TRANSLATION_VALUE_TYPE_FLOAT;
constexpr auto kDouble = eKW_SIGNAL_TRANSLATION_VALUE_TYPE_DOUBLE;
constexpr auto kBig = eKW_ENDIANNESS_BIG_ENDIAN;
constexpr auto kLittle = eKW_ENDIANNESS_LITTLE_ENDIAN;

const t_Value kValues[] = {
    {"FirstTwoBytesBigEndian", kUnsigned, 7, 16, kBig, 1, 0, "1234", "4660 u"},
    {"FirstTwoBytesLittleEndian", kUnsigned, 0, 16, kLittle, 1, 0, "1234", "13330 u"},
    {"OffsetOfANegativeValue", kSigned, 0, 8, kLittle, 2, 10, "ff", "8 u"},
    {"SignOfAnOddLength", kSigned, 2, 3, kBig, 1, 0, "04", "-4 u"},
    {"AllBitsAreASign", kSigned, 0, 64, kLittle, 1, 0, "ffffffffffffffff", "-1 u"},
    {"UpperHalfIsLost", kUnsigned, 0, 40, kLittle, 1, 0, "0000000080", "549755813888 u"},
    {"RoundingShows", kUnsigned, 0, 8, kLittle, 0.1, -40, "03", "-39.7 u"},
    {"FloatIsNotIeee", kFloat, 7, 32, kBig, 1, 0, "3fc00000", "1.5 u"},
    {"DoubleIsNotIeee", kDouble, 0, 64, kLittle, 2, 1, "000000000000f8bf", "-2 u"},
    {"ZeroHasASign", kFloat, 7, 32, kBig, 1, 0, "80000000", "0 u"},
    {"FloatOfSixteenBits", kFloat, 7, 16, kBig, 1, 0, "3fc0", "???"},
    {"NoFactor", kUnsigned, 0, 8, kLittle, 0, 5, "03", "???"},
    {"TextOfAValue", kEnum, 0, 4, kLittle, 1, 0, "03", "3 u (Drive)"},
    {"NoTextOfAValue", kEnum, 0, 4, kLittle, 1, 0, "04", "4 u"},
    {"TextOfAnUnsigned", kUnsigned, 0, 4, kLittle, 1, 0, "03", "3 u"},
    {"PayloadIsTooShort", kUnsigned, 8, 1, kLittle, 1, 0, "03", "???"}};

CLabelListSignal SignalOf(const t_Value& value)
{
    CLabelListSignal signal("S", value.startBit, value.bitLength, value.endianness, value.type,
                            value.factor, value.offset, 0, 0, "u");
    signal.addSignalEnumValue({3, "Drive"});
    return signal;
}

QString PayloadOf(const char* hexadecimal)
{
    const QByteArray bytes = QByteArray::fromHex(hexadecimal);
    QString payload;
    for (const char byte : bytes)
    {
        payload += QString::number(static_cast<unsigned char>(byte), 2).rightJustified(8, u'0');
    }
    return payload;
}

TEST(SignalValues, AreNotThoseOfCanDatabases)
{
    for (const t_Value& value : kValues)
    {
        EXPECT_EQ(
            NSignalValues::TextOf(SignalOf(value), PayloadOf(value.payload), NSignalBits::kByte)
                .toStdString(),
            value.text)
            << value.name;
    }
    EXPECT_EQ(NSignalValues::TextOf(SignalOf(kValues[0]), QString(16, u'X'), NSignalBits::kByte),
              QStringLiteral("???"));
}

TEST(SignalValues, FrameLeavesSignalsOutOrShowsHalfOfOne)
{
    const auto text = [](const CLabelListMessage& message, const char* payload, INT32 longest)
    {
        return NSignalValues::TextOf(message, PayloadOf(payload), NSignalBits::kByte, longest)
            .value_or(QStringLiteral("none"))
            .toStdString();
    };
    CLabelListMessage message("Engine", "11", 1, 8);
    EXPECT_EQ(text(message, "", 9), "");
    CLabelListSignal signal;
    for (const char* const name : {"B", "A"})
    {
        signal.setParameters(name, 8, 8, kLittle, kUnsigned, 1, 0, 0, 0, "");
        message.addSignal({signal.getSignalKey(), signal});
    }
    EXPECT_EQ(text(message, "0007", 12), "A = 7; B = 7");
    EXPECT_EQ(text(message, "0007", 11), "A = 7; ...");
    EXPECT_EQ(text(message, "0007", 9), "...");
    EXPECT_EQ(text(message, "07", 99), "none");
}
} // namespace
