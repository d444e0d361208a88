// SPDX-License-Identifier: MIT
#include "EnumNameInfo.h"
#include "IKWFunctionCANBusSettings.h"
#include "IKWFunctionLabelListSettings.h"
#include "IKWFunctionSENTBusSettings.h"
#include "IKWFunctionSerialBus.h"
#include "LabelList/LabelListFile.h"
#include "LabelList/LabelListTree.h"
#include "zel/RuleTree.h"

#include <algorithm>
#include <limits>
#include <map>
#include <set>

namespace
{
// Lines, standard rates, labels and bits of signals are looked at in the walks, too.
const t_Rule kBusRules[] = {
    {"StandardRateLeavesTheNumber", "", "SerialBus/CANBusSettings/StandardBitRate = 250_KBPS",
     ".BitRate = 250000"},
    {"NumberLeavesTheStandard", "", "SerialBus/CANBusSettings/BitRate = 125000",
     ".StandardBitRate = 125_KBPS"},
    {"OddNumberIsNoUserRate", "", "SerialBus/CANBusSettings/BitRate = 125001",
     ".StandardBitRate = USER"},
    {"UserIsTakenBack", "", "SerialBus/CANBusSettings/StandardBitRate = USER",
     ".StandardBitRate = USER; .BitRate = 500000"},
    {"RateBehindUserIsNotFound", "", "SerialBus/UARTBusSettings/BitRate = 31250",
     ".StandardBitRate = 31250"},
    {"UartUserIsNotFound", "", "SerialBus/UARTBusSettings/BitRate = 31251",
     ".StandardBitRate = USER"},
    {"DataPhaseIsSlower",
     "SerialBus/CANBusSettings/Standard = CAN_FD; .StandardDataBitRate = 500_KBPS",
     ".BitRate = 800000", ".DataBitRate = 800000; .StandardDataBitRate = 800_KBPS"},
    {"DataRateDoesNotReturn",
     "SerialBus/CANBusSettings/Standard = CAN_FD; .StandardDataBitRate = 500_KBPS; "
     ".BitRate = 800000",
     ".BitRate = 100000", ".DataBitRate = 500000; .StandardDataBitRate = 500_KBPS"},
    {"DataRateBelowBitRateIsOffered", "SerialBus/CANBusSettings/Standard = CAN_FD",
     ".StandardDataBitRate = 250_KBPS", ".DataBitRate = 2000000", eKW_ACC_NOT_ENABLED},
    {"PlainCanHasFdFields", "SerialBus/CANBusSettings/Standard = CAN_FD", ".Standard = CAN",
     ".DataBitRate = 2000000!; .ProtocolStandard = ISO!; "
     "Trigger/CANBusTriggerSettings/FDFBit = ANY!"},
    {"FdHasNoFdFields", "", "SerialBus/CANBusSettings/Standard = CAN_FD",
     "Trigger/CANBusTriggerSettings/FDFBit = ANY"},
    {"LinesAreNotSwapped", "SerialBus/I2CBusSettings/DataSource = C4", ".SwapLines",
     ".ClockSource = C4; .DataSource = C1"},
    {"SourceIsSwitchedOff", "", "Vertical/Channel[0]/Enabled = OFF",
     "SerialBus/I2CBusSettings/ClockSource = C3; .DataSource = C2; "
     "..CANBusSettings/BusChannelSettings[0]/Source = C2"},
    {"ChannelThatIsOffIsOffered", "", "SerialBus/I2CBusSettings/ClockSource = D0",
     ".ClockSource = C1", eKW_ACC_NOT_ENABLED},
    {"UnusedLineTakesAChannelAway", "", "SerialBus/SPIBusSettings/MosiSource = C4",
     ".MisoSource = C4; .ClockSource = C1"},
    {"LineInUseSharesItsChannel", "SerialBus/SPIBusSettings/MosiSource = C4", ".MisoEnabled = ON",
     ".MosiSource = C4; .MisoSource = C2"},
    {"SelectLineWithTimeout", "", "SerialBus/SPIBusSettings/FrameMode = TIMEOUT",
     ".SelectPolarity = ACTIVE_LOW!; .IdleTime = 1e-05"},
    {"SecondUartLineSharesItsChannel",
     "SerialBus/UARTBusSettings/BusChannelSettings[0]/Source = C2",
     "..BusChannelSettings[1]/Enabled = ON", ".Source = C1"},
    {"UartTriggerWatchesAnotherLine", "",
     "SerialBus/UARTBusSettings/BusChannelSettings[0]/Source = C3",
     "Trigger/UARTBusTriggerSettings/Source = C3; .Source.values = C3"},
    {"EndOfFrameHasOtherLengthThanWords", "SerialBus/UARTBusSettings/FrameMode = PATTERN",
     ".DataLength = 9_BIT", ".EndOfFramePattern = 000001010"},
    {"ExtendedIdentifierIsTooShort", "", "Trigger/CANBusTriggerSettings/IdentifierType = EXTENDED",
     ".IdentifierPatternRelation[0]/Pattern = XXXXXXXXXXXXXXXXXXXXXXXXXXXXX"},
    {"IdentifierPatternHasAnyLength", "",
     "Trigger/CANBusTriggerSettings/IdentifierPatternRelation[0]/Pattern = 101",
     ".Pattern = XXXXXXXX101", eKW_ACC_WARNING},
    {"AnyIdentifierIsCompared", "", "Trigger/CANBusTriggerSettings/IdentifierType = ANY",
     ".IdentifierPatternRelation[0]/Relation = EQUAL!"},
    {"ErrorFramesHaveIdentifiers", "Trigger/CANBusTriggerSettings/FrameType = ERROR",
     ".Type = IDENTIFIER", ".FrameType = DATA; .FrameType.values = ANY|DATA|REMOTE"},
    {"AddressHasElevenBits", "", "Trigger/I2CBusTriggerSettings/AddressType = 10_BIT",
     ".IdentifierPatternRelation[0]/Pattern = XXXXXXXXXX"},
    {"LinPatternIsLongerThanTheData",
     "Trigger/LINBusTriggerSettings/DataPatternRelation[0]/Pattern = 1111111100000000",
     "..DataLength = 1", ".DataPatternRelation[0]/Pattern = 00000000"},
    {"UartPatternHasOtherWords", "SerialBus/UARTBusSettings/DataLength = 5_BIT",
     "Trigger/UARTBusTriggerSettings/PatternLength = 2",
     ".DataPatternRelation[0]/Pattern = XXXXXXXXXX"},
    {"UartPatternExceedsItsProperty", "Trigger/UARTBusTriggerSettings/PatternLength = 8",
     "SerialBus/UARTBusSettings/DataLength = 9_BIT",
     "Trigger/UARTBusTriggerSettings/PatternLength = 7"},
    {"OrderedRelationKnowsX", "",
     "Trigger/CANBusTriggerSettings/DataPatternRelation[0]/Relation = IN_RANGE",
     ".Pattern = 00000000; .UpperPattern = 11111111"},
    {"RangeIsUpsideDown",
     "Trigger/CANBusTriggerSettings/DataPatternRelation[0]/Relation = IN_RANGE; "
     ".Pattern = 00001000",
     ".UpperPattern = 00000100", ".Pattern = 00000100"},
    {"ClearedPatternKeepsBits",
     "Trigger/SENTBusTriggerSettings/Status = 1010; "
     ".DataPatternRelation[0]/Relation = LESS_THAN; .Pattern = 1111",
     "..ClearPatterns",
     ".Status = XXXX; .DataPatternRelation[0]/Relation = EQUAL; .Pattern = XXXX"},
    {"SettingsOfTheProtocolStay",
     "SerialBus/Protocol = CAN; .CANBusSettings/BitRate = 1000; "
     "..SPIBusSettings/WordLength = 9",
     "..ResetSettings",
     ".CANBusSettings/StandardBitRate = 500_KBPS; ..SPIBusSettings/WordLength = 9"},
    {"ClearedResultsStay", "+3 SerialBus/SPIBusResults/SPIBusFrame", "..BusResults/Clear",
     ".NumberOfFrames = 0-; ..SPIBusResults/NumberOfFrames = 0-; "
     "..TrackInTable/SelectedIndex = -1"},
    {"MarkedIndexIsAnotherFrame", "+3 SerialBus/SPIBusResults/SPIBusFrame",
     "..TrackInTable/SelectedIndex = 1",
     ".SelectedFrame = SerialBus/SPIBusResults/SPIBusFrame[1]; .FrameTime = 0"},
    {"MarkedFrameHasAnotherIndex", "+3 SerialBus/SPIBusResults/SPIBusFrame",
     "..TrackInTable/SelectedFrame = SerialBus/SPIBusResults/SPIBusFrame[2]", ".SelectedIndex = 2"},
    {"ForeignItemIsMarked", "+3 SerialBus/SPIBusResults/SPIBusFrame; ..TrackInTable/First",
     ".SelectedFrame = Vertical/Channel[2]",
     ".SelectedFrame = SerialBus/SPIBusResults/SPIBusFrame[0]", eKW_ACC_WARNING},
    {"DiagramStaysBehind",
     "+ SerialBus/SPIBusResults/SPIBusFrame; @.SPIBusFrame[0]/StartTime = 3e-06",
     "SerialBus/TrackInTable/First", ".FrameTime = 3e-06; Horizontal/Position = 3e-06"},
    {"ShownFrameMovesTheDiagram",
     "+ SerialBus/SPIBusResults/SPIBusFrame; @.SPIBusFrame[0]/StartTime = 3e-07; "
     "SerialBus/TrackInTable/CenterInDiagram = OFF",
     ".SelectedIndex = 0", "Horizontal/Position = 0"},
    {"FrameStaysOutOfTheDiagram",
     "+ SerialBus/SPIBusResults/SPIBusFrame; @.SPIBusFrame[0]/StartTime = -3e-06; "
     "SerialBus/TrackInTable/CenterInDiagram = OFF",
     ".SelectedIndex = 0", "Horizontal/Left = -3e-06"},
    {"DiagramFollowsUnasked",
     "+ SerialBus/SPIBusResults/SPIBusFrame; @.SPIBusFrame[0]/StartTime = 3e-06; "
     "SerialBus/TrackInTable/Enabled = OFF",
     ".SelectedIndex = 0", "Horizontal/Position = 0"},
    {"LineKnowsNoThreshold", "",
     "Vertical/Channel[0]/Levels/LogicThresholdSettings[0]/ThresholdType = PECL",
     "SerialBus/CANBusSettings/BusChannelSettings[0]/Threshold = 3.7"},
    {"LineKeepsTheThresholdOfItsFormerSource",
     "Logic/CoupleThresholds = OFF; .LogicThresholdSettings[1]/UserThreshold = 3; "
     "Logic/Enabled = ON; .LogicChannel[5]/Enabled = ON",
     "SerialBus/CANBusSettings/BusChannelSettings[0]/Source = D5", ".Threshold = 3"},
    {"OtherProtocolKeepsTheFrame", "+3 SerialBus/SPIBusResults/SPIBusFrame; ..TrackInTable/Last",
     "..Protocol = I2C", ".TrackInTable/SelectedIndex = -1; .FrameTime = 0-"},
    {"FrameAtTheTriggerIsMissed",
     "+3 SerialBus/SPIBusResults/SPIBusFrame; @.SPIBusFrame[0]/StopTime = -1e-06; "
     "@..SPIBusFrame[2]/StopTime = 1e-06",
     "SerialBus/TrackInTable/SelectAtTrigger", ".SelectedIndex = 1"},
    {"StepLeavesTheTable", "+3 SerialBus/SPIBusResults/SPIBusFrame; ..TrackInTable/Last", ".Next",
     ".SelectedIndex = 2", eKW_ACC_WARNING},
    {"StepsDoNotGoFromErrorToError",
     "+3 SerialBus/SPIBusResults/SPIBusFrame; ..TrackInTable/ErrorsOnly = ON", ".First",
     ".SelectedIndex = -1", eKW_ACC_WARNING},
    {"IdentifierExceedsItsLength",
     "+ SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem; "
     ".SerialBusLabelItem[Label1]/IdentifierLength = 29; .Identifier = 536870911",
     ".IdentifierLength = 11", ".Identifier = 2047"},
    {"FloatBeginsInsideTheLastByteThatItCan",
     "+ SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem; "
     "+ .SerialBusLabelItem[Label1]/SignalTranslation; "
     ".SignalTranslation[Signal1]/Endianness = BIG_ENDIAN; .ValueType = FLOAT",
     ".StartBit = 35", ".StartBit = 39; .BitLength = 32", eKW_ACC_WARNING},
    {"KnobSkipsRawCounts",
     "SerialBus/CANBusSettings/Standard = CAN_FD; + .LabelListSettings/SerialBusLabelItem; "
     "+ .SerialBusLabelItem[Label1]/SignalTranslation",
     ".SignalTranslation[Signal1]/Factor = -0.25",
     ".Offset.step = 0.25; .Minimum.step = 0.25; .Maximum.step = 0.25"},
    {"SignalLimitsCross",
     "SerialBus/CANBusSettings/Standard = CAN_FD; + .LabelListSettings/SerialBusLabelItem; "
     "+ .SerialBusLabelItem[Label1]/SignalTranslation",
     ".SignalTranslation[Signal1]/Minimum = 300", ".Maximum = 300"},
    {"DoubleBeginsTooLate",
     "SerialBus/CANBusSettings/Standard = CAN_FD; + .LabelListSettings/SerialBusLabelItem; "
     "+ .SerialBusLabelItem[Label1]/SignalTranslation; "
     ".SignalTranslation[Signal1]/StartBit = 8",
     ".ValueType = DOUBLE", ".StartBit = 0; .BitLength = 64"},
};

void CheckStandard(const CRuleTree& tree, const QByteArray& group, const QByteArray& name,
                   CFindings& findings)
{
    const auto property = Property(tree.root, group + "Standard" + name);
    const CEnumNameInfo* const names = property->GetEnumNameInfo();
    const auto usual = names->GetNumber(names->ConvertName(property->GetText()).value);
    findings.Check(!usual || *usual == tree.Number(group + name), property->GetPath().toLatin1());
}

/** Lines in use are on, and on different channels as far as there are enough. */
void CheckLines(const CRuleTree& tree, const std::vector<QByteArray>& sources, CFindings& findings)
{
    std::set<QString> on;
    for (const char channel : {'0', '1', '2', '3'})
    {
        const QByteArray path = QByteArray("Vertical/Channel[") + channel + "]/";
        if (tree.Text(path + "Enabled") == QLatin1String("ON"))
        {
            on.insert(tree.Text(path + "ChannelType/Channel"));
        }
    }
    std::set<QString> used;
    for (const QByteArray& source : sources)
    {
        used.insert(tree.Text(source));
        findings.Check(on.empty() || on.count(tree.Text(source)) == 1, source + " is off");
    }
    findings.Check(used.size() >= std::min(sources.size(), on.size()),
                   sources.front() + " shares a channel");
}

void CheckSignal(const CRuleTree& tree, CFindings& findings)
{
    const QByteArray label =
        "SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem[Label1]/";
    const QByteArray signal = label + "SignalTranslation[Signal1]/";
    if (!tree.root->GetDbObject()->Find(QString::fromLatin1(signal.chopped(1))))
    {
        return;
    }
    const double payload = 8.0 * tree.Number(label + "PayloadLength");
    const QString type = tree.Text(signal + "ValueType");
    const double bits = tree.Number(signal + "BitLength");
    const double needed = type == QLatin1String("FLOAT")    ? 32.0
                          : type == QLatin1String("DOUBLE") ? 64.0
                                                            : 1.0;
    const auto start = static_cast<int>(tree.Number(signal + "StartBit"));
    const bool isBig = tree.Text(signal + "Endianness") == QLatin1String("BIG_ENDIAN");
    const int before = isBig ? start / 8 * 8 + 7 - start % 8 : start;
    findings.Check(before + bits <= std::max(payload, needed) && bits >= needed &&
                       (needed == 1.0 || bits == needed),
                   "bits of a signal");
}

/** Of the labels with one identifier one can be on, or all of them. */
void CheckLabels(const CRuleTree& tree, CFindings& findings)
{
    for (const char* const bus : {"CAN", "LIN", "I2C", "SENT"})
    {
        const QByteArray list = QByteArray("SerialBus/") + bus + "BusSettings/LabelListSettings/";
        const auto labels = tree.Items(list + "SerialBusLabelItem");
        std::map<QString, int> on;
        std::map<QString, int> barred;
        for (INT32 i = 0; i < labels->GetCount(); ++i)
        {
            const QByteArray label = labels->GetItemByPosition(i)->GetPath().toUtf8() + '/';
            const QString key =
                tree.Text(label + "IdentifierLength") + u' ' + tree.Text(label + "Identifier");
            on[key] += tree.Text(label + "Enabled") == QLatin1String("ON") ? 1 : 0;
            barred[key] += tree.State(label + "Enabled.values") == QLatin1String("OFF") ? 1 : 0;
        }
        for (const auto& [key, count] : on)
        {
            findings.Check(count < 2 && (count == 1 || barred[key] == 0), list + key.toLatin1());
        }
    }
}

void CheckTrigger(const CRuleTree& tree, CFindings& findings)
{
    const auto size = [&tree](const QByteArray& pattern)
    { return tree.Text("Trigger/" + pattern).size(); };
    findings.Check(size("SPIBusTriggerSettings/DataPatternRelation[0]/Pattern") %
                           static_cast<int>(tree.Number("SerialBus/SPIBusSettings/WordLength")) ==
                       0,
                   "whole words");
    findings.Check(size("CANBusTriggerSettings/DataPatternRelation[0]/Pattern") ==
                       size("CANBusTriggerSettings/DataPatternRelation[0]/UpperPattern"),
                   "patterns of one length");
}

void CheckSpi(const CRuleTree& tree, CFindings& findings)
{
    const QByteArray spi = "SerialBus/SPIBusSettings/";
    std::vector<QByteArray> lines = {spi + "ClockSource"};
    if (tree.Text(spi + "MosiEnabled") == QLatin1String("ON"))
    {
        lines.push_back(spi + "MosiSource");
    }
    if (tree.Text(spi + "FrameMode") == QLatin1String("SELECT"))
    {
        lines.push_back(spi + "SelectSource");
    }
    CheckLines(tree, lines, findings);
}

/** What is saved of a list can be loaded again. */
void CheckList(const IKWFunctionLabelListSettings& labels, CFindings& findings)
{
    KW_LabelList list;
    QByteArray text;
    std::vector<KW_LabelReport> reports;
    findings.Check(KW_IsAccepted(KW_GetLabels(labels, list, reports)), "list");
    KW_WriteLabelText(list, eKW_LABEL_FILE_FORMAT_XML, text, reports);
    reports.clear();
    const bool isRead =
        KW_IsAccepted(KW_ReadLabelText(text, eKW_LABEL_FILE_FORMAT_XML, list, reports));
    findings.Check(isRead, isRead ? QByteArray() : reports[0].text.toUtf8());
}

void CheckBus(const CRuleTree& tree, CFindings& findings)
{
    const QByteArray can = "SerialBus/CANBusSettings/";
    CheckStandard(tree, can, "BitRate", findings);
    CheckStandard(tree, can, "DataBitRate", findings);
    CheckStandard(tree, "SerialBus/LINBusSettings/", "BitRate", findings);
    CheckStandard(tree, "SerialBus/UARTBusSettings/", "BitRate", findings);
    CheckStandard(tree, "SerialBus/SPIBusSettings/", "WordLength", findings);
    findings.Check(tree.Number(can + "DataBitRate") >= tree.Number(can + "BitRate"), "data rate");
    const QByteArray i2c = "SerialBus/I2CBusSettings/";
    CheckLines(tree, {i2c + "ClockSource", i2c + "DataSource"}, findings);
    CheckSpi(tree, findings);
    CheckSignal(tree, findings);
    CheckLabels(tree, findings);
    CheckTrigger(tree, findings);
    const auto bus = tree.root->GetPgSerialBus();
    CheckList(*bus->GetPgCANBusSettings()->GetPgLabelListSettings(), findings);
    CheckList(*bus->GetPgSENTBusSettings()->GetPgLabelListSettings(), findings);
    const int index = static_cast<int>(tree.Number("SerialBus/TrackInTable/SelectedIndex"));
    const QString frame = tree.Text("SerialBus/TrackInTable/SelectedFrame");
    findings.Check(index < 0 ? frame.isEmpty() : frame.endsWith(QStringLiteral("[%1]").arg(index)),
                   "one marked frame");
    const auto labels = tree.Items("SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem");
    findings.Check(tree.Number(can + "LabelListSettings/NumberOfLabels") == labels->GetCount(),
                   "labels counted");
}

constexpr char kFrames[] = "+3 SerialBus/SPIBusResults/SPIBusFrame";
constexpr char kSignalAndFrames[] =
    "SerialBus/CANBusSettings/Standard = CAN_FD; + .LabelListSettings/SerialBusLabelItem; "
    "+ .SerialBusLabelItem[Label1]/SignalTranslation; "
    "+ SerialBus/SENTBusSettings/LabelListSettings/SerialBusLabelItem; "
    "+ .SerialBusLabelItem[Label1]/SignalTranslation; +3 SerialBus/SPIBusResults/SPIBusFrame";
} // namespace

INSTANTIATE_TEST_SUITE_P(Bus, Rules, testing::ValuesIn(kBusRules), Rules::Name);
INSTANTIATE_TEST_SUITE_P(
    Bus, Walks,
    testing::Values(t_Walk{
        kSignalAndFrames,
        "SerialBus SerialBus/SPIBusSettings SerialBus/I2CBusSettings "
        "SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem[Label1] "
        "SerialBus/CANBusSettings/LabelListSettings SerialBus/SENTBusSettings "
        "SerialBus/SENTBusSettings/LabelListSettings/SerialBusLabelItem[Label1] "
        "SerialBus/TrackInTable Trigger/SPIBusTriggerSettings Trigger/CANBusTriggerSettings "
        "Trigger/UARTBusTriggerSettings Vertical/Channel[0] Vertical/Channel[2]",
        CheckBus, 12}));

TEST(BusRules, MarkedFrameDoesNotFollow)
{
    const CRuleTree tree;
    tree.DoAll(QByteArray(kFrames) + "; SerialBus/TrackInTable/SelectedIndex = 1");
    ASSERT_EQ(tree.Items("SerialBus/SPIBusResults/SPIBusFrame")->RemoveItem(QStringLiteral("0")),
              eKW_ACC_OK);
    EXPECT_EQ(tree.Text("SerialBus/TrackInTable/SelectedIndex"), QStringLiteral("0"));
    ASSERT_EQ(tree.Items("SerialBus/SPIBusResults/SPIBusFrame")->RemoveItem(QStringLiteral("0")),
              eKW_ACC_OK);
    EXPECT_EQ(tree.Text("SerialBus/TrackInTable/SelectedIndex"), QStringLiteral("-1"));
}

TEST(BusRules, StepOfARateGoesToAnotherThanTheNext)
{
    const CRuleTree tree;
    for (const char* path :
         {"SerialBus/UARTBusSettings/StandardBitRate", "Setup/SetupDateTime/TimeZone"})
    {
        const auto property = Property(tree.root, path);
        ASSERT_NE(property, nullptr);
        const CEnumNameInfo& names = *property->GetEnumNameInfo();
        const auto number = [&]
        {
            const INT32 value = names.ConvertName(property->GetText()).value;
            return names.GetNumber(value).value_or(std::numeric_limits<double>::infinity());
        };
        property->IncDec(-names.GetEnumSize());
        std::vector<double> up{number()};
        while (property->IncDec(1) == eKW_ACC_OK)
        {
            up.push_back(number());
        }
        EXPECT_EQ(up.size(), static_cast<std::size_t>(names.GetEnumSize()));
        EXPECT_TRUE(std::is_sorted(up.begin(), up.end()));
        std::vector<double> down{number()};
        while (property->IncDec(-1) == eKW_ACC_OK)
        {
            down.insert(down.begin(), number());
        }
        EXPECT_EQ(up, down) << path;
    }
}
