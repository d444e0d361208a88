// SPDX-License-Identifier: MIT
#include "LabelList/SignalValues.h"

#include "LabelList/SignalBits.h"
#include "labels/Signals.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>

namespace
{
constexpr UINT32 kPayload = 8; // bytes

TEST(SignalBits, StandElsewhereThanTheNotationSays)
{
    std::mt19937_64 random(1);
    std::vector<UINT8> payload(kPayload);
    for (UINT32 i = 0; i < 2 * 2 * 64 * 64; ++i)
    {
        const t_TestSignal signal{kUnsigned, i % 64, 1 + i / 64 % 64,
                                  i / 4096 % 2 != 0 ? kBig : kLittle};
        const UINT32 unit = i / 8192 != 0 ? NSignalBits::kByte : NSignalBits::kNibble;
        const NSignalBits::t_Signal bits{signal.startBit, signal.bitLength, signal.endianness,
                                         unit};
        const UINT64 word = random();
        std::memcpy(payload.data(), &word, kPayload);
        const auto raw = ReadBitByBit(payload, signal, unit);
        ASSERT_EQ(NSignalBits::BitsUpTo(bits) <= 8 * kPayload, raw.has_value()) << i;
        UINT64 placed = 0;
        for (UINT32 index = 0; raw && index < signal.bitLength; ++index)
        {
            const UINT32 place = NSignalBits::PlaceOf(bits, index);
            placed = placed << 1U | (payload[place / 8] >> (7 - place % 8) & 1U);
        }
        ASSERT_EQ(placed, raw.value_or(0)) << i;
    }
}

/** A signal "S" in "u", of which 3 and all of eight bits are labelled. */
KW_LabelEntry EntryOf(const t_TestSignal& signal)
{
    CLabelListSignal made = MakeSignal("S", signal);
    made.setParameters("S", signal.startBit, signal.bitLength, signal.endianness, signal.type,
                       signal.factor, signal.offset, 0.0, 0.0, "u");
    made.addSignalEnumValue({3, "Drive"});
    made.addSignalEnumValue({0xff, "Fault"});
    KW_LabelEntry entry;
    KW_AddSignal(entry, made);
    return entry;
}

std::string TextOf(const KW_LabelEntry& entry, const char* payload, INT32 longest = 99)
{
    KW_LabelList list;
    list.messages.push_back(entry);
    const CLabelListDecoder decoder(list);
    return NSignalValues::TextOf(*decoder.Find(11, 0), QString::fromLatin1(payload), longest)
        .value_or(QStringLiteral("none"))
        .toStdString();
}

TEST(SignalValues, ShowSomethingElseOrWhatWasNotRead)
{
    struct t_Row
    {
        const char* name;
        t_TestSignal signal;
        const char* payload;
        const char* text;
    };
    const t_Row rows[] = {
        {"LabelOfAnEnum", {kEnum, 0, 4}, "00000011", "S = 3 u (Drive)"},
        {"LabelOfAnUnsigned", {kUnsigned, 0, 4}, "00000011", "S = 3 u (Drive)"},
        {"LabelOfANegative", {kSigned, 0, 8, kLittle, 2, 10}, "11111111", "S = 8 u (Fault)"},
        {"NoLabel", {kEnum, 0, 4}, "00000100", "S = 4 u"},
        {"LabelOfAFloat",
         {kFloat, 0, 32},
         "00000011000000000000000000000000",
         "S = 4.20389539297445e-45 u"},
        {"RoundingShows", {kUnsigned, 0, 8, kLittle, 0.1, -40}, "00000011", "S = -39.7 u (Drive)"},
        {"ZeroHasASign", {kFloat, 7, 32, kBig}, "10000000000000000000000000000000", "S = 0 u"},
        {"FloatOfSixteenBits", {kFloat, 7, 16, kBig}, "0011111111000000", "S = ???"},
        {"NoFactor", {kUnsigned, 0, 8, kLittle, 0, 5}, "00000011", "S = ???"},
        {"UnknownBit", {kUnsigned, 0, 8}, "0000X011", "S = ???"},
        {"UnknownBitOfOthers", {kUnsigned, 0, 3}, "0000X011", "S = 3 u (Drive)"},
        {"NotAWholeByte", {kUnsigned, 8, 1}, "000000110001", "none"},
        {"TooShort", {kUnsigned, 8, 1}, "00000011", "none"}};
    for (const t_Row& row : rows)
    {
        EXPECT_EQ(TextOf(EntryOf(row.signal), row.payload), row.text) << row.name;
    }
}

TEST(SignalValues, FrameLeavesSignalsOutOrShowsHalfOfOne)
{
    KW_LabelEntry entry;
    EXPECT_EQ(TextOf(entry, "", 9), "");
    KW_AddSignal(entry, MakeSignal("B", {kUnsigned, 8}));
    KW_AddSignal(entry, MakeSignal("A", {kUnsigned, 8}));
    EXPECT_EQ(TextOf(entry, "0000000000000111", 12), "B = 7; A = 7");
    EXPECT_EQ(TextOf(entry, "0000000000000111", 11), "B = 7; ...");
    EXPECT_EQ(TextOf(entry, "0000000000000111", 9), "...");
}

TEST(SignalValues, PageShowsThatIsNotSelectedOrNotKnown)
{
    KW_LabelSignalDetails page;
    page.multiplexor = "S";
    page.selectedBy = {{3, 3}};
    KW_LabelEntry entry = EntryOf({kUnsigned, 0, 4});
    KW_AddSignal(entry, MakeSignal("Page", {kUnsigned, 4, 4}), page);
    KW_AddSignal(entry, MakeSignal("Next", {kUnsigned, 8, 8}), page);
    EXPECT_EQ(TextOf(entry, "0110001100000001"), "S = 3 u (Drive); Page = 6; Next = 1");
    EXPECT_EQ(TextOf(entry, "01100010"), "S = 2 u");
    EXPECT_EQ(TextOf(entry, "01100010", 7), "S = 2 u") << "of two signals that are not there";
    EXPECT_EQ(TextOf(entry, "0110X011"), "S = ???");
    EXPECT_EQ(TextOf(entry, "01100011"), "none") << "too short for the page that is selected";
}
} // namespace
