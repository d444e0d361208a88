// SPDX-License-Identifier: MIT
#include "LabelList/LabelListConversion.h"
#include "LabelList/LabelListMessage.h"
#include "LabelList/LabelListSignal.h"

#include <gtest/gtest.h>

#include <locale>
#include <tuple>
#include <type_traits>

namespace
{
CLabelListSignal Signal(const std::string& name, const std::string& unit = "", UINT32 startBit = 8)
{
    return {name,
            startBit,
            12,
            eKW_ENDIANNESS_LITTLE_ENDIAN,
            eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT,
            0.5,
            -40.0,
            -100.0,
            215.0,
            unit};
}

// That copies are independent stands in the fuzz targets, what is shown of a message in zelctl's
// test.

TEST(LabelListSignal, BuildsKeyThatDoesNotSort)
{
    EXPECT_EQ(Signal("Rpm").getSignalKey(), "0008Rpm");
    EXPECT_EQ(Signal("", "", 0).getSignalKey(), "0000");
    EXPECT_EQ(Signal("A", "", 9999).getSignalKey(), "9999A");
    EXPECT_EQ(Signal("A", "", 4294967295U).getSignalKey(), "4294967295A");
    EXPECT_LT(Signal("Z", "", 9).getSignalKey(), Signal("A", "", 10).getSignalKey());
}

TEST(LabelListSignal, MisplacesCursor)
{
    CLabelListSignal signal;
    QByteArray label = "untouched";
    EXPECT_FALSE(signal.getSignalEnumValue(3, label));
    EXPECT_EQ(label, "untouched");

    signal.addSignalEnumValue({3, "Third"});
    signal.addSignalEnumValue({1, "First"});
    EXPECT_EQ(signal.getCurrentEnumIndex(), 0U);
    EXPECT_EQ(signal.getCurrentEnumLabel(), "");
    EXPECT_TRUE(signal.getSignalEnumValue(3, label));
    EXPECT_EQ(label, "Third");
    EXPECT_EQ(signal.getCurrentEnumIndex(), 3U);
    signal.addSignalEnumValue({2, "Second"});
    signal.addSignalEnumValue({3, "Drei"});
    EXPECT_EQ(signal.getCurrentEnumLabel(), "Drei");
    EXPECT_FALSE(signal.getSignalEnumValue(4, label));
    EXPECT_EQ(label, "");
    EXPECT_EQ(signal.getCurrentEnumIndex(), 0U);
    EXPECT_EQ(signal.getCurrentEnumLabel(), "");
}

TEST(LabelListSignal, SwapsFieldsOrLosesLabelsWithNewParameters)
{
    CLabelListSignal signal = Signal("Gear");
    signal.addSignalEnumValue({7, "Park"});
    EXPECT_EQ(signal.getUnit(), "");
    signal.setParameters("Rpm", 8, 12, eKW_ENDIANNESS_LITTLE_ENDIAN,
                         eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT, 0.5, -40.0, -100.0, 215.0,
                         "rpm");
    const auto fields = [](const CLabelListSignal& s)
    {
        return std::tuple(s.getName(), s.getStartBit(), s.getBitLength(), s.getEndianness(),
                          s.getValueType(), s.getFactor(), s.getOffset(), s.getMinimum(),
                          s.getMaximum(), s.getUnit());
    };
    EXPECT_EQ(fields(signal), std::tuple(std::string("Rpm"), 8U, 12U, eKW_ENDIANNESS_LITTLE_ENDIAN,
                                         eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT, 0.5, -40.0,
                                         -100.0, 215.0, std::string("rpm")));
    EXPECT_EQ(fields(Signal("Rpm", "rpm")), fields(signal)) << "as those of the constructor";
    QByteArray label;
    EXPECT_TRUE(signal.getSignalEnumValue(7, label));
}

TEST(LabelListMessage, SwapsFieldsOrLosesSignalsWithNewParameters)
{
    static_assert(std::is_polymorphic_v<CLabelListMessage>);
    const auto fields = [](const CLabelListMessage& m)
    {
        return std::tuple(m.getName(), m.getIdentifierFormat(), m.getIdentifier(), m.getLength(),
                          m.getCount());
    };
    CLabelListMessage message;
    EXPECT_EQ(fields(message), std::tuple(std::string(), std::string("11"), 0U, 0U, 0));
    message.addSignal({"a", Signal("A")});
    message.setParameters("Engine", "29", 0x1FFFFFFF, 8);
    EXPECT_EQ(fields(message),
              std::tuple(std::string("Engine"), std::string("29"), 0x1FFFFFFFU, 8U, 0));
    EXPECT_EQ(fields(CLabelListMessage("Engine", "29", 0x1FFFFFFF, 8)), fields(message));
    EXPECT_TRUE(message.hasSignal("a"));
}

TEST(LabelListMessage, FilesSignalsUnderWrongKeyOrOrder)
{
    CLabelListMessage message;
    message.addSignal({"b", Signal("First")});
    message.addSignal({"b", Signal("Second")});
    message.addSignal({"\xC3\xA4", Signal("Umlaut")});
    message.addSignal({"B", Signal("Capital")});
    message.addSignal({QByteArray("b\0c", 3), Signal("Zero")});
    EXPECT_EQ(message.CreateMessageLabel(), ":\n- Capital\n- Second\n- Zero\n- Umlaut");
    EXPECT_FALSE(message.hasSignal("First"));

    EXPECT_TRUE(message.updateSignalValueType("b", eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM));
    EXPECT_TRUE(message.addSignalEnumValue("b", {1, "On"}));
    EXPECT_FALSE(message.updateSignalValueType("x", eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM));
    EXPECT_FALSE(message.addSignalEnumValue("x", {1, "On"}));
    EXPECT_EQ(message.getSignals().size(), 4U);
    const CLabelListSignal& signal = message.getSignals().at("b");
    EXPECT_EQ(signal.getValueType(), eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM);
    EXPECT_EQ(signal.getSignalEnumValues().at(1), "On");
}

class CCommaDecimals : public std::numpunct<char>
{
    char do_decimal_point() const override { return ','; }
};

// Which bits have which value stands in tests/vectors.
TEST(LabelListPhysical, FollowsLocale)
{
    const std::locale previous =
        std::locale::global(std::locale(std::locale::classic(), new CCommaDecimals));
    EXPECT_EQ(getPhysicalValue("1", eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT, 0.5, 0.0),
              "0.5");
    std::locale::global(previous);
}
} // namespace
