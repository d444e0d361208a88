// SPDX-License-Identifier: MIT
#include "IKWFunctionSelftest.h"
#include "IKWFunctionSelftestDevice.h"
#include "IKWFunctionSetup.h"
#include "KWBrackets.h"
#include "KWEnumerationsSelfTest.h"
#include "zel/RuleTree.h"

#include <QFile>

// Rules of what surrounds the measuring functions: files, runs, printing, setup, service.

namespace
{
const t_Rule kInstrumentRules[] = {
    {"SelectedModeIsActive", "", "Control/SMMode/OperationMode = METER",
     ".OperationMode = METER; .ActiveMode = SCOPE_YT"},
    {"SwitchedModeIsNotActive", "Control/SMMode/OperationMode = METER", ".SwitchMode",
     ".ActiveMode = METER; .PreviousMode = SCOPE_YT"},
    {"ConverterIgnoresItsMode", "Setup/Selfalignment/ADConverter/ADCModeMode = MANUAL",
     ".ADCModeManual = ONE_CHANNEL", ".ADCModeResult = ONE_CHANNEL"},
    {"ConverterKeepsItsManualMode",
     "Setup/Selfalignment/ADConverter/ADCModeMode = MANUAL; .ADCModeManual = ONE_CHANNEL",
     ".ADCModeMode = AUTO", ".ADCModeResult = FOUR_CHANNELS"},
    {"ConverterIgnoresTheTimebase", "Vertical/Channel[1]/Enabled = OFF; ..Channel[2]/Enabled = OFF",
     "Horizontal/ZELMode = ZEL_B", "Setup/Selfalignment/ADConverter/ADCModeResult = TWO_CHANNELS"},
    {"StoppedScopeStillRuns", "", "Control/SMScope/RunStop = STOP",
     "Runs/CurrentRun/RunStop = STOP"},
    {"StopDoesNotStop", "", "Control/SMScope/Stop",
     ".RunStop = STOP; Runs/CurrentRun/RunStop = STOP"},
    {"StartIsNoNewRun",
     "Control/SMScope/Stop; @Runs/CurrentRun/Triggers = 5; @.Acquisitions = 5; @.Duration = 5",
     "Control/SMScope/Start",
     ".RunStop = RUN; Runs/NumberOfRuns = 2; .CurrentRun/LastTriggerAge = 0-; .Triggers = 0; "
     ".Acquisitions = 0; .Duration = 0"},
    {"SingleRunHasNothingLeft", "Control/SMScope/SingleCount = 7", ".RunStop = SINGLE",
     ".AcquisitionsLeft = 7"},
    {"NSingleRunsOnAndOn", "Trigger/RepetitionMode = N_SINGLE; Control/SMScope/Stop",
     "Control/SMScope/RunStop = RUN", ".RunStop = SINGLE; .AcquisitionsLeft = 10", eKW_ACC_WARNING},
    {"SpectrumIsAMode", "", "Control/SMMode/OperationMode = SPECTRUM",
     ".OperationMode = SCOPE_YT; FFT/State = ON", eKW_ACC_WARNING},
    {"StoppedSingleRunHasSomethingLeft", "Control/SMScope/RunStop = SINGLE", ".Stop",
     ".AcquisitionsLeft = 0"},
    {"LoggerModeShowsTheScopesRun", "Control/SMMode/OperationMode = LOGGER", ".SwitchMode",
     "Runs/CurrentRun/RunStop = STOP"},
    {"MeterMakesSingleRuns", "", "Control/SMMeter/RunStop = SINGLE", ".RunStop = RUN",
     eKW_ACC_NOT_ENABLED},
    {"FormatLeavesTheExtension", "Print/File = a.png", ".Format = JPG",
     ".File = a.jpg; .Quality = 90"},
    {"ExtensionLeavesTheFormat", "Print/Format = JPG", ".File = a.BMP",
     ".Format = BMP; .File = a.BMP; .Quality = 90!"},
    {"BinaryExportHasDelimiters", "", "Export/SignalExport/FileFormat = BINARY",
     ".Delimiter = COMMA!; .DataFormat = REAL32"},
    {"ExportNameLeavesTheFormat", "", "Export/SignalExport/File = a.xml", ".FileFormat = XML"},
    {"LanguageIsNoLanguage", "", "Setup/Display/SelectedLanguage = Vertical/Channel[2]",
     ".SelectedLanguage = ", eKW_ACC_WARNING},
    {"LanguageOfTheMapIsRefused", "+ Setup/Display/UserInterfaceLanguage",
     ".SelectedLanguage = Setup/Display/UserInterfaceLanguage[Language1]",
     ".SelectedLanguage = Setup/Display/UserInterfaceLanguage[Language1]"},
    {"CountryAllowsItsChannels", "Setup/Wireless/Country = DE; .WirelessAccesspoint/Channel = 13",
     "Setup/Wireless/Country = US", ".WirelessAccesspoint/Channel = 11"},
    {"WorldAllowsMoreThanItsCountries", "Setup/Wireless/Country = DE", ".Country = WORLD",
     ".WirelessAccesspoint/Channel.values = 1|2|3|4|5|6|7|8|9|10|11"},
    {"EndedLinkHasGuests",
     "@Setup/Wireless/Connected = ON; @.WirelessAccesspoint/Guests = 3; @..WirelessClient/Signal = "
     "3",
     "..Mode = CLIENT",
     ".Connected = OFF; .WirelessAccesspoint/Guests = 0; ..WirelessClient/Signal = 3-"},
    {"ShortPassphraseCostsTheGoodOne",
     "Setup/Wireless/WirelessAccesspoint/Passphrase = correct horse", ".Passphrase = 1234567",
     ".Passphrase = correct horse", eKW_ACC_BAD_TEXT},
    {"ShortPassphraseOfAGuestIsKept", "Setup/Wireless/WirelessClient/Passphrase = correct horse",
     ".Passphrase = hunter2", ".Passphrase = correct horse", eKW_ACC_BAD_TEXT},
    {"KeyIsNoHexNumber", "",
     "Setup/Wireless/WirelessClient/Passphrase = "
     "0123456789abcdef0123456789ABCDEF0123456789abcdef0123456789abcdeg",
     ".Passphrase = ", eKW_ACC_BAD_TEXT},
    {"AutomaticAddressIsFixed", "", "Setup/Wireless/WirelessClient/AutomaticAddress = OFF",
     ".FixedAddress = ; .NetworkMask = 255.255.255.0; .Gateway = ; .NameServer = "},
    {"WiredAddressIsNone", "Setup/EthernetAutomaticAddress = OFF; .EthernetFixedAddress = 10.0.0.5",
     ".EthernetFixedAddress = 10.0.0.256", ".EthernetFixedAddress = 10.0.0.5", eKW_ACC_BAD_TEXT},
    {"MaskHasHoles", "Setup/EthernetAutomaticAddress = OFF", ".EthernetNetworkMask = 255.0.255.0",
     ".EthernetNetworkMask = 255.255.255.0", eKW_ACC_BAD_TEXT},
    {"GatewayIsOutOfReach",
     "Setup/EthernetAutomaticAddress = OFF; .EthernetFixedAddress = 10.0.0.5",
     ".EthernetGateway = 10.0.1.1", ".EthernetGateway = 10.0.1.1", eKW_ACC_WARNING},
    {"FixedAddressIsThatOfItsNetwork", "Setup/Wireless/WirelessClient/AutomaticAddress = OFF",
     ".FixedAddress = 192.168.0.0", ".FixedAddress = 192.168.0.0", eKW_ACC_WARNING},
    {"ChannelOfAnotherCountryIsTaken",
     "Setup/Wireless/Country = CN; .WirelessAccesspoint/Channel = 64", ".Channel = 100",
     ".Channel = 64", eKW_ACC_NOT_IN_VALUE_LIST},
    {"ClockHasTwoMasters", "", "Setup/SetupDateTime/UseNetworkTime = ON",
     ".RequestedTime = 0!; .TimeServer = "},
    {"PortOfUsb", "Setup/RemoteControl/Interface = ETHERNET", ".Interface = USB", ".Port = 5025!"},
    {"KeysStayLocked", "RemoteState = ON", "Setup/RemoteControl/ReturnToLocal",
     "RemoteState = OFF"},
    {"DeviceIsTestedWithAll", "", "Setup/Selftest/Selection = DEVICE",
     ".Device = ALL; .Group = SUPPLY!"},
    {"FiguresSurviveTheirReset", "", "Performance/ResetFigures",
     ".BlindTime = 0-; .PerformanceOfMeasurements/TotalTime = 0-; "
     ".PerformanceOfMeasurement[1]/MeanTime = 0-"},
    {"ReadbackOfAnotherAddress", "", "Debug/RegisterAddress = 16", ".RegisterReadback = 0-"},
    {"EmptySlotIsRecalled", "", "SaveRecall/RecallFromSlot", "", eKW_ACC_NOT_FOUND},
    {"FileWithoutANameIsSaved", "", "SaveRecall/SaveToFile", "", eKW_ACC_BAD_NAME},
    {"ProtectedSlotIsOverwritten", "SaveRecall/SaveRecallSlot[0]/Protected = ON",
     "SaveRecall/SaveToSlot", ".SaveRecallSlot[0]/Used = OFF", eKW_ACC_READ_ONLY},
    {"ProtectedSlotIsCleared", "SaveRecall/SaveToSlot; .SaveRecallSlot[0]/Protected = ON",
     "SaveRecall/ClearSlot", ".SaveRecallSlot[0]/Used = ON", eKW_ACC_READ_ONLY},
    {"ClearedSlotIsUsed",
     "SaveRecall/SelectedSlot = SLOT3; .SaveRecallSlot[2]/Name = a; SaveRecall/SaveToSlot",
     ".ClearSlot", ".SaveRecallSlot[2]/Used = OFF; .SavedAt = 0; .Name = "},
    {"SlotLosesSettings", "SerialBus/Label = a; SaveRecall/SaveToSlot; SerialBus/Label = b",
     "SaveRecall/RecallFromSlot", "SerialBus/Label = a"},
    {"RecallKeepsTheScreen",
     "SerialBus/Label = a; SaveRecall/File = a.csv; .SaveToFile; SerialBus/Label = b; "
     "Diagrams/DiagramWindow[0]/Size = 40; SaveRecall/RecallScreen = OFF",
     ".RecallFromFile", "SerialBus/Label = a; Diagrams/DiagramWindow[0]/Size = 40"},
    {"RecallLeavesTheScreen", "SaveRecall/SaveToSlot; Diagrams/DiagramWindow[0]/Size = 40",
     "SaveRecall/RecallFromSlot", "Diagrams/DiagramWindow[0]/Size = 50"},
};

bool HasItsExtension(const CRuleTree& tree, const char* file, const char* format)
{
    const QString name = tree.Text(file).toLower();
    return name.isEmpty() || name.endsWith(QLatin1Char('.') + tree.Text(format).toLower().left(3));
}

void CheckInstrument(const CRuleTree& tree, CFindings& findings)
{
    findings.Check(HasItsExtension(tree, "Print/File", "Print/Format"), "extension of a picture");
    findings.Check(
        HasItsExtension(tree, "Export/SignalExport/File", "Export/SignalExport/FileFormat"),
        "extension of an export");
    const QString mode = tree.Text("Control/SMMode/ActiveMode");
    findings.Check(tree.Text("Runs/CurrentRun/RunStop") == tree.Text("Control/SMScope/RunStop") ||
                       mode == QLatin1String("METER") || mode == QLatin1String("LOGGER"),
                   "run of the scope");
    const QByteArray channel = "Setup/Wireless/WirelessAccesspoint/Channel";
    findings.Check(tree.State(channel + ".values").split(u'|').contains(tree.Text(channel)),
                   "channel of another country");
}
} // namespace

INSTANTIATE_TEST_SUITE_P(Instrument, Rules, testing::ValuesIn(kInstrumentRules), Rules::Name);
INSTANTIATE_TEST_SUITE_P(Instrument, Walks,
                         testing::Values(t_Walk{
                             "",
                             "Print Export Control Runs Setup/Wireless Setup/Selftest Performance "
                             "Setup/Display Setup/SetupDateTime Debug Setup/HwConfig "
                             "Setup/RemoteControl Setup SaveRecall",
                             CheckInstrument, 12}));

TEST(InstrumentRules, SelftestRunsOnAfterAbort)
{
    const CRuleTree tree;
    const auto test = tree.root->GetPgSetup()->GetPgSelftest();
    const auto device = test->GetPgSelftestDevice()->GetItem(1);
    ASSERT_EQ(test->GetPrState()->SetResult(eKW_ZEL_SELFTEST_STATE_RUNNING), eKW_ACC_OK);
    ASSERT_EQ(device->GetPrState()->SetResult(eKW_ZEL_SELFTEST_STATE_RUNNING), eKW_ACC_OK);
    ASSERT_EQ(tree.Do("Setup/Selftest/Abort"), eKW_ACC_OK);
    EXPECT_EQ(test->GetPrState()->Get(), eKW_ZEL_SELFTEST_STATE_ABORTED);
    EXPECT_EQ(device->GetPrState()->Get(), eKW_ZEL_SELFTEST_STATE_ABORTED);
}

TEST(InstrumentRules, SelftestKeepsOldResultsOrForgetsThoseOfOthers)
{
    const CRuleTree tree;
    const auto test = tree.root->GetPgSetup()->GetPgSelftest();
    const auto devices = test->GetPgSelftestDevice();
    for (const INT32 selection : {0, 1, 2, 3})
    {
        for (INT32 chosen = 0; chosen <= devices->GetCount(); ++chosen)
        {
            ASSERT_EQ(test->GetPrSelection()->SetAsInt(selection), eKW_ACC_OK);
            test->GetPrDevice()->SetAsInt(chosen);
            for (INT32 i = 0; i < devices->GetCount(); ++i)
            {
                const auto item = devices->GetItem(i);
                ASSERT_EQ(item->GetPrErrorCode()->SetResult(7), eKW_ACC_OK);
                ASSERT_EQ(item->GetPrState()->SetResult(eKW_ZEL_SELFTEST_STATE_FAILED), eKW_ACC_OK);
            }
            tree.DoAll("Setup/Selftest/Start");
            const INT32 device = test->GetPrDevice()->GetAsInt();
            const bool isOne = selection == eKW_ZEL_SELFTEST_SELECTION_DEVICE && device > 0;
            for (INT32 i = 0; i < devices->GetCount(); ++i)
            {
                const auto item = devices->GetItem(i);
                const bool isKept = isOne && item->GetPrDevice()->GetAsInt() != device;
                const bool isFailed = item->GetPrState()->Get() == eKW_ZEL_SELFTEST_STATE_FAILED;
                EXPECT_EQ(item->GetPrErrorCode()->Get(), isKept ? 7U : 0U)
                    << "selection " << selection << " of " << device << ", item " << i;
                EXPECT_EQ(isFailed, isKept) << i;
            }
        }
    }
}

TEST(InstrumentRules, SlotHasNoFileOfItsOwn)
{
    const CRuleTree tree;
    tree.DoAll("SaveRecall/SelectedSlot = SLOT10; SaveRecall/SaveToSlot");
    EXPECT_TRUE(QFile::exists(tree.folder.filePath(QStringLiteral("SLOT10.xml"))));
    EXPECT_GT(tree.Number("SaveRecall/SaveRecallSlot[9]/SavedAt"), 1.0e9);
    tree.DoAll("SaveRecall/ClearSlot");
    EXPECT_FALSE(QFile::exists(tree.folder.filePath(QStringLiteral("SLOT10.xml"))));
}

TEST(InstrumentRules, RemoteStateOpensALockOrUserGetsNoKeysBack)
{
    const CRuleTree tree;
    EXPECT_EQ(tree.Do("RemoteState = ON"), eKW_ACC_OK);
    EXPECT_EQ(tree.root->GetControlMode(), eCONTROL_REMOTE);
    EXPECT_EQ(tree.Do("SerialBus/Label = a"), eKW_ACC_OK);
    EXPECT_EQ(tree.Do("RemoteState = OFF"), eKW_ACC_OK);
    EXPECT_EQ(tree.root->GetControlMode(), eCONTROL_LOCAL);
    tree.root->SetControlMode(eCONTROL_LOCAL_LOCKOUT);
    EXPECT_EQ(tree.Do("SerialBus/Label = b"), eKW_ACC_NO_WRITE_ACCESS);
    {
        const CKWWriteBracket bracket(tree.root, eCLIENT_REMOTE);
        for (const char* const write : {"RemoteState = ON", "RemoteState = OFF"})
        {
            EXPECT_EQ(tree.Do(write), eKW_ACC_OK);
            EXPECT_EQ(tree.root->GetControlMode(), eCONTROL_LOCAL_LOCKOUT) << write;
        }
        EXPECT_EQ(tree.Do("Setup/RemoteControl/ReturnToLocal"), eKW_ACC_OK);
    }
    EXPECT_EQ(tree.root->GetControlMode(), eCONTROL_LOCAL);
    EXPECT_EQ(tree.Do("SerialBus/Label = b"), eKW_ACC_OK);
}
