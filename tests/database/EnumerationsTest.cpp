// SPDX-License-Identifier: MIT
// How names of values are found. That they are those which clients, files and remote control know,
// the reference of the settings shows, against which the tests of zelctl compare them all.

#include "EnumNameInfo.h"
#include "KWEnumerations.h"

#include <gtest/gtest.h>
#include <limits>

TEST(Enumerations, AmbiguousNameIsAnsweredAsOne)
{
    using eMATCH = CEnumNameInfo::eMATCH;
    const CEnumNameInfo& units = GetStaticEnumNameInfo<KW_UNIT>();
    for (const auto& [text, lowest] :
         {std::pair{"%", eKW_UNIT_LEVEL_PCT}, {"dB", eKW_UNIT_LEVEL_DB}})
    {
        const auto found = units.ConvertName(QString::fromUtf8(text), KW_ENUM_NAME::Display);
        EXPECT_EQ(found.match, eMATCH::Several) << text;
        EXPECT_EQ(found.value, lowest) << text;
    }
    EXPECT_EQ(units.ConvertName(QStringLiteral("COUNT_PCT")).value, eKW_UNIT_COUNT_PCT);
    EXPECT_EQ(units.ConvertName(QStringLiteral("LEVEL_DB_FIXED")).value, eKW_UNIT_LEVEL_DB_FIXED);
}

TEST(Enumerations, NameOfOneKindIsFoundAsAnother)
{
    const CEnumNameInfo& info = GetStaticEnumNameInfo<KW_ZEL_DMM_METER_TYPE>();
    const std::pair<KW_ENUM_NAME, const char*> names[] = {{KW_ENUM_NAME::Display, "Diode Test"},
                                                          {KW_ENUM_NAME::Short, "Diode"},
                                                          {KW_ENUM_NAME::Remote, "DIOD"},
                                                          {KW_ENUM_NAME::Serial, "DIODE"}};
    for (const auto& [kind, text] : names)
    {
        const auto found = info.ConvertName(QString::fromUtf8(text), kind);
        EXPECT_EQ(found.value, eKW_ZEL_DMM_METER_TYPE_DIODE) << text;
        EXPECT_EQ(found.match, CEnumNameInfo::eMATCH::One) << text;
        EXPECT_EQ(info.ConvertName(QString::fromUtf8(text).toLower(), kind).value, found.value)
            << text;
    }
    for (const char* text : {"Diode Test", "DIOD", "", "DIODE "})
    {
        EXPECT_EQ(info.ConvertName(QString::fromUtf8(text)).match, CEnumNameInfo::eMATCH::None)
            << text;
        EXPECT_EQ(info.ConvertName(QString::fromUtf8(text)).value, -1) << text;
    }
}

TEST(Enumerations, ValueOutsideTheTypeOrBlankEntryHasAName)
{
    const CEnumNameInfo& probes = GetStaticEnumNameInfo<KW_PROBE_TYPE>();
    for (const INT32 value : {-1, probes.GetEnumSize(), std::numeric_limits<INT32>::max()})
    {
        EXPECT_TRUE(probes.GetName(value).isNull());
        EXPECT_TRUE(probes.GetSerialName(value).isNull());
        EXPECT_FALSE(probes.IsValue(value));
        EXPECT_FALSE(probes.GetNumber(value));
    }
    EXPECT_EQ(probes.GetName(eKW_PROBE_TYPE_6), QStringLiteral(""));
    EXPECT_FALSE(probes.GetName(eKW_PROBE_TYPE_6).isNull()) << "blank, not missing";
    EXPECT_TRUE(probes.GetShortName(eKW_PROBE_TYPE_6).isNull());
    const CEnumNameInfo& sign = GetStaticEnumNameInfo<KW_SIGN>();
    EXPECT_TRUE(sign.GetName(0).isNull());
    EXPECT_TRUE(sign.GetRemoteName(1).isNull());
    EXPECT_EQ(sign.GetSerialName(0), QStringLiteral("NEGATIVE"));
    EXPECT_EQ(sign.GetSerialName(1), QStringLiteral("POSITIVE"));
}

TEST(Enumerations, OwnTableForgetsOrTakesTooMuch)
{
    CEnumNameInfo info(2, QStringLiteral("KW_TEST"));
    info.SetName(0, QStringLiteral("Zero"));
    info.SetShortName(0, QStringLiteral("0"));
    info.SetRemoteName(1, QStringLiteral("ONE"));
    info.SetSerialName(1, QStringLiteral("ONE"));
    info.SetName(2, QStringLiteral("Two"));
    info.SetName(-1, QStringLiteral("Minus"));
    EXPECT_EQ(info.GetName(0), QStringLiteral("Zero"));
    EXPECT_EQ(info.GetShortName(0), QStringLiteral("0"));
    EXPECT_TRUE(info.GetName(1).isNull());
    EXPECT_TRUE(info.GetName(2).isNull());
    EXPECT_EQ(info.ConvertName(QStringLiteral("Two"), KW_ENUM_NAME::Display).value, -1);
    EXPECT_EQ(info.ConvertName(QStringLiteral("ONE"), KW_ENUM_NAME::Remote).value, 1);
    EXPECT_EQ(CEnumNameInfo(-3, QString()).GetEnumSize(), 0);
}
