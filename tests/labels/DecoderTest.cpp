// SPDX-License-Identifier: MIT
#include "LabelList/LabelListConversion.h"
#include "LabelList/LabelListDecoder.h"
#include "labels/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <map>
#include <random>
#include <typeinfo>

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

/** Short numbers as well as long ones, and of floats what is no number. */
UINT64 RandomRaw(std::mt19937_64& random, const t_TestSignal& signal)
{
    constexpr UINT64 kInfinity = 0x7f800000;
    const UINT64 raw = random() >> (64 - signal.bitLength) >> random() % signal.bitLength;
    return signal.type == kFloat && random() % 8 == 0 ? raw | kInfinity : raw;
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

std::string TextOf(double value, int digits)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.*g", digits, value);
    return std::isnan(value) ? "nan" : text;
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

// --- Beside the conversions of texts

/** Why a text differs from what the database means; nullptr: it does not. */
const char* DepartureOf(const t_TestSignal& signal, UINT64 raw)
{
    constexpr double kSaturated = 2147483647.0;
    const double number = NumberOf(signal, raw);
    if (signal.type == kFloat || signal.type == kDouble)
    {
        const bool isFloat = signal.type == kFloat;
        const UINT64 exponent = raw << (isFloat ? 33U : 1U) >> (isFloat ? 56U : 53U);
        const UINT64 mantissa = isFloat ? 0 : raw << 12U >> 12U;
        return exponent == 0                        ? "zeros and denormals"
               : exponent == (isFloat ? 255 : 2047) ? "infinities and NaNs"
               : mantissa >> 31U != 0               ? "mantissa of a double"
                                                    : nullptr;
    }
    if (std::fabs(number) > kSaturated)
    {
        return "more than 31 bits";
    }
    return number < 0.0 && signal.offset != 0.0 ? "negative with an offset" : nullptr;
}

std::string BitsOf(const t_TestSignal& signal, UINT64 raw)
{
    std::string bits;
    for (UINT32 i = signal.bitLength; i-- > 0;)
    {
        bits += (raw >> i & 1U) != 0 ? '1' : '0';
    }
    return bits;
}

std::string TextOf(const t_TestSignal& signal, UINT64 raw)
{
    try
    {
        return getPhysicalValue(BitsOf(signal, raw), signal.type, signal.factor, signal.offset);
    }
    catch (const std::bad_cast&)
    {
        return "overflow";
    }
}

std::string BitsBack(const t_TestSignal& signal, double value)
{
    try
    {
        return getRawValue(value, static_cast<UINT16>(signal.bitLength), signal.type, signal.factor,
                           signal.offset);
    }
    catch (const std::bad_cast&)
    {
        return "overflow";
    }
}

double ValueOf(const t_TestSignal& signal, UINT64 raw)
{
    return signal.offset + NumberOf(signal, raw) * signal.factor;
}

TEST(LabelListDecoder, DepartsFromTextsForAnotherReason)
{
    std::mt19937_64 random(2);
    std::map<std::string, int> departures;
    for (int i = 0; i < 20000; ++i)
    {
        t_TestSignal signal = RandomSignal(random);
        const UINT64 raw = RandomRaw(random, signal);
        const std::string meant = TextOf(ValueOf(signal, raw), 6);
        const char* const departure = DepartureOf(signal, raw);
        if (departure == nullptr)
        {
            ASSERT_EQ(TextOf(signal, raw), meant) << signal.type << ' ' << raw;
        }
        else if (TextOf(signal, raw) != meant)
        {
            ++departures[departure];
        }
    }
    EXPECT_EQ(departures.size(), 5U) << "a reason is none";
}

struct t_Departure
{
    const char* name;
    t_TestSignal signal;
    UINT64 raw;
    const char* meant; ///< in six digits
    const char* text;
    bool isKeptBack; ///< whether bits that are made of the meant value are those
};

const t_Departure kDepartures[] = {
    {"Agrees", {kUnsigned, 0, 16, kLittle, 0.5, -40.0}, 0xffff, "32727.5", "32727.5", true},
    {"SignTakesOffset", {kSigned, 0, 8, kLittle, 2.0, 10.0}, 0xff, "8", "-12", true},
    {"SignWithoutOffset", {kSigned, 0, 8, kLittle, 2.0, 0.0}, 0xff, "-2", "-2", true},
    {"UpperHalfSaturates", {kUnsigned, 0, 32}, 0x80000000, "2.14748e+09", "2.14748e+09", false},
    {"FortyBits", {kUnsigned, 0, 40}, 0x8000000000, "5.49756e+11", "2.14748e+09", false},
    {"SignedFortyBits", {kSigned, 0, 40}, 0x8000000000, "-5.49756e+11", "-2.14748e+09", false},
    {"SeventeenBitsBack", {kUnsigned, 0, 17}, 0x10000, "65536", "65536", false},
    {"SignedThirtyTwoBack", {kSigned, 0, 32}, 0x80000000, "-2.14748e+09", "-2.14748e+09", true},
    {"FloatOfZero", {kFloat, 0, 32}, 0, "0", "5.87747e-39", true},
    {"DenormalFloat", {kFloat, 0, 32}, 1, "1.4013e-45", "5.87747e-39", true},
    {"InfiniteFloat", {kFloat, 0, 32}, 0x7f800000, "inf", "overflow", false},
    {"DoubleOfZero", {kDouble, 0, 64}, 0, "0", "1.11254e-308", true},
    {"InfiniteDouble", {kDouble, 0, 64}, 0x7ff0000000000000, "inf", "inf", false},
    {"DoubleIsNoNumber", {kDouble, 0, 64}, 0x7ff8000000000000, "nan", "inf", false},
    {"SignedThirtyThreeBack", {kSigned, 0, 33}, 0x17fffffff, "-2.14748e+09", "-2.14748e+09", false},
    {"Double", {kDouble, 0, 64}, 0x3ff8000000000000, "1.5", "1", false},
    {"DoubleOfShortMantissa", {kDouble, 0, 64}, 0x3ff0000000000000, "1", "1", false}};

TEST(LabelListDecoder, TextsAreConvertedOtherwiseThanDocumented)
{
    for (const t_Departure& row : kDepartures)
    {
        SCOPED_TRACE(row.name);
        const double value = ValueOf(row.signal, row.raw);
        EXPECT_EQ(TextOf(value, 6), row.meant);
        EXPECT_EQ(TextOf(row.signal, row.raw), row.text);
        EXPECT_EQ(BitsBack(row.signal, value) == BitsOf(row.signal, row.raw), row.isKeptBack)
            << BitsBack(row.signal, value);
    }
}

// --- Multiplexed signals, labels, messages

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
            ASSERT_EQ(CLabelListDecoder::Format(value, buffer),
                      TextOf(value == 0.0 ? 0.0 : value, 15));
        }
    }
    EXPECT_EQ(CLabelListDecoder::Format(-0.0, buffer), "0");
    EXPECT_EQ(CLabelListDecoder::Format(-std::nan(""), buffer), "nan");
}
} // namespace
