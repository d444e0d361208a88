// SPDX-License-Identifier: MIT
#include "EnumNameInfo.h"
#include "RuleTree.h"

#include <set>

namespace
{
const char kCan[] = "SerialBus/CANBusSettings/";
const char kSpi[] = "SerialBus/SPIBusSettings/";
const char kI2c[] = "SerialBus/I2CBusSettings/";
const char kUart[] = "SerialBus/UARTBusSettings/";
const char kLabel[] = "SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem[Label1]/";
const char kTable[] = "SerialBus/TrackInTable/";

QString P(const char* group, const char* rest)
{
    return QString::fromLatin1(group) + QString::fromLatin1(rest);
}

QString T(const char* trigger)
{
    return QStringLiteral("Trigger/") + QString::fromLatin1(trigger);
}

QStringList WithSignal()
{
    return {P(kCan, "Standard = CAN_FD"),
            QStringLiteral("+ SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem"),
            P("+ ", "SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem[Label1]/"
                    "SignalTranslation")};
}

QStringList WithFrames()
{
    const QString frames = QStringLiteral("+ SerialBus/SPIBusResults/SPIBusFrame");
    return {frames, frames, frames};
}

const char kFirstFrame[] = "SerialBus/SPIBusResults/SPIBusFrame[0]";

std::vector<t_RuleCase> Cases()
{
    const QString fd = P(kCan, "Standard = CAN_FD");
    const QString sig = P(kLabel, "SignalTranslation[Signal1]/");
    return {
        {"StandardRateLeavesTheNumber",
         {},
         P(kCan, "StandardBitRate = 250_KBPS"),
         {P(kCan, "BitRate = 250000")}},
        {"NumberLeavesTheStandard",
         {},
         P(kCan, "BitRate = 125000"),
         {P(kCan, "StandardBitRate = 125_KBPS")}},
        {"OddNumberIsNoUserRate",
         {},
         P(kCan, "BitRate = 125001"),
         {P(kCan, "StandardBitRate = USER")}},
        {"UserIsTakenBack",
         {},
         P(kCan, "StandardBitRate = USER"),
         {P(kCan, "StandardBitRate = USER"), P(kCan, "BitRate = 500000")}},
        {"LinRateLeavesTheNumber",
         {},
         P("SerialBus/LINBusSettings/", "StandardBitRate = 9600"),
         {P("SerialBus/LINBusSettings/", "BitRate = 9600")}},
        {"UartNumberLeavesTheStandard",
         {},
         P(kUart, "BitRate = 250000"),
         {P(kUart, "StandardBitRate = 250000")}},
        {"SpiWordLengthLeavesTheNumber",
         {},
         P(kSpi, "StandardWordLength = 12_BIT"),
         {P(kSpi, "WordLength = 12")}},
        {"DataPhaseIsSlower",
         {fd, P(kCan, "StandardDataBitRate = 500_KBPS")},
         P(kCan, "BitRate = 800000"),
         {P(kCan, "DataBitRate = 800000"), P(kCan, "StandardDataBitRate = 800_KBPS")}},
        {"DataRateDoesNotReturn",
         {fd, P(kCan, "StandardDataBitRate = 500_KBPS"), P(kCan, "BitRate = 800000")},
         P(kCan, "BitRate = 100000"),
         {P(kCan, "DataBitRate = 500000"), P(kCan, "StandardDataBitRate = 500_KBPS")}},
        {"DataRateBelowBitRateIsOffered",
         {fd},
         P(kCan, "StandardDataBitRate = 250_KBPS"),
         {P(kCan, "DataBitRate = 2000000")},
         eKW_ACC_NOT_ENABLED},
        {"PlainCanHasFdFields",
         {fd},
         P(kCan, "Standard = CAN"),
         {P(kCan, "DataBitRate = 2000000!"), P(kCan, "ProtocolStandard = ISO!"),
          T("CANBusTriggerSettings/FDFBit = ANY!")}},
        {"FdHasNoFdFields", {}, fd, {T("CANBusTriggerSettings/FDFBit = ANY")}},
        {"BothI2cLinesOnOneChannel",
         {},
         P(kI2c, "ClockSource = C2"),
         {P(kI2c, "ClockSource = C2"), P(kI2c, "DataSource = C1")}},
        {"LinesAreNotSwapped",
         {P(kI2c, "DataSource = C4")},
         P(kI2c, "SwapLines"),
         {P(kI2c, "ClockSource = C4"), P(kI2c, "DataSource = C1")}},
        {"SourceIsSwitchedOff",
         {},
         QStringLiteral("Vertical/Channel[0]/Enabled = OFF"),
         {P(kI2c, "ClockSource = C3"), P(kI2c, "DataSource = C2"),
          P("SerialBus/CANBusSettings/", "BusChannelSettings[0]/Source = C2")}},
        {"ChannelThatIsOffIsOffered",
         {},
         P(kI2c, "ClockSource = D0"),
         {P(kI2c, "ClockSource = C1")},
         eKW_ACC_NOT_ENABLED},
        {"UnusedLineTakesAChannelAway",
         {},
         P(kSpi, "MosiSource = C4"),
         {P(kSpi, "MisoSource = C4"), P(kSpi, "ClockSource = C1")}},
        {"LineInUseSharesItsChannel",
         {P(kSpi, "MosiSource = C4")},
         P(kSpi, "MisoEnabled = ON"),
         {P(kSpi, "MosiSource = C4"), P(kSpi, "MisoSource = C2")}},
        {"SelectLineWithTimeout",
         {},
         P(kSpi, "FrameMode = TIMEOUT"),
         {P(kSpi, "SelectPolarity = ACTIVE_LOW!"), P(kSpi, "IdleTime = 1e-05")}},
        {"SecondUartLineSharesItsChannel",
         {P(kUart, "BusChannelSettings[0]/Source = C2")},
         P(kUart, "BusChannelSettings[1]/Enabled = ON"),
         {P(kUart, "BusChannelSettings[1]/Source = C1")}},
        {"UartTriggerWatchesAnotherLine",
         {},
         P(kUart, "BusChannelSettings[0]/Source = C3"),
         {T("UARTBusTriggerSettings/Source = C3")}},
        {"EndOfFrameHasOtherLengthThanWords",
         {P(kUart, "FrameMode = PATTERN")},
         P(kUart, "DataLength = 9_BIT"),
         {P(kUart, "EndOfFramePattern = 000001010")}},
        {"ExtendedIdentifierIsTooShort",
         {},
         T("CANBusTriggerSettings/IdentifierType = EXTENDED"),
         {T("CANBusTriggerSettings/IdentifierPatternRelation[0]/Pattern = "
            "XXXXXXXXXXXXXXXXXXXXXXXXXXXXX")}},
        {"IdentifierPatternHasAnyLength",
         {},
         T("CANBusTriggerSettings/IdentifierPatternRelation[0]/Pattern = 101"),
         {T("CANBusTriggerSettings/IdentifierPatternRelation[0]/Pattern = XXXXXXXX101")},
         eKW_ACC_WARNING},
        {"AnyIdentifierIsCompared",
         {},
         T("CANBusTriggerSettings/IdentifierType = ANY"),
         {T("CANBusTriggerSettings/IdentifierPatternRelation[0]/Relation = EQUAL!")}},
        {"ErrorFramesHaveIdentifiers",
         {T("CANBusTriggerSettings/FrameType = ERROR")},
         T("CANBusTriggerSettings/Type = IDENTIFIER"),
         {T("CANBusTriggerSettings/FrameType = DATA")}},
        {"AddressHasElevenBits",
         {},
         T("I2CBusTriggerSettings/AddressType = 10_BIT"),
         {T("I2CBusTriggerSettings/IdentifierPatternRelation[0]/Pattern = XXXXXXXXXX")}},
        {"LinPatternIsLongerThanTheData",
         {T("LINBusTriggerSettings/DataPatternRelation[0]/Pattern = 1111111100000000")},
         T("LINBusTriggerSettings/DataLength = 1"),
         {T("LINBusTriggerSettings/DataPatternRelation[0]/Pattern = 00000000")}},
        {"SpiPatternHasPartsOfWords",
         {},
         P(kSpi, "WordLength = 12"),
         {T("SPIBusTriggerSettings/DataPatternRelation[0]/Pattern = XXXXXXXXXXXX")}},
        {"UartPatternHasOtherWords",
         {P(kUart, "DataLength = 5_BIT")},
         T("UARTBusTriggerSettings/PatternLength = 2"),
         {T("UARTBusTriggerSettings/DataPatternRelation[0]/Pattern = XXXXXXXXXX")}},
        {"UartPatternExceedsItsProperty",
         {T("UARTBusTriggerSettings/PatternLength = 8")},
         P(kUart, "DataLength = 9_BIT"),
         {T("UARTBusTriggerSettings/PatternLength = 7")}},
        {"OrderedRelationKnowsX",
         {},
         T("CANBusTriggerSettings/DataPatternRelation[0]/Relation = "
           "IN_RANGE"),
         {T("CANBusTriggerSettings/DataPatternRelation[0]/Pattern = 00000000"),
          T("CANBusTriggerSettings/DataPatternRelation[0]/UpperPattern = 11111111")}},
        {"RangeIsUpsideDown",
         {T("CANBusTriggerSettings/DataPatternRelation[0]/Relation = IN_RANGE"),
          T("CANBusTriggerSettings/DataPatternRelation[0]/Pattern = 00001000")},
         T("CANBusTriggerSettings/DataPatternRelation[0]/UpperPattern = 00000100"),
         {T("CANBusTriggerSettings/DataPatternRelation[0]/Pattern = 00000100")}},
        {"ClearedPatternKeepsBits",
         {T("SENTBusTriggerSettings/Status = 1010"),
          T("SENTBusTriggerSettings/DataPatternRelation[0]/Relation = LESS_THAN"),
          T("SENTBusTriggerSettings/DataPatternRelation[0]/Pattern = 1111")},
         T("SENTBusTriggerSettings/ClearPatterns"),
         {T("SENTBusTriggerSettings/Status = XXXX"),
          T("SENTBusTriggerSettings/DataPatternRelation[0]/Relation = EQUAL"),
          T("SENTBusTriggerSettings/DataPatternRelation[0]/Pattern = XXXX")}},
        {"SettingsOfTheProtocolStay",
         {QStringLiteral("SerialBus/Protocol = CAN"), P(kCan, "BitRate = 1000"),
          P(kSpi, "WordLength = 9")},
         QStringLiteral("SerialBus/ResetSettings"),
         {P(kCan, "StandardBitRate = 500_KBPS"), P(kSpi, "WordLength = 9")}},
        {"ClearedResultsStay",
         WithFrames(),
         QStringLiteral("SerialBus/BusResults/Clear"),
         {QStringLiteral("SerialBus/BusResults/NumberOfFrames = 0-"),
          QStringLiteral("SerialBus/SPIBusResults/NumberOfFrames = 0-"),
          P(kTable, "SelectedIndex = -1")}},
        {"MarkedIndexIsAnotherFrame",
         WithFrames(),
         P(kTable, "SelectedIndex = 1"),
         {P(kTable, "SelectedFrame = SerialBus/SPIBusResults/SPIBusFrame[1]"),
          P(kTable, "FrameTime = 0")}},
        {"MarkedFrameHasAnotherIndex",
         WithFrames(),
         P(kTable, "SelectedFrame = SerialBus/SPIBusResults/SPIBusFrame[2]"),
         {P(kTable, "SelectedIndex = 2")}},
        {"ForeignItemIsMarked",
         WithFrames() << P(kTable, "First"),
         P(kTable, "SelectedFrame = Vertical/Channel[2]"),
         {P(kTable, "SelectedFrame = ") + QString::fromLatin1(kFirstFrame)},
         eKW_ACC_WARNING},
        {"OtherProtocolKeepsTheFrame",
         WithFrames() << P(kTable, "Last"),
         QStringLiteral("SerialBus/Protocol = I2C"),
         {P(kTable, "SelectedIndex = -1"), P(kTable, "FrameTime = 0-")}},
        {"StepLeavesTheTable",
         WithFrames() << P(kTable, "Last"),
         P(kTable, "Next"),
         {P(kTable, "SelectedIndex = 2")},
         eKW_ACC_WARNING},
        {"StepsDoNotGoFromErrorToError",
         WithFrames() << P(kTable, "ErrorsOnly = ON"),
         P(kTable, "First"),
         {P(kTable, "SelectedIndex = -1")},
         eKW_ACC_WARNING},
        {"IdentifierExceedsItsLength",
         WithSignal() << P(kLabel, "Identifier = 2047"),
         P(kLabel, "IdentifierLength = 6"),
         {P(kLabel, "Identifier = 63")}},
        {"FloatHasOtherBits",
         WithSignal(),
         sig + QStringLiteral("ValueType = FLOAT"),
         {sig + QStringLiteral("BitLength = 32")}},
        {"DoubleBeginsTooLate",
         WithSignal() << sig + QStringLiteral("StartBit = 8"),
         sig + QStringLiteral("ValueType = DOUBLE"),
         {sig + QStringLiteral("StartBit = 0"), sig + QStringLiteral("BitLength = 64")}},
        {"SignalLeavesThePayload",
         WithSignal() << sig + QStringLiteral("StartBit = 12"),
         P(kLabel, "PayloadLength = 2"),
         {sig + QStringLiteral("BitLength = 4")}},
        {"SignalLimitsCross",
         WithSignal(),
         sig + QStringLiteral("Minimum = 300"),
         {sig + QStringLiteral("Maximum = 300")}},
        {"LabelsAreNotCounted",
         WithSignal(),
         P(kCan, "LabelListSettings/Clear"),
         {P(kCan, "LabelListSettings/NumberOfLabels = 0")}},
    };
}

class BusRule : public testing::TestWithParam<t_RuleCase>
{
};

void CheckStandard(const CRuleTree& tree, const QString& group, const char* name,
                   QStringList& wrong)
{
    const QString path = group + QLatin1String("Standard") + QLatin1String(name);
    const auto property = Property(tree.root, path.toLatin1().constData());
    const CEnumNameInfo* const names = property->GetEnumNameInfo();
    const auto usual =
        names->GetNumber(names->ConvertName(property->GetText(), KW_ENUM_NAME::Serial).value);
    if (usual && *usual != tree.Number(group + QLatin1String(name)))
    {
        wrong.append(path);
    }
}

void CheckLines(const CRuleTree& tree, const QStringList& sources, QStringList& wrong)
{
    std::set<QString> on;
    for (int i = 0; i < 4; ++i)
    {
        if (tree.Text(QStringLiteral("Vertical/Channel[%1]/Enabled").arg(i)) == QLatin1String("ON"))
        {
            on.insert(QStringLiteral("C%1").arg(i + 1));
        }
    }
    std::set<QString> used;
    for (const QString& source : sources)
    {
        used.insert(tree.Text(source));
        if (!on.empty() && on.count(tree.Text(source)) == 0)
        {
            wrong.append(source + QStringLiteral(" is off"));
        }
    }
    if (used.size() < std::min<std::size_t>(static_cast<std::size_t>(sources.size()), on.size()))
    {
        wrong.append(sources.first() + QStringLiteral(" shares a channel"));
    }
}

void CheckSignal(const CRuleTree& tree, QStringList& wrong)
{
    const QString path = P(kLabel, "SignalTranslation[Signal1]/");
    if (!tree.root->GetDbObject()->Find(path.chopped(1)))
    {
        return;
    }
    const double payload = 8.0 * tree.Number(P(kLabel, "PayloadLength"));
    const QString type = tree.Text(path + QLatin1String("ValueType"));
    const double bits = tree.Number(path + QLatin1String("BitLength"));
    const double needed = type == QLatin1String("FLOAT")    ? 32.0
                          : type == QLatin1String("DOUBLE") ? 64.0
                                                            : 1.0;
    const double end = tree.Number(path + QLatin1String("StartBit")) + bits;
    if (end > std::max(payload, needed) || bits < needed || (needed > 1.0 && bits > needed) ||
        tree.Number(path + QLatin1String("Minimum")) > tree.Number(path + QLatin1String("Maximum")))
    {
        wrong.append(path);
    }
}

QStringList Violations(const CRuleTree& tree)
{
    QStringList wrong;
    for (const char* const name : {"BitRate", "DataBitRate"})
    {
        CheckStandard(tree, QString::fromLatin1(kCan), name, wrong);
    }
    CheckStandard(tree, QStringLiteral("SerialBus/LINBusSettings/"), "BitRate", wrong);
    CheckStandard(tree, QString::fromLatin1(kUart), "BitRate", wrong);
    CheckStandard(tree, QString::fromLatin1(kSpi), "WordLength", wrong);
    CheckLines(tree, {P(kI2c, "ClockSource"), P(kI2c, "DataSource")}, wrong);
    QStringList spi = {P(kSpi, "ClockSource")};
    spi += tree.Text(P(kSpi, "MosiEnabled")) == QLatin1String("ON") ? P(kSpi, "MosiSource")
                                                                    : QString();
    spi += tree.Text(P(kSpi, "FrameMode")) == QLatin1String("SELECT") ? P(kSpi, "SelectSource")
                                                                      : QString();
    spi.removeAll(QString());
    CheckLines(tree, spi, wrong);
    CheckSignal(tree, wrong);
    const auto check = [&wrong](bool holds, const char* what)
    {
        if (!holds)
        {
            wrong.append(QLatin1String(what));
        }
    };
    check(tree.Number(P(kCan, "DataBitRate")) >= tree.Number(P(kCan, "BitRate")), "data rate");
    const auto size = [&tree](const char* pattern) { return tree.Text(T(pattern)).size(); };
    check(size("SPIBusTriggerSettings/DataPatternRelation[0]/Pattern") %
                  static_cast<int>(tree.Number(P(kSpi, "WordLength"))) ==
              0,
          "whole words");
    check(size("CANBusTriggerSettings/DataPatternRelation[0]/Pattern") ==
              size("CANBusTriggerSettings/DataPatternRelation[0]/UpperPattern"),
          "patterns of one length");
    const int index = static_cast<int>(tree.Number(P(kTable, "SelectedIndex")));
    const QString frame = tree.Text(P(kTable, "SelectedFrame"));
    check(index < 0 ? frame.isEmpty() : frame.endsWith(QStringLiteral("[%1]").arg(index)),
          "one marked frame");
    check(
        tree.Number(P(kCan, "LabelListSettings/NumberOfLabels")) ==
            tree.Items("SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem")->GetCount(),
        "labels counted");
    return wrong;
}
} // namespace

TEST_P(BusRule, IsBroken)
{
    CheckRule(GetParam());
}

INSTANTIATE_TEST_SUITE_P(All, BusRule, testing::ValuesIn(Cases()),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(BusRules, MarkedFrameDoesNotFollow)
{
    const CRuleTree tree;
    tree.DoAll(WithFrames() << P(kTable, "SelectedIndex = 1"));
    ASSERT_EQ(tree.Items("SerialBus/SPIBusResults/SPIBusFrame")->RemoveItem(QStringLiteral("0")),
              eKW_ACC_OK);
    EXPECT_EQ(tree.Text(P(kTable, "SelectedIndex")), QStringLiteral("0"));
    ASSERT_EQ(tree.Items("SerialBus/SPIBusResults/SPIBusFrame")->RemoveItem(QStringLiteral("0")),
              eKW_ACC_OK);
    EXPECT_EQ(tree.Text(P(kTable, "SelectedIndex")), QStringLiteral("-1"));
}

TEST(BusRules, RandomWritesBreakWhatHolds)
{
    const QStringList groups = {QStringLiteral("SerialBus"),
                                QString::fromLatin1(kSpi).chopped(1),
                                QString::fromLatin1(kI2c).chopped(1),
                                QString::fromLatin1(kLabel).chopped(1),
                                QString::fromLatin1(kTable).chopped(1),
                                T("SPIBusTriggerSettings"),
                                T("CANBusTriggerSettings"),
                                T("UARTBusTriggerSettings"),
                                QStringLiteral("Vertical/Channel[0]"),
                                QStringLiteral("Vertical/Channel[2]")};
    for (UINT32 seed = 1; seed <= 12; ++seed)
    {
        CheckWalk(seed, WithSignal() + WithFrames(), groups, Violations);
    }
}
