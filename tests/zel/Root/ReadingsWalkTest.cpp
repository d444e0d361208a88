// SPDX-License-Identifier: MIT
// Readings against the settings that they were measured with, while these change at random.
#include "zel/RuleTree.h"

#include <map>

namespace
{
/** A result, and what it is of: settings, and channels whose probes count. Paths are separated by
    blanks. */
struct t_Reading
{
    const char* result;
    const char* settings;
    const char* channels;
};

#define MEASUREMENT "Measurements/Measurement[0]/"
#define CURSORS "Cursor/CursorMeasurements/CursorMeasurement[0]/"
#define HARMONIC "Harmonic/HarmonicUIResults/HarmonicChannelUIResult[0]/"
#define ANALYSIS                                                                                   \
    "Harmonic/Fundamental Harmonic/UserFundamental Harmonic/FundamentalSource "                    \
    "Harmonic/NumberOfHarmonics "
#define MARKER "Spectrum/SpectrumMarkers/SpectrumMarker[0]/"

const t_Reading kReadings[] = {
    {MEASUREMENT "Actual",
     MEASUREMENT "Type " MEASUREMENT "SecondSlope " MEASUREMENT "Unit Measurements/GateStart",
     MEASUREMENT "Source " MEASUREMENT "SecondSource"},
    {MEASUREMENT "Count", MEASUREMENT "Type Measurements/UpperReferencePercent",
     MEASUREMENT "Source"},
    {MEASUREMENT "Limit", MEASUREMENT "LowerLimit " MEASUREMENT "Unit", MEASUREMENT "Source"},
    {CURSORS "Result", CURSORS "Type " CURSORS "Unit Cursor/X1 Cursor/X2", CURSORS "Source"},
    {HARMONIC "Thd", ANALYSIS "Harmonic/ThdType", HARMONIC "Source"},
    {"Harmonic/HarmonicSelected[0]/Magnitude",
     ANALYSIS "Harmonic/ScaleSelection Harmonic/HarmonicSelected[0]/Order", HARMONIC "Source"},
    {"Harmonic/HarmonicSelected[0]/LimitValue",
     "Harmonic/ScaleSelection Harmonic/HarmonicStandard/HarmonicLimitCurrent/OrderLimits",
     HARMONIC "Source"},
    {HARMONIC "HarmonicChannelStatusHistory/NumberOfAnalyses",
     "Harmonic/HarmonicStandard/HarmonicLimitCurrent/OrderLimits", HARMONIC "Source"},
    {"Harmonic/HarmonicUIResults/AveragesDone", "Harmonic/ScaleSelection Harmonic/Average",
     HARMONIC "Source"},
    {MARKER "Magnitude",
     MARKER "Frequency Spectrum/MagnitudeUnit Spectrum/VerticalScaling Spectrum/Impedance "
            "Spectrum/WindowType Spectrum/HorizontalStart Spectrum/HorizontalStop",
     "Spectrum/Source"},
    {"FFT/AveragesDone", "Spectrum/RBW Spectrum/Mode", "Spectrum/Source"},
};

/** What a reading is of, as it stands now. */
QStringList Settings(const CRuleTree& tree, const t_Reading& reading)
{
    QStringList now;
    for (const QByteArray& setting : QByteArray(reading.settings).split(' '))
    {
        now.append(tree.Text(setting));
    }
    for (const QByteArray& selector : QByteArray(reading.channels).split(' '))
    {
        const QString channel = tree.Text(selector);
        now.append(channel);
        if (channel.startsWith(u'C'))
        {
            const QByteArray probe = "Vertical/Channel[" +
                                     QByteArray::number(channel.mid(1).toInt() - 1) +
                                     "]/ProbeFactor";
            now.append({tree.Text(probe), tree.State(probe.chopped(6) + "Unit")});
        }
    }
    return now;
}

/** Whether something was delivered since it was dropped. */
bool IsThere(const CRuleTree& tree, const t_Reading& reading)
{
    const QString state = tree.State(reading.result);
    return !state.endsWith(u'-') && state != u'0';
}

void CheckUnits(const CRuleTree& tree)
{
    const auto unit = [&tree](const char* path) { return tree.State(QByteArray(path) + ".unit"); };
    EXPECT_EQ(unit(MEASUREMENT "Actual"), tree.Text(MEASUREMENT "Unit"));
    EXPECT_EQ(unit(CURSORS "Result"), tree.Text(CURSORS "Unit"));
    EXPECT_EQ(tree.Text(HARMONIC "Unit"), tree.Text("Vertical/Channel[0]/ProbeUnit"));
    const QString axis = unit("Spectrum/VerticalStop");
    const bool isLinear = tree.Text("Spectrum/VerticalScaling") == QLatin1String("LINEAR");
    const bool isVoltage = tree.Text("Spectrum/InputUnit") == QLatin1String("VOLTAGE");
    const QString linear = QLatin1String(isVoltage ? "LEVEL_V" : "LEVEL_A");
    EXPECT_EQ(axis,
              isLinear ? linear : QStringLiteral("LEVEL_") + tree.Text("Spectrum/MagnitudeUnit"));
    for (const char* const line :
         {MARKER "Magnitude", "Spectrum/SpectrumMarkers/ReferenceMarker/Magnitude",
          "Spectrum/SpectrumCursors/SpectrumCursor[1]/Vertical"})
    {
        EXPECT_EQ(unit(line), axis) << line;
    }
    EXPECT_EQ(unit("Spectrum/SpectrumMarkers/Threshold"), unit("Spectrum/VerticalRefLevel"));
}
} // namespace

TEST(Readings, OutliveTheirSettingsOrHaveAnotherUnit)
{
    constexpr int kTrees = 20;
    constexpr int kWrites = 150;
    for (UINT32 seed = 1; seed <= kTrees && !HasFailure(); ++seed)
    {
        const CRuleTree tree;
        const QByteArray markers = "Spectrum/SpectrumMarkers/SpectrumMarker";
        tree.DoAll("Logic/Enabled = ON; + " + markers);
        CDice dice(seed);
        std::map<const char*, QStringList> measuredWith;
        for (int i = 0; i < kWrites && !HasFailure(); ++i)
        {
            for (const t_Reading& reading : kReadings)
            {
                if (!IsThere(tree, reading))
                {
                    const QStringList values = Property(tree.root, reading.result)->GetValueTexts();
                    const QString text = values.isEmpty() ? QStringLiteral("1") : values.last();
                    tree.DoAll(QByteArray("@") + reading.result + " = " + text.toLatin1());
                    measuredWith[reading.result] = Settings(tree, reading);
                }
            }
            const QString write = DoAnything(
                tree,
                {"Vertical", "Vertical/Channel[0]", "Measurements/Measurement[0]", "Measurements",
                 "Mathematics", "Logic", "Cursor", "Cursor/CursorMeasurements", "Harmonic",
                 "Harmonic/HarmonicStandard", "Spectrum", "Spectrum"},
                dice);
            if (tree.State(markers + ".count") == u'0')
            {
                tree.DoAll("+ " + markers);
            }
            SCOPED_TRACE(testing::Message() << "seed " << seed << ": " << write.toStdString());
            CheckUnits(tree);
            for (const t_Reading& reading : kReadings)
            {
                EXPECT_TRUE(!IsThere(tree, reading) ||
                            measuredWith[reading.result] == Settings(tree, reading))
                    << reading.result;
            }
        }
    }
}
