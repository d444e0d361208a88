// SPDX-License-Identifier: MIT
// What users read and write of the tree: meanings, numbers with units, names of values, secrets.

#include "EnumNameInfo.h"
#include "IKWFunctionZEL.h"
#include "KWEnumerations.h"
#include "KWTexts.h"
#include "TreeWalk.h"

#include <QRegularExpression>
#include <gtest/gtest.h>

namespace
{
constexpr char kRefused[] = "refused";

struct t_Reading
{
    const char* written;
    KW_UNIT unit;
    const char* number; ///< exact decimal text, or kRefused
    const char* shown = nullptr;
};

const t_Reading kReadings[] = {
    {"1.5 MHz", eKW_UNIT_FREQ_HZ, "1500000", "1.5 MHz"},
    {"1.5mhz", eKW_UNIT_FREQ_HZ, kRefused},
    {"100 ns/div", eKW_UNIT_FREQ_S_DIV, "0.0000001", "100 ns/div"},
    {" 20ms ", eKW_UNIT_FREQ_S_DIV, "0.02", "20 ms/div"},
    {"0.1 m", eKW_UNIT_LEVEL_V, "0.0001", "100 µV"},
    {"2 uV", eKW_UNIT_LEVEL_V, "0.000002", "2 µV"},
    {"2 μV", eKW_UNIT_LEVEL_V, "0.000002", "2 µV"},
    {"20 mV", eKW_UNIT_LEVEL_MILLI_V, "20", "20 mV"},
    {"1.5 V", eKW_UNIT_LEVEL_MILLI_V, "1500", "1.5 V"},
    {"0.5 mW", eKW_UNIT_LEVEL_MILLI_W, "0.5", "500 µW"},
    {"1e3 k", eKW_UNIT_FREQ_HZ, "1000000", "1 MHz"},
    {"−5", eKW_UNIT_LEVEL_V, "-5", "-5 V"},
    {"50%", eKW_UNIT_COUNT_PCT, "50", "50 %"},
    {"4.7 kohm", eKW_UNIT_IMPEDANCE_OHM, "4700", "4.7 kΩ"},
    {"1234.567891234", eKW_UNIT_LEVEL_V, "1234.567891234", "1.23456789 kV"},
    {"99999.99999", eKW_UNIT_FREQ_HZ, "99999.99999", "100 kHz"},
    {"1e-30", eKW_UNIT_LEVEL_V, "0.000000000000000000000000000001"},
    {"3k", eKW_UNIT_NOT_DEFINED, "3000", "3000"},
    {"-inf", eKW_UNIT_LEVEL_V, "-inf", "-inf V"},
    {"5 V", eKW_UNIT_FREQ_HZ, kRefused},
    {"5 mm", eKW_UNIT_LEVEL_V, kRefused},
    {"k", eKW_UNIT_LEVEL_V, kRefused},
    {"1.2.3", eKW_UNIT_LEVEL_V, kRefused},
    {"1,5", eKW_UNIT_LEVEL_V, kRefused},
    {"", eKW_UNIT_LEVEL_V, kRefused},
};

class ClientTexts : public testing::Test
{
protected:
    std::shared_ptr<IKWFunctionZEL> m_root = GetZELRoot();
    std::shared_ptr<IDbGroup> m_top = m_root->GetDbObject();

    std::shared_ptr<IDbProperty> Property(const char* path)
    {
        return std::dynamic_pointer_cast<IDbProperty>(m_top->Find(QString::fromLatin1(path)));
    }
};
} // namespace

TEST(Texts, NumberIsReadOrShownAsAnother)
{
    for (const t_Reading& reading : kReadings)
    {
        const QString untouched = QString::fromLatin1(kRefused);
        QString number = untouched;
        double value = 0.0;
        const QString written = QString::fromUtf8(reading.written);
        const KW_ACCEPTANCE code = KW_ParseNumber(written, reading.unit, number);
        EXPECT_EQ(KW_ParseNumber(written, reading.unit, value), code) << reading.written;
        EXPECT_EQ(number.toStdString(), reading.number) << reading.written;
        EXPECT_EQ(code, number == untouched ? eKW_ACC_BAD_TEXT : eKW_ACC_OK) << reading.written;
        if (reading.shown != nullptr)
        {
            EXPECT_EQ(KW_FormatNumber(number, reading.unit).toStdString(), reading.shown);
            EXPECT_EQ(KW_FormatNumber(value, reading.unit).toStdString(), reading.shown);
        }
    }
}

TEST(Texts, ValueIsNotFoundByEachOfItsNames)
{
    const CEnumNameInfo& names = GetStaticEnumNameInfo<KW_ZEL_TRIGGER_TYPE>();
    for (const KW_ENUM_NAME kind :
         {KW_ENUM_NAME::Serial, KW_ENUM_NAME::Remote, KW_ENUM_NAME::Display})
    {
        INT32 value = -1;
        const QString name = names.GetText(kind, eKW_ZEL_TRIGGER_TYPE_RUNT).toLower();
        EXPECT_EQ(KW_ParseEnum(names, name, value), eKW_ACC_OK) << name.toStdString();
        EXPECT_EQ(value, eKW_ZEL_TRIGGER_TYPE_RUNT) << name.toStdString();
    }
    CEnumNameInfo twins(3, QStringLiteral("TWINS"));
    twins.SetSerialName(0, QStringLiteral("A"));
    twins.SetSerialName(1, QStringLiteral("a"));
    INT32 value = -1;
    EXPECT_EQ(KW_ParseEnum(twins, QStringLiteral(""), value), eKW_ACC_UNKNOWN_VALUE);
    EXPECT_EQ(KW_ParseEnum(twins, QStringLiteral("0"), value), eKW_ACC_UNKNOWN_VALUE);
    EXPECT_EQ(KW_ParseEnum(twins, QStringLiteral("3"), value), eKW_ACC_UNKNOWN_VALUE);
    EXPECT_EQ(value, -1);
    EXPECT_EQ(KW_ParseEnum(twins, QStringLiteral("2"), value), eKW_ACC_OK);
    EXPECT_EQ(KW_FormatEnum(twins, value), QStringLiteral("2"));
}

TEST_F(ClientTexts, NodeHasNoMeaningOrThatOfAnother)
{
    WalkNodes(m_top, [](const auto& node)
              { EXPECT_FALSE(KW_GetMeaning(*node).isEmpty()) << node->GetPath().toStdString(); });
    for (const auto& [path, meaning] : std::initializer_list<std::pair<const char*, const char*>>{
             {"", "The instrument."},
             {"Setup/BeepOnKey", "Whether every key press beeps."},
             {"Vertical/Channel", "One analog input."},
             {"Vertical/Channel/ActiveIndex", "Index of the active item; -1 when none is."},
             {"Setup/Wireless/WirelessClient/FixedAddress",
              "Address that is used without automatic assignment."},
             {"Setup/Wireless/WirelessClient/Disconnect", "Leaves the network."}})
    {
        EXPECT_EQ(KW_GetMeaning(*m_top->Find(QString::fromLatin1(path))).toStdString(), meaning);
    }
    const auto lost = m_top->Find(QStringLiteral("Setup/BeepOnKey"));
    m_top.reset();
    m_root.reset();
    EXPECT_TRUE(KW_GetMeaning(*lost).isEmpty());
}

TEST_F(ClientTexts, ShownValueReadsBackAsAnother)
{
    Walk<IDbProperty>(
        m_top,
        [](const auto& node)
        {
            const IDbProperty& property = *node;
            const std::string path = property.GetPath().toStdString();
            const KW_ValueText value = KW_GetValueText(property);
            const bool isPlain =
                property.GetEnumNameInfo() != nullptr || value.type.contains(u"int");
            if (!isPlain && value.type != QLatin1String("double"))
            {
                return;
            }
            QString exact;
            QString rounded;
            EXPECT_EQ(KW_ParseValue(property, KW_FormatValue(value, true), exact), eKW_ACC_OK)
                << path;
            EXPECT_EQ(KW_ParseValue(property, KW_FormatValue(value), rounded), eKW_ACC_OK) << path;
            const bool isSame = exact.toDouble() == value.text.toDouble();
            EXPECT_TRUE(exact == value.text || (!isPlain && (isSame || exact == u"nan")))
                << path << exact.toStdString();
        });
}

TEST_F(ClientTexts, PropertyReadsWhatItsKindCanNotMean)
{
    const auto count = Property("Horizontal/RecordLength");
    QString text = QStringLiteral("as before");
    EXPECT_EQ(KW_ParseValue(*count, QStringLiteral("0.5"), text), eKW_ACC_BAD_TEXT);
    EXPECT_EQ(KW_ParseValue(*count, QStringLiteral("inf"), text), eKW_ACC_BAD_TEXT);
    EXPECT_EQ(KW_ParseValue(*count, QStringLiteral("0x"), text), eKW_ACC_BAD_TEXT);
    EXPECT_EQ(KW_ParseValue(*count, QStringLiteral("0x1G"), text), eKW_ACC_BAD_TEXT);
    EXPECT_EQ(text, QStringLiteral("as before"));
    EXPECT_EQ(KW_ParseValue(*count, QStringLiteral("1.5k"), text), eKW_ACC_OK);
    EXPECT_EQ(text, QStringLiteral("1500"));
    EXPECT_EQ(KW_ParseValue(*count, QStringLiteral("0x1F"), text), eKW_ACC_OK);
    EXPECT_EQ(text, QStringLiteral("31"));
}

TEST_F(ClientTexts, SecretIsToldOrSavedWithTheUsersSettings)
{
    const QRegularExpression secretName(QStringLiteral("Passphrase|Password|Secret|Pin$|PIN"));
    QStringList secrets;
    Walk<IDbProperty>(m_top,
                      [&](const auto& node)
                      {
                          IDbProperty& property = *node;
                          const bool named = property.GetNodeName().contains(secretName);
                          EXPECT_EQ(KW_IsSecret(property), named)
                              << property.GetPath().toStdString();
                          if (!KW_IsSecret(property))
                          {
                              return;
                          }
                          secrets.append(property.GetPath());
                          EXPECT_EQ(property.GetSaveRecallType() & eSAVERECALL_SETTINGS, 0);
                          const QString empty = KW_FormatValue(KW_GetValueText(property), true);
                          EXPECT_EQ(property.SetText(QStringLiteral("correct horse")), eKW_ACC_OK);
                          EXPECT_EQ(KW_FormatValue(KW_GetValueText(property), true), empty);
                      });
    EXPECT_EQ(secrets.size(), 2);
}
