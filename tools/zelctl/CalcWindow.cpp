// SPDX-License-Identifier: MIT
#include "Calculation.h"
#include "Diagram.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperFFT.h"
#include "KWEnumerationsSpectrum.h"
#include "KWEnumerationsUnits.h"
#include "WindowSpectrum.h"

#include <cmath>

namespace
{
using FFTHelper = CZELDatabaseHelperFFT;

constexpr int kLeastLength = 2;
constexpr int kLongestLength = 65536; ///< the longest FFT
constexpr double kLowestLevel = -140.0;
constexpr double kShownBins = 32.0;

std::vector<double> GetWeights(KW_WINDOW_TYPE type, UINT32 length)
{
    const auto weight = FFTHelper::GetWindowFunction(type, length);
    std::vector<double> weights;
    for (UINT32 k = 0; k < length; ++k)
    {
        weights.push_back(weight(k));
    }
    return weights;
}

UINT32 ReadLength(const CArguments& in)
{
    const double length = in.Whole("length", eKW_UNIT_SAMPLES, kLongestLength);
    if (length < kLeastLength)
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("LENGTH is a whole number %1 … %2, not \"%3\"")
                                          .arg(kLeastLength)
                                          .arg(kLongestLength)
                                          .arg(QString::fromStdString(in.Text("length"))));
    }
    return static_cast<UINT32>(length);
}

/** 1, 2 or 5 times a power of ten: about `count` of them make the range. */
double GetStep(double range, double count)
{
    const double decade = std::pow(10.0, std::floor(std::log10(range / count)));
    const double steps = range / count / decade;
    return decade * (steps < 1.5 ? 1.0 : steps < 3.5 ? 2.0 : steps < 7.5 ? 5.0 : 10.0);
}

t_Diagram MakeWeightDiagram(const std::vector<double>& weights, const QString& name)
{
    const auto last = static_cast<double>(weights.size() - 1);
    t_Diagram diagram{name,
                      {QStringLiteral("sample"), 0.0, last, GetStep(last, 6.0)},
                      {QStringLiteral("weight"), 0.0, 1.0, 0.2},
                      {}};
    for (std::size_t k = 0; k < weights.size(); ++k)
    {
        diagram.y.least = std::min(diagram.y.least, weights[k] < 0.0 ? -0.2 : 0.0);
        diagram.points.push_back({static_cast<double>(k), weights[k]});
    }
    return diagram;
}

t_Diagram MakeSpectrumDiagram(const CWindowSpectrum& spectrum, std::size_t length)
{
    const double most = std::min(kShownBins, static_cast<double>(length) / 2.0);
    t_Diagram diagram{
        QStringLiteral("Spectrum"),
        {QStringLiteral("frequency offset in bins"), -most, most, GetStep(2.0 * most, 8.0)},
        {QStringLiteral("dB"), kLowestLevel, 0.0, 20.0},
        {}};
    const auto count = static_cast<int>(std::floor(most / spectrum.GetResolution()));
    for (int i = -count; i <= count; ++i)
    {
        diagram.points.push_back({i * spectrum.GetResolution(),
                                  spectrum.GetLevels()[static_cast<std::size_t>(std::abs(i))]});
    }
    return diagram;
}

void AddSpectrum(const CWindowSpectrum& spectrum, CFigures& out)
{
    out.Add("coherent gain", spectrum.GetCoherentGain())
        .Add("noise bandwidth in bins", spectrum.GetNoiseBandwidth());
    const auto lobe = spectrum.GetHighestSideLobe();
    if (lobe)
    {
        out.Add("highest side lobe", *lobe, eKW_UNIT_LEVEL_DB);
    }
    else
    {
        out.Add("highest side lobe", QStringLiteral("none"));
    }
}

void AddDrawings(const CArguments& in, const std::vector<t_Diagram>& diagrams, CFigures& out)
{
    constexpr int kWidthElsewhere = 80;
    if (in.IsSet("--plot"))
    {
        const int width = GetTerminalWidth() > 0 ? GetTerminalWidth() : kWidthElsewhere;
        for (const t_Diagram& diagram : diagrams)
        {
            out.AddBelow({QString(), diagram.title}).AddBelow(DrawInText(diagram, width));
        }
    }
    if (in.Has("--svg"))
    {
        WriteWhole(QString::fromStdString(in.Text("--svg")), DrawAsSvg(diagrams));
    }
}

void AddWindow(const CArguments& in, KW_WINDOW_TYPE type, CFigures& out)
{
    const std::vector<double> weights = GetWeights(type, ReadLength(in));
    const bool drawn = in.IsSet("--plot") || in.Has("--svg");
    if (CWindowSpectrum::HasGain(weights))
    {
        const CWindowSpectrum spectrum(weights);
        AddSpectrum(spectrum, out);
        AddDrawings(in,
                    {MakeWeightDiagram(
                         weights, QStringLiteral("%1 window, %2 samples")
                                      .arg(GetStaticEnumNameInfo<KW_WINDOW_TYPE>().GetName(type))
                                      .arg(weights.size())),
                     MakeSpectrumDiagram(spectrum, weights.size())},
                    out);
    }
    else if (drawn)
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("a %1 window of %2 samples lets nothing pass")
                                          .arg(GetEnumText(type))
                                          .arg(weights.size()));
    }
    for (std::size_t k = 0; !drawn && k < weights.size(); ++k)
    {
        out.Add(QStringLiteral("w[%1]").arg(k), weights[k]);
    }
}

void Window(const CArguments& in, CFigures& out)
{
    const auto type = in.Enum<KW_WINDOW_TYPE>("type");
    int index = 0;
    for (const double coefficient : FFTHelper::GetWindowCoeff(type))
    {
        out.Add(QStringLiteral("a%1").arg(index++), coefficient);
    }
    out.Add("bandwidth in bins", FFTHelper::GetWindowFactor(type));
    out.Add("length factor", FFTHelper::GetWindowLengthFactor(type));
    if (in.Has("length"))
    {
        AddWindow(in, type, out);
    }
    else if (in.IsSet("--plot") || in.Has("--svg"))
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("a drawing needs the LENGTH of the window"));
    }
}
} // namespace

t_Calculation GetWindowCalculation()
{
    return {"window",
            "Coefficients, weights and spectrum of an FFT window",
            {"GetWindowCoeff", "GetWindowFunction", "GetWindowFactor", "GetWindowLengthFactor"},
            {{"type", "KW_WINDOW_TYPE"},
             {"length", "Samples of the window, 2 … 65536; adds its weights and gains", ""},
             {"--plot", "Draw the window and its spectrum instead of listing its weights", "",
              t_Argument::eTAKES::Flag},
             {"--svg", "Write the drawing to this file", ""}},
            &Window,
            {"HANN 8", "HANN 1024 --plot"}};
}
