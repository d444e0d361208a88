// SPDX-License-Identifier: MIT
#include "Vectors.h"

#include "Mathematics/Mathematics.h"

#include <cstring>
#include <limits>

namespace NVectors
{
namespace
{
/** One step of a float, in doubles. */
constexpr const char kOneFloat[] = "536870912";

constexpr std::size_t kPoints = 37; // whole steps of vectors, and some points more

/** C1 with 16 bit, C2 with floats, both with invalid points; R1 at other times. */
CKWRecord Sources()
{
    std::vector<INT16> words;
    std::vector<float> reals;
    std::vector<float> others;
    for (const double value : Scattered(kPoints, -3, 14))
    {
        words.push_back(static_cast<INT16>(value));
        reals.push_back(static_cast<float>(value / 3.0));
        others.push_back(static_cast<float>(value * 7e-3));
    }
    words[5] = std::numeric_limits<INT16>::min();
    words[6] = 0;
    reals[9] = std::numeric_limits<float>::quiet_NaN();
    reals[10] = 0.0F;
    const KW_TraceInfo infos[] = {{eKW_ZEL_CHANNEL_C1, eKW_SAMPLES_INT16, eKW_UNIT_LEVEL_V, 0,
                                   kPoints, 2, 1e-3, -0.1, 3e-4, 0.7},
                                  {eKW_ZEL_CHANNEL_C2, eKW_SAMPLES_FLOAT, eKW_UNIT_LEVEL_A, 0,
                                   kPoints, 0, 1e-3, -0.1, 1.0, 0.0},
                                  {eKW_ZEL_CHANNEL_R1, eKW_SAMPLES_FLOAT, eKW_UNIT_LEVEL_V, 0,
                                   kPoints, 0, 1.3e-3, -0.11, 2.5, -1.0}};
    const std::span<const std::byte> samples[] = {std::as_bytes(std::span(words)),
                                                  std::as_bytes(std::span(reals)),
                                                  std::as_bytes(std::span(others))};
    return KW_MakeRecord({}, infos, samples);
}

template <typename T>
std::vector<T> Curve(KW_MathSettings settings, KW_SAMPLE_FORMAT format)
{
    settings.format = format;
    CKWMathematics mathematics;
    KW_MathError error;
    CKWRecord curve;
    mathematics.Configure(settings, error);
    mathematics.Compute(Sources(), curve);
    std::vector<T> points(curve.GetSamples(0).size() / sizeof(T));
    std::memcpy(points.data(), curve.GetSamples(0).data(), points.size() * sizeof(T));
    return points;
}

/** Each point with its number; with 16 bit only where no step of a float decides. */
void AddCurve(t_Lines& lines, const char* name, const char* slack, const KW_MathSettings& settings,
              int which)
{
    const std::vector<float> reals = Curve<float>(settings, eKW_SAMPLES_FLOAT);
    const std::vector<INT16> words = slack == std::string(kExact)
                                         ? Curve<INT16>(settings, eKW_SAMPLES_INT16)
                                         : std::vector<INT16>(reals.size());
    const auto point = [&](int, int i)
    {
        const auto at = static_cast<std::size_t>(i);
        return std::tuple{double{reals[at]}, words[at]};
    };
    Add(lines, name, slack, point, which, Range(0, static_cast<int>(reals.size()) - 1));
}
} // namespace

void AddCurves(t_Lines& lines)
{
    KW_MathSettings settings;
    settings.filterFrequency = 123.0;
    settings.integralStart = 0.25;
    for (int type = eKW_ZEL_MATHEMATICS_TYPE_ADD; type <= eKW_ZEL_MATHEMATICS_TYPE_HIGH_PASS;
         ++type)
    {
        settings.type = KW_ZEL_MATHEMATICS_TYPE(type);
        const bool isOfLibrary = type == eKW_ZEL_MATHEMATICS_TYPE_LOG10 ||
                                 type == eKW_ZEL_MATHEMATICS_TYPE_LN ||
                                 type >= eKW_ZEL_MATHEMATICS_TYPE_LOW_PASS;
        AddCurve(lines, "Curve.Operation", isOfLibrary ? kOneFloat : kExact, settings, type);
    }
    settings.usesExpression = true;
    int number = 0;
    for (const char* const text :
         {"C1", "C1*C2/(C1-0.7)", "abs(C2)-sqr(C1)/3+R1", "1e30*C2*1e9", "-(2-C1)*(R1+C2/0.1)"})
    {
        settings.expression = QLatin1String(text);
        AddCurve(lines, "Curve.Expression", kExact, settings, number++);
    }
}
} // namespace NVectors
