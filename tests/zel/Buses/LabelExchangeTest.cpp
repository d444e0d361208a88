// SPDX-License-Identifier: MIT
#include "FileText.h"
#include "IKWFunctionCANBusSettings.h"
#include "IKWFunctionLINBusSettings.h"
#include "IKWFunctionLabelListSettings.h"
#include "IKWFunctionSerialBus.h"
#include "IKWFunctionSerialBusLabelItem.h"
#include "KWBrackets.h"
#include "LabelList/LabelListFile.h"
#include "LabelList/LabelListTree.h"
#include "Together.h"
#include "zel/RuleTree.h"

#include <limits>

// Lists of labels that come into the tree as a whole, and leave it so.
namespace
{
const char* const kList = "SerialBus/CANBusSettings/LabelListSettings";
constexpr auto kUnsigned = eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT;
constexpr auto kLittle = eKW_ENDIANNESS_LITTLE_ENDIAN;

CLabelListSignal Signal(const std::string& name, UINT32 startBit, UINT32 bitLength)
{
    return {name, startBit, bitLength, kLittle, kUnsigned, 0.5, -40.0, -40.0, 87.5, "rpm"};
}

KW_LabelEntry Message(const std::string& name, UINT32 identifier, UINT32 length = 8)
{
    KW_LabelEntry entry;
    entry.message.setParameters(name, "11", identifier, length);
    return entry;
}

/** A mode that selects one of two signals, and a gear with texts. */
KW_LabelList Engine()
{
    KW_LabelList list;
    list.name = "Powertrain";
    KW_LabelEntry engine = Message("Engine", 0x100);
    engine.details.comment = "from the first control unit";
    KW_LabelSignalDetails mode;
    mode.isMultiplexor = true;
    KW_AddSignal(engine, Signal("Mode", 56, 8), mode);
    KW_LabelSignalDetails selected;
    selected.multiplexor = "Mode";
    selected.selectedBy = {{0, 3}, {7, 7}};
    KW_AddSignal(engine, Signal("Speed", 0, 16), selected);
    CLabelListSignal gear("Gear", 31, 4, eKW_ENDIANNESS_BIG_ENDIAN,
                          eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT, 1.0, 0.0, -8.0, 7.0, "");
    gear.addSignalEnumValue({15, "Reverse"});
    gear.addSignalEnumValue({1, "First"});
    KW_AddSignal(engine, gear);
    list.messages = {engine, Message("Brake", 0x200)};
    return list;
}

/** All that a list holds. */
std::string TextOf(const KW_LabelList& list)
{
    QByteArray text;
    std::vector<KW_LabelReport> said;
    EXPECT_LE(KW_WriteLabelText(list, eKW_LABEL_FILE_FORMAT_XML, text, said), eKW_ACC_WARNING);
    return text.toStdString();
}

class LabelExchange : public testing::Test
{
protected:
    KW_ACCEPTANCE Put(const KW_LabelList& list)
    {
        reports.clear();
        return KW_PutLabels(*labels, list, reports);
    }
    KW_LabelList Get() const
    {
        KW_LabelList list;
        std::vector<KW_LabelReport> said;
        EXPECT_EQ(KW_GetLabels(*labels, list, said), eKW_ACC_OK);
        return list;
    }
    std::string Said() const
    {
        QStringList lines;
        for (const KW_LabelReport& report : reports)
        {
            lines << report.text;
        }
        return lines.join(QLatin1Char('\n')).toStdString();
    }
    QByteArray Path(const char* rest) const { return QByteArray(kList) + rest; }

    CRuleTree tree;
    std::shared_ptr<IKWFunctionLabelListSettings> labels =
        tree.root->GetPgSerialBus()->GetPgCANBusSettings()->GetPgLabelListSettings();
    std::vector<KW_LabelReport> reports;
};
} // namespace

TEST_F(LabelExchange, ListReplacesAnotherInOneStepAndComesBackWhole)
{
    tree.DoAll("+2 SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem; "
               ".SerialBusLabelItem[Label1]/Name = Old; + .SignalTranslation");
    const auto before = tree.State();
    EXPECT_EQ(Put(Engine()), eKW_ACC_OK) << Said();
    EXPECT_EQ(TextOf(Get()), TextOf(Engine()));
    EXPECT_EQ(tree.root->GetUndoText(), QStringLiteral("Load labels"));
    EXPECT_EQ(tree.Text(Path("/SerialBusLabelItem[Label1]/SignalTranslation[Signal2]/ActiveWhen")),
              QStringLiteral("Mode = 0-3, 7"));
    EXPECT_EQ(tree.Text(Path("/NumberOfLabels")), QStringLiteral("2"));
    EXPECT_EQ(tree.Unsettled(), QString());
    const auto after = tree.State();
    EXPECT_EQ(tree.root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(FirstDifference(tree.State(), before), QString());
    EXPECT_EQ(tree.root->Redo(), eKW_ACC_OK);
    EXPECT_EQ(FirstDifference(tree.State(), after), QString());
    EXPECT_EQ(tree.Forgotten(), QString());
    EXPECT_EQ(tree.reports.Messages(), QString());
}

TEST_F(LabelExchange, WhatTheBusHasNoRoomForIsLost)
{
    KW_LabelList list;
    list.messages = {Message("Long", 1, 64)};
    list.messages[0].details.isFd = true;
    KW_AddSignal(list.messages[0], Signal("Far", 500, 12));
    EXPECT_EQ(Put(list), eKW_ACC_OK) << Said();
    EXPECT_EQ(tree.Text(Path("/SerialBusLabelItem[Label1]/PayloadLength")), QStringLiteral("8"));
    EXPECT_EQ(TextOf(Get()), TextOf(list));
    tree.DoAll("SerialBus/CANBusSettings/Standard = CAN_FD");
    EXPECT_EQ(tree.Text(Path("/SerialBusLabelItem[Label1]/SignalTranslation[Signal1]/StartBit")),
              QStringLiteral("500"));
}

TEST_F(LabelExchange, SavedListCanNotBeLoaded)
{
    tree.DoAll("+ SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem; "
               ".SerialBusLabelItem[Label1]/Name = Short; .PayloadLength = 2; "
               "+2 .SignalTranslation; .SignalTranslation[Signal1]/ValueType = FLOAT");
    KW_LabelList list;
    EXPECT_EQ(KW_GetLabels(*labels, list, reports), eKW_ACC_WARNING);
    EXPECT_EQ(Said(), "message \"Short\": 1 signals left out that lie in no payload of 2 bytes");
    EXPECT_EQ(Put(list), eKW_ACC_OK) << Said();
    EXPECT_EQ(
        labels->GetPgSerialBusLabelItem()->GetItem(0)->GetPgSignalTranslation()->GetNames().size(),
        1);
}

TEST_F(LabelExchange, WhatTheTreeHasNoRoomForIsNotSaid)
{
    KW_LabelList list;
    list.name = std::string(63, 'a').append("\xF0\x9F\x9A\x97");
    list.messages = {Message("Wide", 1), Message("Wide", 2)};
    KW_LabelEntry& wide = list.messages[0];
    wide.details.comment = std::string(200, 'c');
    wide.details.senders = {"Gateway"};
    CLabelListSignal huge = Signal("Huge", 0, 8);
    huge.setParameters("Huge", 0, 8, kLittle, kUnsigned, 1e16, 0, 0, 1, "");
    KW_AddSignal(wide, huge);
    CLabelListSignal cut = Signal("Bell\x07", 8, 16);
    cut.setParameters("Bell\x07", 8, 16, kLittle, kUnsigned, 1, 0, -1e31, -1e32,
                      "kilograms per hour");
    for (UINT32 raw = 0; raw < 300; ++raw)
    {
        cut.addSignalEnumValue({raw, "t"});
    }
    KW_AddSignal(wide, cut);
    EXPECT_EQ(Put(list), eKW_ACC_WARNING);
    EXPECT_EQ(Said(),
              std::string("the list's name cut to \"").append(63, 'a') +
                  "\"\n"
                  "message \"Wide\", signal \"Huge\": left out: Factor above the maximum\n"
                  "message \"Wide\", signal \"Bell\x07\": name: blanks in place of control "
                  "characters\n"
                  "message \"Wide\", signal \"Bell\x07\": unit cut to \"kilograms per ho\"\n"
                  "message \"Wide\", signal \"Bell\x07\": range cut to -1e+30 ... -1e+30\n"
                  "message \"Wide\", signal \"Bell\x07\": the last 44 texts of values left out: a "
                  "signal has room for 256\n"
                  "comments of 1 messages cut to what the tree holds\n"
                  "the tree does not hold senders (1)");
    EXPECT_EQ(tree.Unsettled(), QString());
}

TEST_F(LabelExchange, ListIsLongerThanTheTree)
{
    KW_LabelList list;
    for (UINT32 i = 0; i < 4100; ++i)
    {
        list.messages.push_back(Message("m", i % 2048));
    }
    for (int i = 0; i < 600; ++i)
    {
        KW_AddSignal(list.messages[0], Signal("s", 0, 1));
    }
    EXPECT_EQ(Put(list), eKW_ACC_WARNING);
    EXPECT_EQ(Said(), "message \"m\": the last 88 signals left out: a label has room for 512\n"
                      "4 messages left out: the tree has no room for more");
    EXPECT_EQ(labels->GetPrNumberOfLabels()->Get(), 4096U);
}

TEST_F(LabelExchange, BadMessageStopsOrSpoilsTheOthers)
{
    KW_LabelList list = Engine();
    list.messages.push_back(Message("TooBig", 0x800));
    list.messages.push_back(Message("Nan", 3));
    CLabelListSignal nan = Signal("Nan", 0, 8);
    nan.setParameters("Nan", 0, 8, kLittle, kUnsigned, std::numeric_limits<double>::quiet_NaN(), 0,
                      0, 1, "");
    // Filed without its place in the order.
    list.messages.back().message.addSignal({"any", nan});
    EXPECT_EQ(Put(list), eKW_ACC_WARNING);
    EXPECT_EQ(Said(), "message \"TooBig\" left out: message \"TooBig\": identifier 2048 has more "
                      "than 11 bits\n"
                      "message \"Nan\" left out: signal \"Nan\": factor, offset, minimum and "
                      "maximum have to be finite numbers");
    EXPECT_EQ(TextOf(Get()), TextOf(Engine()));
}

TEST_F(LabelExchange, RefusedListLeavesATrace)
{
    const auto before = tree.State();
    KW_LabelList list = Engine();
    list.protocol = eKW_ZEL_SERIALBUS_PROTOCOL_LIN;
    EXPECT_EQ(Put(list), eKW_ACC_WRONG_KIND);
    EXPECT_EQ(Said(), "the list is one of another bus");
    tree.root->SetControlMode(eCONTROL_LOCAL_LOCKOUT);
    EXPECT_EQ(Put(Engine()), eKW_ACC_NO_WRITE_ACCESS);
    tree.root->SetControlMode(eCONTROL_LOCAL);
    EXPECT_EQ(FirstDifference(tree.State(), before), QString());
    EXPECT_FALSE(tree.root->CanUndo());
}

TEST_F(LabelExchange, ListOfATreeThatIsGoneIsWritten)
{
    KW_LabelList list = Engine();
    tree.root.reset();
    EXPECT_EQ(Put(list), eKW_ACC_DETACHED);
    EXPECT_EQ(KW_GetLabels(*labels, list, reports), eKW_ACC_DETACHED);
    EXPECT_EQ(TextOf(list), TextOf(Engine()));
}

TEST_F(LabelExchange, FramesAreNotNamedByTheNewList)
{
    tree.DoAll("+ SerialBus/CANBusResults/CANBusFrame; @.CANBusFrame[0]/Type = DATA; "
               "@.Identifier = 256; "
               "@.Data = 0000000100000000000000000000000000000000000000000000000000000000");
    Put(Engine());
    EXPECT_EQ(tree.Text("SerialBus/CANBusResults/CANBusFrame[0]/Label"), QStringLiteral("Engine"));
}

TEST_F(LabelExchange, RefusedFileChangesTheList)
{
    Put(Engine());
    const auto before = tree.State();
    const QByteArray file = Path("/File");
    const auto load = [&](const QByteArray& name)
    {
        EXPECT_EQ(tree.Do(file + " = " + name), eKW_ACC_OK);
        tree.reports.Clear();
        const KW_ACCEPTANCE code = tree.Do(Path("/Load"));
        tree.root->Undo();
        return code;
    };
    EXPECT_EQ(tree.Do(Path("/Load")), eKW_ACC_BAD_NAME);
    EXPECT_EQ(tree.Do(Path("/Save")), eKW_ACC_BAD_NAME);
    EXPECT_EQ(load("none.dbc"), eKW_ACC_FILE_NOT_READABLE);
    EXPECT_TRUE(tree.reports.Messages().startsWith(tree.folder.filePath(QStringLiteral("Labels"))))
        << tree.reports.Messages().toStdString();
    const QString damaged =
        WriteFile(tree.folder.filePath(QStringLiteral("damaged.dbc")),
                  "BO_ 256 Good: 8 Node\n SG_ Fine : 0|8@1+ (1,0) [0|0] \"\" Node\nBO_ x");
    EXPECT_EQ(load(damaged.toUtf8()), eKW_ACC_FILE_NOT_UNDERSTOOD);
    EXPECT_EQ(FirstDifference(tree.State(), before), QString());
}

TEST_F(LabelExchange, ListComesBackOtherwiseFromItsFile)
{
    for (const char* const name : {"list.xml", "list.csv", "list.dbc"})
    {
        Put(Engine());
        const auto before = tree.State();
        tree.DoAll(Path("/File = ") + name);
        EXPECT_EQ(tree.Do(Path("/Save")), eKW_ACC_OK) << tree.reports.Messages().toStdString();
        EXPECT_TRUE(
            QFile::exists(tree.folder.filePath(QStringLiteral("Labels/") + QLatin1String(name))));
        tree.DoAll(Path("/Clear; ") + Path("/Name = other"));
        tree.reports.Clear();
        EXPECT_LE(tree.Do(Path("/Load")), eKW_ACC_WARNING);
        EXPECT_EQ(tree.root->GetUndoText(), QStringLiteral("Load labels"));
        KW_LabelList expected = Engine();
        expected.name = Get().name;
        EXPECT_EQ(TextOf(Get()), TextOf(expected)) << tree.reports.Messages().toStdString();
    }
}

TEST_F(LabelExchange, BracketThatIsGivenUpKeepsTheList)
{
    Put(Engine());
    tree.DoAll(Path("/File = list.xml; ") + Path("/Save; ") + Path("/Clear"));
    const auto before = tree.State();
    for (const bool isLoaded : {true, false})
    {
        const CKWTransaction bracket(tree.root, QStringLiteral("several"));
        EXPECT_EQ(isLoaded ? tree.Do(Path("/Load")) : Put(Engine()), eKW_ACC_OK);
        EXPECT_EQ(TextOf(Get()), TextOf(Engine()));
    }
    EXPECT_EQ(FirstDifference(tree.State(), before), QString());
}

TEST_F(LabelExchange, ListOfAnotherBusIsACanDatabase)
{
    const QByteArray lin = "SerialBus/LINBusSettings/LabelListSettings";
    tree.DoAll("+ " + lin + "/SerialBusLabelItem; " + lin + "/File = lin.dbc");
    EXPECT_EQ(tree.Do(lin + "/Save"), eKW_ACC_WRONG_KIND);
    EXPECT_FALSE(QFile::exists(tree.folder.filePath(QStringLiteral("Labels/lin.dbc"))));
    Put(Engine());
    tree.DoAll(Path("/File = list.xml; ") + Path("/Save; ") + lin + "/File = list.xml");
    const auto before = tree.State();
    tree.reports.Clear();
    EXPECT_EQ(tree.Do(lin + "/Load"), eKW_ACC_WRONG_KIND);
    EXPECT_TRUE(tree.reports.Messages().endsWith(QLatin1String("the list is one of another bus")));
    EXPECT_EQ(FirstDifference(tree.State(), before), QString());
}

TEST_F(LabelExchange, LoadKeepsReadersOrWritersWaiting)
{
    const auto state = Property(tree.root, "SerialBus/CANBusSettings/LabelListSettings/Name");
    RunTogether({[this](int)
                 {
                     std::vector<KW_LabelReport> said;
                     EXPECT_EQ(KW_PutLabels(*labels, Engine(), said), eKW_ACC_OK);
                 },
                 [this](int)
                 {
                     KW_LabelList list;
                     std::vector<KW_LabelReport> said;
                     EXPECT_EQ(KW_GetLabels(*labels, list, said), eKW_ACC_OK);
                     EXPECT_TRUE(list.messages.empty() || list.messages.size() == 2);
                 },
                 [&state](int round) { state->SetText(QString::number(round)); }},
                50);
    KW_LabelList expected = Engine();
    expected.name = Get().name;
    EXPECT_EQ(TextOf(Get()), TextOf(expected));
}
