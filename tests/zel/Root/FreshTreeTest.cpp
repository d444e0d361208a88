// SPDX-License-Identifier: MIT
// What a tree shows before anything was measured.
#include "../RuleTree.h"

#include <QRegularExpression>
#include <set>

namespace
{
/** Results that are valid all the same, by what they are, as regular expressions of their paths
    without the indices of items. Numbers of a count begin at 0 and need no entry. */
constexpr const char* kKnown[] = {
    // Which place of an array it is.
    "/(Channel|AnalogChannel|Source|Slot|Step|Slice|Half|Device|Part|Stream|Counter|Measurement)$",
    // What follows from settings.
    "/(Unit|Threshold|Hysteresis|ThresholdRange|AssociatedSignalStream|SampleRate|Scale)$",
    "^(Horizontal|Zoom|DDC|FFT|Mathematics)/[^/]+$",
    "^Cursor/(SourceType|DeltaX|DeltaY|DeltaLevelX|InverseDeltaX|Slope)$",
    "^Spectrum/(FFTSampleFrequency|Window.*|InputUnit|Vertical.*)$",
    "^Spectrum/SpectrumCursors/Delta",
    "^(Logger/LoggerCursor/DeltaX|HistoryViewer/TraceTime)$",
    "^(Diagrams|Trigger/[^/]+)/",
    "^Vertical/(Channel/(Top|Bottom|Range|Probe[^/]+|ChannelType/.*|ChannelSourceTypes/"
    ".*)|Analog.*)$",
    "^Meter/(AdcPath|Coupling|InputType|MeasType|TestCurrent|Probe[^/]+)$",
    "^Meter/MeterChannel/(Bargraph.*|Range.*|StatusIcon|MeterMeasurement/Resolution)$",
    "^Harmonic/HarmonicStandard/",
    "^SerialBus/BusResults/Protocol$",
    // States, which say themselves that nothing happened yet.
    "/(State|OperationState|Result|Dialog|TemperatureDialog|Used|Overload|Complete|Progress)$",
    "^(Mask/(State|ElapsedTime|MaskChannelSetup/Mask(Defined|Lines))|Logger/Recording)$",
    "^Spectrum/(AverageComplete|Clipping[^/]+)$",
    "^(Control|Runs|SaveRecall|Export|Print|Debug)/",
    "^(Counter/(ReferenceLocked|CounterChannel/SignalPresent))$",
    "^(Logic/(ProbeConnected|LogicChannel/Level)|Logger/MemoryUsed)$",
    "^Meter/MeterChannel/MeterMeasurement/(Status|Limit)$",
    "^Horizontal/SampleCounter/(ActiveBuffer|PreTriggerComplete)$",
    "^SerialBus/(BusResults/Truncated|.*/Activity)$",
    // What the instrument is and has.
    "^Setup/",
};

/** Path without "[n]". */
QString Collapsed(const IDbProperty& property)
{
    static const QRegularExpression kIndex(QStringLiteral("\\[\\d+\\]"));
    return property.GetPath().remove(kIndex);
}

/** Whether it is a number of something, and that is 0. */
bool IsEmptyCount(const IDbProperty& property)
{
    return property.GetTypeName() != QLatin1String("double") &&
           property.GetText() == QLatin1String("0");
}
} // namespace

TEST(FreshTree, ShowsSomethingAsMeasured)
{
    std::vector<std::pair<const char*, QRegularExpression>> known;
    for (const char* const pattern : kKnown)
    {
        known.emplace_back(pattern, QRegularExpression(QLatin1String(pattern)));
    }
    std::set<const char*> idle(std::begin(kKnown), std::end(kKnown));
    const CRuleTree tree;
    for (const auto& group : GroupsFrom(tree.root->GetDbObject()))
    {
        for (INT32 i = 0; i < group->GetPropertyCount(); ++i)
        {
            const auto property = group->GetProperty(i);
            if (property->GetObjectType() != eOBJECTTYPE_RESULT ||
                property->GetValidity() != eKW_VALIDITY_VALID || IsEmptyCount(*property))
            {
                continue;
            }
            const QString path = Collapsed(*property);
            const auto why =
                std::find_if(known.begin(), known.end(),
                             [&path](const auto& entry) { return path.contains(entry.second); });
            EXPECT_TRUE(why != known.end()) << path.toStdString();
            idle.erase(why == known.end() ? nullptr : why->first);
        }
    }
    for (const char* const pattern : idle)
    {
        ADD_FAILURE() << "nothing is " << pattern;
    }
}
