// SPDX-License-Identifier: MIT
#include "KWEnumerationsChannels.h"
#include "KWTexts.h"
#include "zel/RuleTree.h"

namespace
{
/** Switches, modes and functions: there and back restores everything. */
const char* const kWays[] = {
    "Vertical/Channel[0]/Enabled",
    "Vertical/Channel[1]/Enabled",
    "Vertical/Channel[2]/Enabled",
    "Vertical/Channel[3]/Enabled",
    "Logic/Enabled",
    "Logic/LogicChannel[0]/Enabled",
    "SerialBus/Enabled",
    "Trigger/Type",
    "Mathematics/Enabled",
    "FFT/State",
    "Horizontal/ZELMode",
    "XY/State",
    "Mask/Enabled",
    "Diagrams/Layout",
    "Trigger/RepetitionMode",
    "Control/SMMode/OperationMode",
    "Vertical/Channel[0]/ProbeType",
    "Meter/MeterType",
    "Meter/Mode",
    "Counter/CounterChannel[0]/MeasurementType",
    "Harmonic/HarmonicStandard/Standard",
    "Spectrum/MagnitudeUnit",
    "Measurements/Measurement[0]/Type",
};

const QList<QByteArray> kTops = {"Control",
                                 "Diagrams",
                                 "Vertical",
                                 "Logic",
                                 "Horizontal",
                                 "Trigger",
                                 "Cursor",
                                 "Mathematics",
                                 "Mask",
                                 "Measurements",
                                 "XY",
                                 "FFT",
                                 "Spectrum",
                                 "Harmonic",
                                 "Meter",
                                 "Counter",
                                 "SerialBus",
                                 "Vertical/Channel",
                                 "Logic/LogicChannel"};

struct t_Setting
{
    std::shared_ptr<IDbProperty> property;
    QString text;
    bool isChosen; ///< by the user or by default; else it stands in for what can not be now
};

using t_Settings = std::vector<t_Setting>;

t_Settings SettingsOf(const CRuleTree& tree)
{
    t_Settings settings;
    for (const auto& group : GroupsFrom(tree.root->GetDbObject()))
    {
        for (INT32 i = 0; i < group->GetPropertyCount(); ++i)
        {
            const auto property = group->GetProperty(i);
            if (property->GetObjectType() == eOBJECTTYPE_SETTING)
            {
                settings.push_back(
                    {property, property->GetText(), KW_GetUserValueText(*property).text.isNull()});
            }
        }
    }
    return settings;
}

/** Names what a user chose and what is another value now. */
QString Lost(const t_Settings& settings)
{
    QStringList lost;
    for (const t_Setting& setting : settings)
    {
        if (setting.isChosen && setting.property->GetText() != setting.text)
        {
            lost.append(setting.property->GetPath() + QStringLiteral(": ") + setting.text +
                        QStringLiteral(" became ") + setting.property->GetText());
        }
    }
    return lost.join(QStringLiteral(", "));
}

bool IsOn(const CRuleTree& tree, const QByteArray& path)
{
    return tree.Text(path) == QLatin1String("ON");
}

/** Whether there are samples of a channel. */
bool HasStream(const CRuleTree& tree, const QString& channel)
{
    const QByteArray place = "[" + channel.mid(1).toLatin1() + "]";
    switch (channel[0].toLatin1())
    {
    case 'C':
    {
        const QByteArray index = QByteArray::number(channel.mid(1).toInt() - 1);
        return IsOn(tree, "Vertical/Channel[" + index + "]/Enabled") &&
               tree.Text("Vertical/AnalogChannelMapping[" + index + "]/AssociatedSignalStream") !=
                   QLatin1String("NONE");
    }
    case 'D':
        return IsOn(tree, "Logic/Enabled") && IsOn(tree, "Logic/LogicChannel" + place + "/Enabled");
    case 'M':
        return IsOn(tree, "Mathematics/Enabled") &&
               Property(tree.root, "Mathematics/Unit")->GetValidity() == eKW_VALIDITY_VALID;
    case 'R':
        return IsOn(tree, "Vertical/ReferenceCurve/Enabled") &&
               tree.Number("Vertical/ReferenceCurve/ReferenceCurveAttributes/RecordLength") > 0.0;
    default:
        return true;
    }
}

/** Selected sources that have no samples, though others have. */
QString SelectedWithoutStream(const CRuleTree& tree, const t_Settings& settings)
{
    QStringList wrong;
    for (const auto& [property, text, isChosen] : settings)
    {
        const bool isSelector =
            property->GetEnumNameInfo() == &GetStaticEnumNameInfo<KW_ZEL_CHANNEL>() &&
            !property->GetPath().endsWith(QLatin1String("ElementSource"));
        const QStringList others = property->GetValueTexts();
        const bool hasOthers = !others.isEmpty() && others != QStringList{QStringLiteral("NONE")};
        if (isSelector && hasOthers && !HasStream(tree, property->GetText()))
        {
            wrong.append(property->GetPath() + QStringLiteral(" = ") + property->GetText());
        }
    }
    return wrong.join(QStringLiteral(", "));
}

/** Channels that are on and not acquired. */
QString EnabledWithoutStream(const CRuleTree& tree)
{
    QStringList wrong;
    for (const char* const channel : {"C1", "C2", "C3", "C4"})
    {
        const QByteArray index = QByteArray::number(channel[1] - '1');
        if (IsOn(tree, "Vertical/Channel[" + index + "]/Enabled") &&
            !HasStream(tree, QString::fromLatin1(channel)))
        {
            wrong.append(QString::fromLatin1(channel));
        }
    }
    return wrong.join(QStringLiteral(", "));
}

/** One switch to another value and back. */
void GoThereAndBack(const CRuleTree& tree, CDice& dice)
{
    const char* const way = kWays[dice.Below(static_cast<INT32>(std::size(kWays)))];
    const auto property = Property(tree.root, way);
    const QString here = property->GetText();
    const QString there = dice.Of(property->GetValueTexts());
    SCOPED_TRACE(testing::Message()
                 << way << " from " << here.toStdString() << " to " << there.toStdString());
    const t_Settings settings = SettingsOf(tree);
    EXPECT_LE(property->SetText(there), eKW_ACC_WARNING);
    // The modes of the spectrum are taken as what they mean: its own mode, in that of the scope.
    const bool isPlace = property->GetText() == there;
    EXPECT_LE(property->SetText(here), eKW_ACC_WARNING);
    EXPECT_EQ(isPlace ? Lost(settings).toStdString() : "", "");
}
} // namespace

TEST(Principles, AreBrokenSomewhere)
{
    constexpr UINT32 kTrees = 12;
    constexpr int kWrites = 60;
    for (UINT32 seed = 1; seed <= kTrees && !HasFailure(); ++seed)
    {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        CDice dice(seed);
        const CRuleTree tree;
        tree.root->EnableHistory(false);
        const t_Settings settings = SettingsOf(tree);
        for (int i = 0; i < kWrites && !HasFailure(); ++i)
        {
            SCOPED_TRACE(DoAnything(tree, kTops, dice).toStdString());
            EXPECT_EQ(SelectedWithoutStream(tree, settings).toStdString(), "");
            EXPECT_EQ(EnabledWithoutStream(tree).toStdString(), "");
            GoThereAndBack(tree, dice);
        }
    }
}
