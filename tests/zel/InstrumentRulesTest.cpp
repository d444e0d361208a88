// SPDX-License-Identifier: MIT
#include "IKWFunctionSelftest.h"
#include "IKWFunctionSelftestDevice.h"
#include "IKWFunctionSetup.h"
#include "PgZEL.h"
#include "RuleTree.h"

#include <QFile>

// Rules of what surrounds the measuring functions: files, runs, printing, setup, service.

namespace
{
QString InSetup(const char* rest)
{
    return QStringLiteral("Setup/") + QString::fromLatin1(rest);
}

QString Of(const char* text)
{
    return QString::fromLatin1(text);
}

std::vector<t_RuleCase> Cases()
{
    return {
        {"StoppedScopeStillRuns",
         {},
         Of("Control/SMScope/RunStop = STOP"),
         {Of("Runs/CurrentRun/RunStop = STOP")}},
        {"StopDoesNotStop",
         {},
         Of("Control/SMScope/Stop"),
         {Of("Control/SMScope/RunStop = STOP"), Of("Runs/CurrentRun/RunStop = STOP")}},
        {"StartIsNoNewRun",
         {Of("Control/SMScope/Stop")},
         Of("Control/SMScope/Start"),
         {Of("Control/SMScope/RunStop = RUN"), Of("Runs/NumberOfRuns = 2"),
          Of("Runs/CurrentRun/LastTriggerAge = 0-")}},
        {"SingleRunHasNothingLeft",
         {Of("Control/SMScope/SingleCount = 7")},
         Of("Control/SMScope/RunStop = SINGLE"),
         {Of("Control/SMScope/AcquisitionsLeft = 7")}},
        {"StoppedSingleRunHasSomethingLeft",
         {Of("Control/SMScope/RunStop = SINGLE")},
         Of("Control/SMScope/Stop"),
         {Of("Control/SMScope/AcquisitionsLeft = 0")}},
        {"LoggerModeShowsTheScopesRun",
         {Of("Control/SMMode/OperationMode = LOGGER")},
         Of("Control/SMMode/SwitchMode"),
         {Of("Runs/CurrentRun/RunStop = STOP")}},
        {"MeterMakesSingleRuns",
         {},
         Of("Control/SMMeter/RunStop = SINGLE"),
         {Of("Control/SMMeter/RunStop = RUN")},
         eKW_ACC_NOT_ENABLED},
        {"FormatLeavesTheExtension",
         {Of("Print/File = a.png")},
         Of("Print/Format = JPG"),
         {Of("Print/File = a.jpg"), Of("Print/Quality = 90")}},
        {"ExtensionLeavesTheFormat",
         {Of("Print/Format = JPG")},
         Of("Print/File = a.BMP"),
         {Of("Print/Format = BMP"), Of("Print/File = a.BMP"), Of("Print/Quality = 90!")}},
        {"BinaryExportHasDelimiters",
         {},
         Of("Export/SignalExport/FileFormat = BINARY"),
         {Of("Export/SignalExport/Delimiter = COMMA!"),
          Of("Export/SignalExport/DataFormat = REAL32")}},
        {"ExportNameLeavesTheFormat",
         {},
         Of("Export/SignalExport/File = a.xml"),
         {Of("Export/SignalExport/FileFormat = XML")}},
        {"LanguageIsNoLanguage",
         {},
         InSetup("Display/SelectedLanguage = Vertical/Channel[2]"),
         {InSetup("Display/SelectedLanguage = ")},
         eKW_ACC_WARNING},
        {"LanguageOfTheMapIsRefused",
         {QStringLiteral("+ Setup/Display/UserInterfaceLanguage")},
         InSetup("Display/SelectedLanguage = Setup/Display/UserInterfaceLanguage[Language1]"),
         {InSetup("Display/SelectedLanguage = Setup/Display/UserInterfaceLanguage[Language1]")}},
        {"CountryAllowsItsChannels",
         {InSetup("Wireless/Country = DE"), InSetup("Wireless/WirelessAccesspoint/Channel = 13")},
         InSetup("Wireless/Country = US"),
         {InSetup("Wireless/WirelessAccesspoint/Channel = 11")}},
        {"ShortPassphraseIsKept",
         {},
         InSetup("Wireless/WirelessAccesspoint/Passphrase = 1234567"),
         {InSetup("Wireless/WirelessAccesspoint/Passphrase = ")},
         eKW_ACC_WARNING},
        {"AutomaticAddressIsFixed",
         {},
         InSetup("Wireless/WirelessClient/AutomaticAddress = OFF"),
         {InSetup("Wireless/WirelessClient/FixedAddress = ")}},
        {"ClockHasTwoMasters",
         {},
         InSetup("SetupDateTime/UseNetworkTime = ON"),
         {InSetup("SetupDateTime/RequestedTime = 0!"), InSetup("SetupDateTime/TimeServer = ")}},
        {"PortOfUsb",
         {InSetup("RemoteControl/Interface = ETHERNET")},
         InSetup("RemoteControl/Interface = USB"),
         {InSetup("RemoteControl/Port = 5025!")}},
        {"KeysStayLocked",
         {Of("RemoteState = ON")},
         InSetup("RemoteControl/ReturnToLocal"),
         {Of("RemoteState = OFF")}},
        {"DeviceIsTestedWithAll",
         {},
         InSetup("Selftest/Selection = DEVICE"),
         {InSetup("Selftest/Device = ALL"), InSetup("Selftest/Group = SUPPLY!")}},
        {"FiguresSurviveTheirReset",
         {},
         Of("Performance/ResetFigures"),
         {Of("Performance/BlindTime = 0-"),
          Of("Performance/PerformanceOfMeasurements/TotalTime = 0-"),
          Of("Performance/PerformanceOfMeasurements/PerformanceOfMeasurement[1]/MeanTime = 0-")}},
        {"ReadbackOfAnotherAddress",
         {},
         Of("Debug/RegisterAddress = 16"),
         {Of("Debug/RegisterReadback = 0-")}},
        {"EmptySlotIsRecalled", {}, Of("SaveRecall/RecallFromSlot"), {}, eKW_ACC_NOT_FOUND},
        {"FileWithoutANameIsSaved", {}, Of("SaveRecall/SaveToFile"), {}, eKW_ACC_BAD_NAME},
        {"ProtectedSlotIsOverwritten",
         {Of("SaveRecall/SaveRecallSlot[0]/Protected = ON")},
         Of("SaveRecall/SaveToSlot"),
         {Of("SaveRecall/SaveRecallSlot[0]/Used = OFF")},
         eKW_ACC_READ_ONLY},
        {"ProtectedSlotIsCleared",
         {Of("SaveRecall/SaveToSlot"), Of("SaveRecall/SaveRecallSlot[0]/Protected = ON")},
         Of("SaveRecall/ClearSlot"),
         {Of("SaveRecall/SaveRecallSlot[0]/Used = ON")},
         eKW_ACC_READ_ONLY},
        {"ClearedSlotIsUsed",
         {Of("SaveRecall/SelectedSlot = SLOT3"), Of("SaveRecall/SaveRecallSlot[2]/Name = a"),
          Of("SaveRecall/SaveToSlot")},
         Of("SaveRecall/ClearSlot"),
         {Of("SaveRecall/SaveRecallSlot[2]/Used = OFF"),
          Of("SaveRecall/SaveRecallSlot[2]/SavedAt = 0"),
          Of("SaveRecall/SaveRecallSlot[2]/Name = ")}},
        {"SlotLosesSettings",
         {Of("SerialBus/Label = a"), Of("SaveRecall/SaveToSlot"), Of("SerialBus/Label = b")},
         Of("SaveRecall/RecallFromSlot"),
         {Of("SerialBus/Label = a")}},
        {"RecallKeepsTheScreen",
         {Of("SerialBus/Label = a"), Of("SaveRecall/File = a.csv"), Of("SaveRecall/SaveToFile"),
          Of("SerialBus/Label = b"), Of("Diagrams/DiagramWindow[0]/Size = 40"),
          Of("SaveRecall/RecallScreen = OFF")},
         Of("SaveRecall/RecallFromFile"),
         {Of("SerialBus/Label = a"), Of("Diagrams/DiagramWindow[0]/Size = 40")}},
        {"RecallLeavesTheScreen",
         {Of("SaveRecall/SaveToSlot"), Of("Diagrams/DiagramWindow[0]/Size = 40")},
         Of("SaveRecall/RecallFromSlot"),
         {Of("Diagrams/DiagramWindow[0]/Size = 50")}},
    };
}

class InstrumentRule : public testing::TestWithParam<t_RuleCase>
{
};

QStringList Violations(const CRuleTree& tree)
{
    QStringList wrong;
    const auto check = [&wrong](bool holds, const char* what)
    {
        if (!holds)
        {
            wrong.append(QLatin1String(what));
        }
    };
    const auto fits = [&tree](const char* group, const char* format)
    {
        const QString name = tree.Text(Of(group) + QStringLiteral("/File")).toLower();
        const QString wanted = tree.Text(Of(group) + Of(format)).toLower().left(3);
        return name.isEmpty() || name.endsWith(QLatin1Char('.') + wanted);
    };
    check(fits("Print", "/Format"), "extension of a picture");
    check(fits("Export/SignalExport", "/FileFormat"), "extension of an export");
    check(tree.Text(Of("Runs/CurrentRun/RunStop")) == tree.Text(Of("Control/SMScope/RunStop")) ||
              tree.Text(Of("Control/SMMode/ActiveMode")) == QLatin1String("METER") ||
              tree.Text(Of("Control/SMMode/ActiveMode")) == QLatin1String("LOGGER"),
          "run of the scope");
    check(tree.Number(InSetup("Wireless/WirelessAccesspoint/Channel")) <= 11.0 ||
              tree.Text(InSetup("Wireless/Country")) != QLatin1String("US"),
          "channel of the country");
    return wrong;
}
} // namespace

TEST_P(InstrumentRule, IsBroken)
{
    CheckRule(GetParam());
}

INSTANTIATE_TEST_SUITE_P(All, InstrumentRule, testing::ValuesIn(Cases()),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(InstrumentRules, SelftestKeepsOldResultsOrRunsOnAfterAbort)
{
    const CRuleTree tree;
    const auto test = tree.root->GetPgSetup()->GetPgSelftest();
    const auto device = test->GetPgSelftestDevice()->GetItem(1);
    ASSERT_EQ(test->GetPrState()->SetResult(eKW_ZEL_SELFTEST_STATE_RUNNING), eKW_ACC_OK);
    ASSERT_EQ(device->GetPrState()->SetResult(eKW_ZEL_SELFTEST_STATE_RUNNING), eKW_ACC_OK);
    ASSERT_EQ(device->GetPrErrorCode()->SetResult(7), eKW_ACC_OK);
    ASSERT_EQ(tree.Do(InSetup("Selftest/Abort")), eKW_ACC_OK);
    EXPECT_EQ(test->GetPrState()->Get(), eKW_ZEL_SELFTEST_STATE_ABORTED);
    EXPECT_EQ(device->GetPrState()->Get(), eKW_ZEL_SELFTEST_STATE_ABORTED);
    tree.DoAll({InSetup("Selftest/Selection = DEVICE"), InSetup("Selftest/Device = MAINBOARD"),
                InSetup("Selftest/Start")});
    EXPECT_EQ(device->GetPrErrorCode()->Get(), 7U) << "another device";
    tree.DoAll({InSetup("Selftest/Selection = ALL"), InSetup("Selftest/Start")});
    EXPECT_EQ(device->GetPrErrorCode()->Get(), 0U);
    EXPECT_EQ(device->GetPrState()->Get(), eKW_ZEL_SELFTEST_STATE_NOT_DONE);
}

TEST(InstrumentRules, SlotHasNoFileOfItsOwn)
{
    const CRuleTree tree;
    tree.DoAll({Of("SaveRecall/SelectedSlot = SLOT10"), Of("SaveRecall/SaveToSlot")});
    EXPECT_TRUE(QFile::exists(tree.folder.filePath(Of("SLOT10.xml"))));
    EXPECT_GT(tree.Number(Of("SaveRecall/SaveRecallSlot[9]/SavedAt")), 1.0e9);
    tree.DoAll({Of("SaveRecall/ClearSlot")});
    EXPECT_FALSE(QFile::exists(tree.folder.filePath(Of("SLOT10.xml"))));
}

TEST(InstrumentRules, LockedOutUserGetsNoKeysBack)
{
    const CRuleTree tree;
    KW_PeekZELRoot()->SetControlMode(eCONTROL_LOCAL_LOCKOUT);
    ASSERT_EQ(tree.Do(Of("SerialBus/Label = a")), eKW_ACC_NO_WRITE_ACCESS);
    KW_PeekZELRoot()->StartWriteAccess(eCLIENT_REMOTE);
    EXPECT_EQ(tree.Do(InSetup("RemoteControl/ReturnToLocal")), eKW_ACC_OK);
    KW_PeekZELRoot()->EndWriteAccess();
    EXPECT_EQ(tree.Do(Of("SerialBus/Label = a")), eKW_ACC_OK);
}

TEST(InstrumentRules, RandomWritesBreakWhatHolds)
{
    const QStringList groups = {Of("Print"),       Of("Export"),         Of("Control"),
                                Of("Runs"),        Of("Setup/Wireless"), Of("Setup/Selftest"),
                                Of("Performance"), Of("Setup/Display"),  Of("Setup/SetupDateTime"),
                                Of("Debug"),       Of("Setup/HwConfig"), Of("Setup/RemoteControl"),
                                Of("Setup"),       Of("SaveRecall")};
    for (UINT32 seed = 1; seed <= 12; ++seed)
    {
        CheckWalk(seed, {}, groups, Violations);
    }
}
