// SPDX-License-Identifier: MIT
// Curves against a naive evaluator: each point of random expressions over random sources of all
// formats, with a bound of what float steps may lose.
#include "mathematics/TestTraces.h"

#include <cfloat>
#include <functional>

namespace
{
constexpr double kStep = 1.2e-7; ///< a rounding of a float, a little more

/** A value and how far a computation with floats may be from it; NaN: invalid; an error of
   infinity: near a step that may have a result or none. */
struct t_Bounded
{
    double value;
    double error;
};

t_Bounded Rounded(double value, double error)
{
    const double all = error + kStep * std::fabs(value) + 1e-44;
    if (std::isnan(value) || std::isnan(all) || std::fabs(value) - error > 1.01 * FLT_MAX)
    {
        return {kNaN, std::isinf(error) ? kInfinity : 0};
    }
    return {value, std::fabs(value) + error > 0.99 * FLT_MAX ? kInfinity : all};
}

t_Bounded Quotient(t_Bounded a, t_Bounded b)
{
    const double least = std::fabs(b.value) - b.error;
    if (b.value == 0 && b.error <= 2e-44)
    {
        return {kNaN, a.error == kInfinity ? kInfinity : 0};
    }
    if (!(least > 0))
    {
        return {kNaN, std::isnan(b.value) && b.error == 0 ? 0 : kInfinity};
    }
    const double value = a.value / b.value;
    return Rounded(value, (a.error + std::fabs(value) * b.error) / least);
}

using t_Values = std::array<t_Bounded, eKW_MATH_CHANNELS>;
using t_Naive = std::function<t_Bounded(const t_Values&)>;

struct t_Random
{
    std::string text;
    t_Naive naive;
};

/** An expression, and the same as nested calls. */
class CRandomExpression
{
public:
    explicit CRandomExpression(std::mt19937& random) : m_random(random) {}

    t_Random Make(int depth)
    {
        if (depth == 0 || m_random() % 6 == 0)
        {
            return Leaf();
        }
        const t_Random a = Make(depth - 1);
        switch (m_random() % 7)
        {
        case 0:
            return {"abs(" + a.text + ")", [a = a.naive](const t_Values& v)
                    {
                        const t_Bounded x = a(v);
                        return t_Bounded{std::fabs(x.value), x.error};
                    }};
        case 1:
            return {"sqr(" + a.text + ")",
                    [a = a.naive](const t_Values& v) { return Product(a(v), a(v)); }};
        case 2:
            return {"(-(" + a.text + "))", [a = a.naive](const t_Values& v)
                    {
                        const t_Bounded x = a(v);
                        return t_Bounded{-x.value, x.error};
                    }};
        default:
            return Pair(a, Make(depth - 1));
        }
    }

private:
    static t_Bounded Product(t_Bounded a, t_Bounded b)
    {
        return Rounded(a.value * b.value, std::fabs(a.value) * b.error +
                                              std::fabs(b.value) * a.error + a.error * b.error);
    }

    t_Random Leaf()
    {
        static constexpr int kChannels[] = {0, 1, 2, 3, 5};
        static constexpr const char* kNames[] = {"C1", "C2", "C3", "C4", "R1"};
        if (m_random() % 4 == 0)
        {
            const double constant =
                double(m_random() % 4001) / 1000 - (m_random() % 3 == 0 ? 2 : 0);
            const std::string text = std::to_string(constant);
            return {"(" + text + ")", [text](const t_Values&)
                    {
                        const double value = std::stod(text);
                        return t_Bounded{value, kStep * std::fabs(value)};
                    }};
        }
        const std::size_t i = m_random() % 5;
        return {kNames[i], [i](const t_Values& v) { return v[kChannels[i]]; }};
    }

    t_Random Pair(const t_Random& a, const t_Random& b)
    {
        const char* const sign = &"+\0-\0*\0/"[2 * (m_random() % 4)];
        return {"(" + a.text + sign + b.text + ")",
                [a = a.naive, b = b.naive, sign = *sign](const t_Values& v)
                {
                    const t_Bounded x = a(v);
                    const t_Bounded y = b(v);
                    return sign == '+'   ? Rounded(x.value + y.value, x.error + y.error)
                           : sign == '-' ? Rounded(x.value - y.value, x.error + y.error)
                           : sign == '*' ? Product(x, y)
                                         : Quotient(x, y);
                }};
    }

    std::mt19937& m_random;
};

void ExpectFloats(const CKWRecord& result, const std::vector<t_Bounded>& naive,
                  const std::string& text)
{
    const std::vector<double> values = ValuesOf(result);
    ASSERT_EQ(values.size(), naive.size()) << text;
    for (std::size_t i = 0; i < naive.size(); ++i)
    {
        if (naive[i].error < kInfinity)
        {
            ASSERT_TRUE(std::isnan(values[i])
                            ? std::isnan(naive[i].value)
                            : std::fabs(values[i] - naive[i].value) <= naive[i].error)
                << text << ", point " << i << ": " << values[i] << ", naive " << naive[i].value
                << " within " << naive[i].error;
        }
    }
}

/** Numbers of 16 bit are those of the float curve, rounded, or cut where the trace says so. */
void ExpectWords(const CKWRecord& words, const std::vector<double>& floats, const std::string& text)
{
    const KW_TraceInfo trace = words.GetTrace(0);
    const std::vector<double> values = ValuesOf(words);
    const double edge = 32767 * trace.scale;
    UINT32 flags = 0;
    for (std::size_t i = 0; i < floats.size(); ++i)
    {
        const double beyond = floats[i] - trace.offset;
        flags |= beyond > edge ? UINT32{eKW_TRACE_ABOVE_RANGE} : 0U;
        flags |= beyond < -edge ? UINT32{eKW_TRACE_BELOW_RANGE} : 0U;
        const double expected = trace.offset + std::min(std::max(beyond, -edge), edge);
        ASSERT_TRUE(std::isnan(floats[i]) ? std::isnan(values[i])
                                          : std::fabs(values[i] - expected) <= 0.51 * trace.scale)
            << text << ", point " << i << ": " << values[i] << ", float " << floats[i];
    }
    EXPECT_EQ(trace.flags & flags, flags) << text;
}
} // namespace

TEST(Curves, AreThoseOfANaiveEvaluator)
{
    std::mt19937 random(20261122);
    int computed = 0;
    for (int turn = 0; turn < 400; ++turn)
    {
        CRandomTraces traces(random, 1 + random() % (turn % 8 == 0 ? 5000 : 60));
        CRandomExpression maker(random);
        const t_Random expression = maker.Make(1 + int(random() % 4));
        KW_MathSettings settings;
        settings.usesExpression = true;
        settings.expression = QString::fromStdString(expression.text);
        settings.format = eKW_SAMPLES_FLOAT;
        CKWMathematics mathematics;
        KW_MathError error;
        if (mathematics.Configure(settings, error) == eKW_ACC_TOO_LONG)
        {
            continue;
        }
        CKWRecord floats;
        ASSERT_EQ(mathematics.Compute(traces.Record(), floats), eKW_ACC_OK) << expression.text;
        std::vector<t_Bounded> naive;
        for (std::size_t i = 0; i < traces.Count(); ++i)
        {
            t_Values values{};
            for (const int channel : {0, 1, 2, 3, 5})
            {
                const double value = traces.Value(channel, i);
                values[channel] = Rounded(value, kStep * traces.Magnitude(channel, i));
            }
            naive.push_back(expression.naive(values));
        }
        ExpectFloats(floats, naive, expression.text);
        settings.format = eKW_SAMPLES_INT16;
        settings.autoScale = turn % 3 != 0;
        settings.scale = {0.5, -1.26};
        mathematics.Configure(settings, error);
        CKWRecord words;
        ASSERT_EQ(mathematics.Compute(traces.Record(), words), eKW_ACC_OK);
        ExpectWords(words, ValuesOf(floats), expression.text);
        ++computed;
    }
    EXPECT_GT(computed, 200);
}
