// SPDX-License-Identifier: MIT
#include "LabelList/LabelListDecoder.h"
#include "labels/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <random>

namespace
{
using t_Values = std::vector<CLabelListDecoder::t_Value>;
using t_Bytes = std::vector<UINT8>;

constexpr UINT32 kIdentifier = 0x123;

KW_LabelList ListOf(const KW_LabelEntry& entry,
                    KW_ZEL_SERIALBUS_PROTOCOL protocol = eKW_ZEL_SERIALBUS_PROTOCOL_CAN)
{
    KW_LabelList list;
    list.protocol = protocol;
    list.messages.push_back(entry);
    list.messages.back().message.setParameters(
        "Engine", protocol == eKW_ZEL_SERIALBUS_PROTOCOL_SENT ? "0" : "11",
        protocol == eKW_ZEL_SERIALBUS_PROTOCOL_SENT ? 0 : kIdentifier, 8);
    return list;
}

t_Values Decode(const KW_LabelList& list, const CLabelListDecoder& decoder, const t_Bytes& payload)
{
    const bool isSent = list.protocol == eKW_ZEL_SERIALBUS_PROTOCOL_SENT;
    const auto* const message = decoder.Find(isSent ? 0 : 11, isSent ? 0 : kIdentifier);
    t_Values values(CLabelListDecoder::SignalsOf(*message).size());
    values.resize(CLabelListDecoder::Decode(*message, payload, values));
    return values;
}

t_TestSignal RandomSignal(std::mt19937_64& random)
{
    constexpr KW_SIGNAL_TRANSLATION_VALUE_TYPE kTypes[] = {kUnsigned, kSigned, kEnum, kFloat,
                                                           kDouble};
    constexpr double kFactors[] = {1.0, 0.125, -3.0, 0.1, 1e-6};
    constexpr double kOffsets[] = {0.0, -40.0, 0.3};
    t_TestSignal signal;
    signal.type = kTypes[random() % 5];
    signal.bitLength = signal.type == kFloat    ? 32
                       : signal.type == kDouble ? 64
                                                : static_cast<UINT32>(1 + random() % 64);
    signal.startBit = static_cast<UINT32>(random() % 512);
    signal.endianness = random() % 2 != 0 ? kBig : kLittle;
    signal.factor = kFactors[random() % 5];
    signal.offset = kOffsets[random() % 3];
    return signal;
}

/** Sparse bits as well as dense ones: long zeros are what shifts go wrong with. */
t_Bytes RandomPayload(std::mt19937_64& random)
{
    t_Bytes payload(1 + random() % 64);
    const UINT64 sparse = random() % 2 != 0 ? 0x0101010101010101U : ~UINT64{0};
    for (UINT8& byte : payload)
    {
        byte = static_cast<UINT8>(random() & sparse);
    }
    return payload;
}

bool IsSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

TEST(LabelListDecoder, ReadsOtherBitsThanOneByOne)
{
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i)
    {
        const auto protocol =
            i % 4 == 0 ? eKW_ZEL_SERIALBUS_PROTOCOL_SENT : eKW_ZEL_SERIALBUS_PROTOCOL_CAN;
        const t_TestSignal signal = RandomSignal(random);
        KW_LabelEntry entry;
        KW_AddSignal(entry, MakeSignal("S", signal));
        const KW_LabelList list = ListOf(entry, protocol);
        const CLabelListDecoder decoder(list);
        const t_Bytes payload = RandomPayload(random);
        const auto values = Decode(list, decoder, payload);
        const auto raw =
            ReadBitByBit(payload, signal, protocol == eKW_ZEL_SERIALBUS_PROTOCOL_SENT ? 4 : 8);
        SCOPED_TRACE(testing::Message() << i << ": " << signal.type << ' ' << signal.startBit << '|'
                                        << signal.bitLength << '@' << signal.endianness);
        ASSERT_EQ(values.size(), raw ? 1U : 0U);
        if (raw)
        {
            ASSERT_EQ(values[0].raw, *raw);
            ASSERT_PRED2(IsSame, values[0].value,
                         signal.offset + NumberOf(signal, *raw) * signal.factor);
        }
    }
}

void AddPage(KW_LabelEntry& entry, const char* name, UINT32 startBit, const char* multiplexor,
             const std::vector<KW_RawRange>& selectedBy)
{
    KW_LabelSignalDetails details;
    details.multiplexor = multiplexor;
    details.selectedBy = selectedBy;
    KW_AddSignal(entry, MakeSignal(name, {kUnsigned, startBit}), details);
}

std::string NamesOf(const KW_LabelEntry& entry, const t_Bytes& payload)
{
    const KW_LabelList list = ListOf(entry);
    const CLabelListDecoder decoder(list);
    std::string names;
    for (const auto& value : Decode(list, decoder, payload))
    {
        names += (names.empty() ? "" : " ") + value.signal->name;
    }
    return names;
}

TEST(LabelListDecoder, ShowsPageThatIsNotSelected)
{
    KW_LabelEntry entry;
    AddPage(entry, "Deep", 16, "Inner", {{1, 1}, {7, 9}}); // stands before what selects it
    AddPage(entry, "Inner", 8, "Outer", {{2, 3}});
    AddPage(entry, "Outer", 0, "", {});
    AddPage(entry, "Other", 8, "Outer", {{4, 4}});
    AddPage(entry, "Lost", 8, "Missing", {{0, 255}});
    AddPage(entry, "Never", 8, "Outer", {});
    AddPage(entry, "Self", 0, "Self", {{0, 255}});
    AddPage(entry, "Ring", 0, "Circle", {{0, 255}});
    AddPage(entry, "Circle", 0, "Ring", {{0, 255}});
    EXPECT_EQ(NamesOf(entry, {2, 1, 0}), "Deep Inner Outer");
    EXPECT_EQ(NamesOf(entry, {3, 8, 0}), "Deep Inner Outer");
    EXPECT_EQ(NamesOf(entry, {3, 2, 0}), "Inner Outer");
    EXPECT_EQ(NamesOf(entry, {4, 1, 0}), "Outer Other");
    EXPECT_EQ(NamesOf(entry, {5, 1, 0}), "Outer");
    EXPECT_EQ(NamesOf(entry, {2}), "Outer") << "the payload ends before the inner multiplexor";
    EXPECT_EQ(NamesOf(entry, {}), "");
    KW_LabelEntry sideBySide;
    AddPage(sideBySide, "Left", 0, "", {});
    AddPage(sideBySide, "Right", 8, "", {});
    AddPage(sideBySide, "OfLeft", 16, "Left", {{1, 1}});
    AddPage(sideBySide, "OfRight", 16, "Right", {{1, 1}});
    EXPECT_EQ(NamesOf(sideBySide, {1, 0, 0}), "Left Right OfLeft");
    EXPECT_EQ(NamesOf(sideBySide, {0, 1, 0}), "Left Right OfRight");
}

TEST(LabelListDecoder, LabelsAnotherRawValue)
{
    struct t_Row
    {
        const char* name;
        t_TestSignal signal;
        INT64 value;
        UINT64 raw;
        bool isLabelled;
    };
    const t_Row rows[] = {
        {"Unsigned", {kUnsigned}, 3, 3, true},
        {"OtherValue", {kUnsigned}, 3, 4, false},
        {"AboveThirtyTwoBits", {kUnsigned, 0, 40}, 0x1000000003, 0x1000000003, true},
        {"NegativeLongSigned", {kSigned, 0, 40}, -1, 0xffffffffff, true},
        {"AllBits", {kUnsigned, 0, 64}, -1, ~UINT64{0}, true},
        {"NegativeUnsigned", {kUnsigned}, -1, 0xff, false},
        {"TooNegative", {kSigned}, -129, 0x7f, false},
        {"TooLarge", {kUnsigned}, 256, 0, false},
        {"Float", {kFloat, 0, 32}, 0, 0, false}};
    for (const t_Row& row : rows)
    {
        KW_LabelSignalDetails details;
        details.furtherLabels[row.value] = "label";
        KW_LabelEntry entry;
        KW_AddSignal(entry, MakeSignal("S", row.signal), details);
        const KW_LabelList list = ListOf(entry);
        const CLabelListDecoder decoder(list);
        t_Bytes payload;
        for (int i = 0; i < 8; ++i)
        {
            payload.push_back(static_cast<UINT8>(row.raw >> (8 * i)));
        }
        const auto values = Decode(list, decoder, payload);
        EXPECT_EQ(values.at(0).label != nullptr, row.isLabelled) << row.name;
    }
}

TEST(LabelListDecoder, MixesUpIdentifiersOrTakesTheSecond)
{
    KW_LabelList list;
    const auto add = [&list](const char* name, const char* format, UINT32 identifier)
    {
        list.messages.emplace_back();
        list.messages.back().message.setParameters(name, format, identifier, 8);
    };
    add("Standard", "11", 5);
    add("Extended", "29", 5);
    add("Second", "11", 5);
    add("Strange", "eleven", 6);
    for (UINT32 identifier = 1000; identifier < 1500; ++identifier)
    {
        add("Many", "29", identifier << 16U);
    }
    const CLabelListDecoder decoder(list);
    EXPECT_EQ(CLabelListDecoder::NameOf(*decoder.Find(11, 5)), "Standard");
    EXPECT_EQ(CLabelListDecoder::NameOf(*decoder.Find(29, 5)), "Extended");
    EXPECT_EQ(decoder.Find(11, 6), nullptr);
    EXPECT_EQ(decoder.Find(0, 0), nullptr);
    for (UINT32 identifier = 1000; identifier < 1500; ++identifier)
    {
        ASSERT_NE(decoder.Find(29, identifier << 16U), nullptr) << identifier;
    }
    EXPECT_EQ(CLabelListDecoder(KW_LabelList()).Find(0, 0), nullptr);
}

TEST(LabelListDecoder, TakesSignalsThatNoPayloadHolds)
{
    KW_LabelEntry entry;
    for (const auto& [start, length] : std::initializer_list<std::pair<UINT32, UINT32>>{
             {0, 0}, {0, 65}, {511, 2}, {512, 1}, {0xffffffff, 64}, {504, 8}})
    {
        KW_AddSignal(entry, MakeSignal("S", {kUnsigned, start, length}));
        KW_AddSignal(entry, MakeSignal("M", {kUnsigned, start, length, kBig}));
    }
    EXPECT_EQ(NamesOf(entry, t_Bytes(64)), "M S");
    EXPECT_EQ(NamesOf(entry, t_Bytes(100)), "M S");
    EXPECT_EQ(NamesOf(entry, t_Bytes(63)), "");
}

TEST(LabelListDecoder, OverrunsRoomOrReadsWhatHasNoValue)
{
    KW_LabelEntry entry;
    KW_AddSignal(entry, MakeSignal("First", {kUnsigned, 0, 8, kLittle, 0.0}));
    KW_AddSignal(entry, MakeSignal("Second", {kFloat, 0, 16}));
    KW_AddSignal(entry, MakeSignal("Third", {kUnsigned}));
    const CLabelListDecoder decoder(ListOf(entry));
    t_Values values(3);
    const t_Bytes payload = {7, 0, 0, 0, 0, 0, 0, 0};
    const auto decode = [&](std::size_t room)
    {
        return CLabelListDecoder::Decode(*decoder.Find(11, kIdentifier), payload,
                                         std::span(values).first(room));
    };
    EXPECT_EQ(decode(0), 0U);
    EXPECT_EQ(decode(2), 2U);
    EXPECT_EQ(values[2].signal, nullptr);
    EXPECT_EQ(decode(3), 3U);
    for (std::size_t i = 0; i < values.size(); ++i)
    {
        EXPECT_EQ(values[i].raw, 7U);
        EXPECT_EQ(values[i].signal->isReadable, i == 2);
        EXPECT_EQ(std::isnan(values[i].value), i < 2);
    }
}

TEST(LabelListDecoder, FormatsOtherwiseThanPrintf)
{
    std::mt19937_64 random(3);
    CLabelListDecoder::t_TextBuffer buffer;
    for (int i = 0; i < 20000; ++i)
    {
        const double values[] = {std::bit_cast<double>(random()),
                                 -40.0 + static_cast<double>(random() % 65536) * 0.1,
                                 static_cast<double>(random() >> random() % 64)};
        for (const double value : values)
        {
            char text[32];
            std::snprintf(text, sizeof text, "%.15g", value == 0.0 ? 0.0 : value);
            ASSERT_EQ(CLabelListDecoder::Format(value, buffer), std::isnan(value) ? "nan" : text);
        }
    }
    EXPECT_EQ(CLabelListDecoder::Format(-0.0, buffer), "0");
    EXPECT_EQ(CLabelListDecoder::Format(-std::nan(""), buffer), "nan");
}
} // namespace
