// SPDX-License-Identifier: MIT
#include "Couplings.h"

namespace
{
class LoggerCoupling : public testing::TestWithParam<t_Coupling>
{
};

double Number(const std::shared_ptr<IKWFunctionZEL>& root, const QByteArray& path)
{
    return Property(root, path)->GetText().toDouble();
}
} // namespace

TEST_P(LoggerCoupling, IsAbsentOrDoesNotComeBack)
{
    CheckCoupling(GetParam());
}

#define CHANNEL "Logger/LoggerAttributes/LoggerChannel[1]/"
#define LAYOUT CHANNEL "LoggerChannelScreenLayout/"
#define SOURCE CHANNEL "LoggerChannelSource/"
#define CURSOR "Logger/LoggerCursor/"
#define ZOOM "Logger/LoggerZoom/"
#define SLOT "Logger/LoggerSlot[2]/"

INSTANTIATE_TEST_SUITE_P(
    Recording, LoggerCoupling,
    testing::Values(
        t_Coupling{"RecordingLocksItsSettings",
                   {},
                   "Logger/Start()",
                   0,
                   {"Logger/Recording=ON", "Logger/SampleRate.availability=1",
                    "Logger/Duration.availability=1", "Logger/StartDelay.availability=1",
                    CHANNEL "Enabled.availability=1", SOURCE "Source.availability=1",
                    CHANNEL "Visible.availability=0", "Logger/HorizontalScale.availability=0"}},
        t_Coupling{"LockedSettingIsTaken",
                   {"Logger/Start()"},
                   "Logger/SampleRate=1_PER_MIN",
                   eKW_ACC_READ_ONLY,
                   {"Logger/SampleRate=1_PER_SEC"}},
        t_Coupling{"StopUnlocks",
                   {"Logger/Start()"},
                   "Logger/Stop()",
                   0,
                   {"Logger/Recording=OFF", "Logger/SampleRate.availability=0",
                    SOURCE "Item.availability=0"}},
        t_Coupling{"RecordingThatEndsByItselfUnlocks",
                   {"Logger/Start()"},
                   "@Logger/Recording=OFF",
                   0,
                   {"Logger/SampleRate.availability=0"}},
        t_Coupling{"StartKeepsTheOldRecording",
                   {"@" CHANNEL "Maximum=5", "@Logger/LoggerAttributes/NumberOfSamples=9"},
                   "Logger/Start()",
                   0,
                   {"!" CHANNEL "Maximum", "Logger/LoggerAttributes/NumberOfSamples=0"}},
        t_Coupling{"ClearLeavesResults",
                   {"@" CHANNEL "Actual=5", "@" CHANNEL "LoggerCursorResults[1]/Value=5",
                    "@" CHANNEL "LoggerCursorResultsDelta/Mean=5",
                    "@Logger/LoggerAttributes/RecordedTime=100",
                    "@Logger/LoggerTime[0]/TimeStamp=7", "@Logger/MemoryUsed=50"},
                   "Logger/Clear()",
                   0,
                   {"!" CHANNEL "Actual", "!" CHANNEL "LoggerCursorResults[1]/Value",
                    "!" CHANNEL "LoggerCursorResultsDelta/Mean",
                    "!Logger/LoggerAttributes/RecordedTime", "!Logger/LoggerTime[0]/TimeStamp",
                    "Logger/MemoryUsed=0"}},
        t_Coupling{"WholeRecordingIsShown",
                   {"@Logger/LoggerAttributes/RecordedTime=601", "Logger/HorizontalPosition=77"},
                   "Logger/ShowAll()",
                   0,
                   {"Logger/HorizontalScale=2_MIN", "Logger/HorizontalPosition=0"}},
        t_Coupling{"NothingIsShown",
                   {},
                   "Logger/ShowAll()",
                   eKW_ACC_NOTHING_TO_DO,
                   {"Logger/HorizontalScale=10_S"}},
        t_Coupling{
            "SlotTakesTheRecording",
            {"@Logger/LoggerAttributes/NumberOfSamples=9",
             "@Logger/LoggerAttributes/RecordedTime=100", "@Logger/LoggerAttributes/SampleRate=2",
             "@Logger/LoggerTime[0]/TimeStamp=1234"},
            SLOT "Store()",
            0,
            {SLOT "Used=ON", SLOT "RecordedTime=100", SLOT "SampleRate=2", SLOT "StartTime=1234"}},
        t_Coupling{"NothingIsStored",
                   {},
                   SLOT "Store()",
                   eKW_ACC_NOTHING_TO_DO,
                   {SLOT "Used=OFF", "!" SLOT "StartTime"}},
        t_Coupling{"LoadDisturbsARecording",
                   {"@" SLOT "Used=ON", "Logger/Start()"},
                   SLOT "Load()",
                   eKW_ACC_NOT_AVAILABLE,
                   {"Logger/Recording=ON"}},
        t_Coupling{"EmptySlotIsLoaded", {}, SLOT "Load()", eKW_ACC_NOTHING_TO_DO, {}},
        t_Coupling{"UsedSlotIsRefused", {"@" SLOT "Used=ON"}, SLOT "Load()", 0, {}},
        t_Coupling{"DeletedSlotKeepsItsContents",
                   {"@" SLOT "Used=ON", "@" SLOT "Size=99", "@" SLOT "RecordedTime=9"},
                   SLOT "Delete()",
                   0,
                   {SLOT "Used=OFF", SLOT "Size=0", "!" SLOT "RecordedTime"}}),
    CouplingName);

INSTANTIATE_TEST_SUITE_P(
    Channel, LoggerCoupling,
    testing::Values(t_Coupling{"TopPushesTheBottom",
                               {},
                               LAYOUT "Top=-5",
                               0,
                               {LAYOUT "Bottom=-5.01", LAYOUT "VerticalRange=USER"}},
                    t_Coupling{"BottomPushesTheTop",
                               {},
                               LAYOUT "Bottom=1",
                               0,
                               {LAYOUT "Top=1.01", LAYOUT "VerticalRange=USER"}},
                    t_Coupling{"LargeEndsBecomeOne",
                               {},
                               LAYOUT "Bottom=1e9",
                               0,
                               {LAYOUT "Bottom=1e+09", LAYOUT "Top=1000001000"}},
                    t_Coupling{"TopReachesTheBottomsLimit",
                               {},
                               LAYOUT "Top=-1e15",
                               eKW_ACC_WARNING,
                               {LAYOUT "Bottom=-1e+15", LAYOUT "Top=-9.99999e+14"}},
                    t_Coupling{"LogarithmStartsBelowZero",
                               {},
                               LAYOUT "VerticalScaling=LOGARITHMIC",
                               0,
                               {LAYOUT "Bottom=1e-15", LAYOUT "Bottom.min=1e-15", LAYOUT "Top=1",
                                LAYOUT "VerticalRange=AUTO"}},
                    t_Coupling{"LogarithmTakesNegativeEnds",
                               {LAYOUT "VerticalScaling=LOGARITHMIC"},
                               LAYOUT "Bottom=-3",
                               eKW_ACC_BELOW_MINIMUM,
                               {LAYOUT "Bottom=1e-15"}},
                    t_Coupling{"LogarithmPushesByADecade",
                               {LAYOUT "VerticalScaling=LOGARITHMIC"},
                               LAYOUT "Bottom=4",
                               0,
                               {LAYOUT "Top=40"}},
                    t_Coupling{"LinearAxisForgetsTheBottom",
                               {LAYOUT "VerticalScaling=LOGARITHMIC"},
                               LAYOUT "VerticalScaling=LINEAR",
                               0,
                               {LAYOUT "Bottom=-1"}},
                    t_Coupling{"CurveFillsTheDiagram",
                               {"@" CHANNEL "Minimum=3", "@" CHANNEL "Maximum=8"},
                               CHANNEL "FindScale()",
                               0,
                               {LAYOUT "Bottom=3", LAYOUT "Top=8", LAYOUT "VerticalRange=USER"}},
                    t_Coupling{"CurveIsUnknown",
                               {},
                               CHANNEL "FindScale()",
                               eKW_ACC_NOTHING_TO_DO,
                               {LAYOUT "VerticalRange=AUTO"}},
                    t_Coupling{"ItemOfAnotherFunctionStays",
                               {SOURCE "Item=Meter/MeterChannel[1]"},
                               SOURCE "Source=COUNTER",
                               0,
                               {SOURCE "Item="}},
                    t_Coupling{"ItemOfItsFunctionGoes",
                               {SOURCE "Source=MEASUREMENT"},
                               SOURCE "Item=Measurements/Measurement[2]",
                               0,
                               {SOURCE "Item=Measurements/Measurement[2]"}},
                    t_Coupling{"WrongItemIsTaken",
                               {SOURCE "Source=HARMONIC"},
                               SOURCE "Item=Meter/MeterChannel[1]",
                               eKW_ACC_WARNING,
                               {SOURCE "Item="}}),
    CouplingName);

INSTANTIATE_TEST_SUITE_P(
    Lines, LoggerCoupling,
    testing::Values(
        t_Coupling{"CoupledLineStays",
                   {CURSOR "Coupled=ON"},
                   CURSOR "X2=100",
                   0,
                   {CURSOR "X1=60", CURSOR "DeltaX=40"}},
        t_Coupling{"FreeLineFollows", {}, CURSOR "X2=100", 0, {CURSOR "X1=20", CURSOR "DeltaX=80"}},
        t_Coupling{"LineLeavesTheRecording",
                   {CURSOR "Coupled=ON"},
                   CURSOR "X2=30",
                   eKW_ACC_WARNING,
                   {CURSOR "X1=0", CURSOR "DeltaX=30"}},
        t_Coupling{"LinesMissTheScreen",
                   {"Logger/HorizontalScale=20_S", "Logger/HorizontalPosition=100"},
                   CURSOR "SetToScreen()",
                   0,
                   {CURSOR "X1=150", CURSOR "X2=250", CURSOR "DeltaX=100"}},
        t_Coupling{"ZoomIsNotFiner",
                   {"Logger/HorizontalScale=1_MIN", ZOOM "Scale=30_S"},
                   "Logger/HorizontalScale=5_S",
                   0,
                   {ZOOM "Scale=2_S", ZOOM "Scale.values=1_S|2_S"}},
        t_Coupling{"FinestDiagramHasNoZoom",
                   {},
                   "Logger/HorizontalScale=1_S",
                   0,
                   {ZOOM "Scale=1_S", ZOOM "Scale.values=1_S"}},
        t_Coupling{"ZoomMissesTheLines",
                   {"Logger/HorizontalScale=1_MIN"},
                   ZOOM "CoupleToCursors=ON",
                   0,
                   {ZOOM "Position=20", ZOOM "Scale=5_S"}},
        t_Coupling{"ZoomStaysBehindTheLines",
                   {"Logger/HorizontalScale=1_MIN", ZOOM "CoupleToCursors=ON"},
                   CURSOR "X1=300",
                   0,
                   {ZOOM "Position=60", ZOOM "Scale=30_S"}},
        t_Coupling{"OwnPositionKeepsTheCoupling",
                   {ZOOM "CoupleToCursors=ON"},
                   ZOOM "Position=44",
                   0,
                   {ZOOM "CoupleToCursors=OFF", ZOOM "Position=44"}}),
    CouplingName);

TEST(LoggerRules, SomeSettingBreaksTheLogger)
{
    const auto root = GetZELRoot();
    const auto violations = [&root]
    {
        QStringList wrong;
        for (int i = 0; i < 4; ++i)
        {
            const QByteArray layout = "Logger/LoggerAttributes/LoggerChannel[" +
                                      QByteArray::number(i) + "]/LoggerChannelScreenLayout/";
            const bool isLogarithmic = Property(root, layout + "VerticalScaling")->GetText() ==
                                       QLatin1String("LOGARITHMIC");
            const double bottom = Number(root, layout + "Bottom");
            if (bottom >= Number(root, layout + "Top") || (isLogarithmic && bottom <= 0.0))
            {
                wrong.append(QString::fromLatin1(layout + "Top"));
            }
        }
        if (Number(root, CURSOR "DeltaX") != Number(root, CURSOR "X2") - Number(root, CURSOR "X1"))
        {
            wrong.append(QStringLiteral("DeltaX"));
        }
        const bool isRecording =
            Property(root, "Logger/Recording")->GetText() == QLatin1String("ON");
        if ((Property(root, "Logger/Duration")->GetAvailability() != eAVAILABILITY_AVAILABLE) !=
            isRecording)
        {
            wrong.append(QStringLiteral("Duration"));
        }
        const auto zoom = Property(root, ZOOM "Scale");
        if (!zoom->GetValueTexts().contains(zoom->GetText()))
        {
            wrong.append(zoom->GetPath());
        }
        return wrong;
    };
    WalkByChance(root, {QStringLiteral("Logger")}, 40, 1600, violations);
}
