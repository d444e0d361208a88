// SPDX-License-Identifier: MIT
#include "Mathematics/Blocks.h"

#include "Streams/Extremes.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace NMathematics
{
namespace
{
using NStreams::Load;
using NStreams::t_Floats;
using NStreams::t_Longs;
using NStreams::t_Words;

constexpr INT32 kExponent = 0x7F800000; ///< all of these bits: infinite, or no number
constexpr INT16 kNoWord = std::numeric_limits<INT16>::min();
constexpr float kMostWord = 32767.0F;

/** Eight points. */
struct t_Eight
{
    t_Floats low;
    t_Floats high;
};

void Store(void* target, t_Floats v)
{
    std::memcpy(target, &v, sizeof v);
}

/** All bits where the result is not finite: processors make different NaN. */
t_Floats Finite(t_Floats v)
{
    const t_Longs bits = (t_Longs)v;
    return (t_Floats)(bits | ((bits & kExponent) == kExponent));
}

class CWords
{
public:
    explicit CWords(const t_Input& input)
        : m_words(input.words), m_scale(t_Floats{} + input.scale),
          m_offset(t_Floats{} + input.offset)
    {
    }

    t_Eight operator()(UINT32 i) const
    {
        // Each word in the upper half of a long; shifting it down keeps the sign. A processor with
        // the higher byte first has the halves the other way round.
        const auto words = Load<t_Words>(m_words + i);
        constexpr t_Words kZero{};
        if constexpr (std::endian::native == std::endian::little)
        {
            return {Value(__builtin_shufflevector(kZero, words, 0, 8, 1, 9, 2, 10, 3, 11)),
                    Value(__builtin_shufflevector(kZero, words, 4, 12, 5, 13, 6, 14, 7, 15))};
        }
        else
        {
            return {Value(__builtin_shufflevector(words, kZero, 0, 8, 1, 9, 2, 10, 3, 11)),
                    Value(__builtin_shufflevector(words, kZero, 4, 12, 5, 13, 6, 14, 7, 15))};
        }
    }

private:
    t_Floats Value(t_Words halves) const
    {
        const t_Longs longs = (t_Longs)halves >> 16;
        const t_Floats value = __builtin_convertvector(longs, t_Floats) * m_scale + m_offset;
        return (t_Floats)((t_Longs)value | (longs == kNoWord));
    }

    const INT16* m_words;
    t_Floats m_scale;
    t_Floats m_offset;
};

class CReals
{
public:
    explicit CReals(const t_Input& input) : m_reals(input.reals) {}
    t_Eight operator()(UINT32 i) const
    {
        return {Load<t_Floats>(m_reals + i), Load<t_Floats>(m_reals + i + 4)};
    }

private:
    const float* m_reals;
};

class CConstant
{
public:
    explicit CConstant(const t_Input& input) : m_value(t_Floats{} + input.offset) {}
    t_Eight operator()(UINT32) const { return {m_value, m_value}; }

private:
    t_Floats m_value;
};

struct t_Sum
{
    static constexpr bool kIsSymmetric = true;
    static t_Floats Of(t_Floats a, t_Floats b) { return a + b; }
};
struct t_Difference
{
    static constexpr bool kIsSymmetric = false;
    static t_Floats Of(t_Floats a, t_Floats b) { return a - b; }
};
struct t_Product
{
    static constexpr bool kIsSymmetric = true;
    static t_Floats Of(t_Floats a, t_Floats b) { return a * b; }
};
struct t_Quotient
{
    static constexpr bool kIsSymmetric = false;
    /** By what is infinite would be 0: it is invalid, as everything else that is made of it. */
    static t_Floats Of(t_Floats a, t_Floats b) { return a / b + (b - b); }
};

template <class TOperation, class TA, class TB>
void Loop(const t_Input& inputA, const t_Input& inputB, float* target, UINT32 count)
{
    const TA a(inputA);
    const TB b(inputB);
    for (UINT32 i = 0; i < count; i += kStep)
    {
        const t_Eight x = a(i);
        const t_Eight y = b(i);
        Store(target + i, Finite(TOperation::Of(x.low, y.low)));
        Store(target + i + 4, Finite(TOperation::Of(x.high, y.high)));
    }
}

int RankOf(const t_Input& input)
{
    return input.words != nullptr ? 2 : (input.reals != nullptr ? 1 : 0);
}

template <class TOperation, class TA>
void WithFirst(const t_Input& a, const t_Input& b, float* target, UINT32 count)
{
    switch (RankOf(b))
    {
    case 2:
        return Loop<TOperation, TA, CWords>(a, b, target, count);
    case 1:
        return Loop<TOperation, TA, CReals>(a, b, target, count);
    default:
        return Loop<TOperation, TA, CConstant>(a, b, target, count);
    }
}

template <class TOperation>
void Combine(const t_Input& a, const t_Input& b, float* target, UINT32 count)
{
    if constexpr (TOperation::kIsSymmetric)
    {
        if (RankOf(a) < RankOf(b)) // fewer loops
        {
            return Combine<TOperation>(b, a, target, count);
        }
    }
    switch (RankOf(a))
    {
    case 2:
        return WithFirst<TOperation, CWords>(a, b, target, count);
    case 1:
        return WithFirst<TOperation, CReals>(a, b, target, count);
    default:
        return WithFirst<TOperation, CConstant>(a, b, target, count);
    }
}

t_Input ConstantInput(float value)
{
    t_Input input;
    input.offset = value;
    return input;
}

/** In place. */
template <class TFunction>
void Each(float* values, UINT32 count, TFunction function)
{
    for (UINT32 i = 0; i < count; ++i)
    {
        values[i] = function(values[i]);
    }
    for (UINT32 i = 0; i < count; i += kStep / 2)
    {
        Store(values + i, Finite(Load<t_Floats>(values + i)));
    }
}
} // namespace

void CopyBlock(const t_Input& from, float* target, UINT32 count)
{
    Combine<t_Product>(from, ConstantInput(1.0F), target, count);
}

void ComputeBlock(KW_ZEL_MATHEMATICS_TYPE type, const t_Input& a, const t_Input& b, float* target,
                  UINT32 count)
{
    switch (type)
    {
    case eKW_ZEL_MATHEMATICS_TYPE_ADD:
        return Combine<t_Sum>(a, b, target, count);
    case eKW_ZEL_MATHEMATICS_TYPE_SUBTRACT:
        return Combine<t_Difference>(a, b, target, count);
    case eKW_ZEL_MATHEMATICS_TYPE_MULTIPLY:
        return Combine<t_Product>(a, b, target, count);
    case eKW_ZEL_MATHEMATICS_TYPE_DIVIDE:
        return Combine<t_Quotient>(a, b, target, count);
    case eKW_ZEL_MATHEMATICS_TYPE_INVERT:
        return Combine<t_Difference>(ConstantInput(0.0F), a, target, count);
    case eKW_ZEL_MATHEMATICS_TYPE_RECIPROCAL:
        return Combine<t_Quotient>(ConstantInput(1.0F), a, target, count);
    case eKW_ZEL_MATHEMATICS_TYPE_SQUARE:
        return Combine<t_Product>(a, a, target, count);
    default:
        break;
    }
    CopyBlock(a, target, count);
    switch (type)
    {
    case eKW_ZEL_MATHEMATICS_TYPE_ABS:
        return Each(target, count, [](float value) { return std::fabs(value); });
    case eKW_ZEL_MATHEMATICS_TYPE_SQRT:
        return Each(target, count, [](float value) { return std::sqrt(value); });
    case eKW_ZEL_MATHEMATICS_TYPE_LOG10:
        return Each(target, count,
                    [](float value) { return static_cast<float>(std::log10(double{value})); });
    default:
        return Each(target, count,
                    [](float value) { return static_cast<float>(std::log(double{value})); });
    }
}

CQuantizer::CQuantizer(double scale, double offset)
    : m_factor(1.0 / scale), m_summand(-offset / scale), m_most(kMostWord)
{
}

namespace
{
/** Added and taken away again, it leaves whole numbers. */
constexpr float kWhole = 12582912.0F; // 1.5 × 2^23

/** Cut and rounded; INT16_MIN where there is no number. */
t_Longs Words(t_Floats exact, t_Floats most)
{
    const t_Floats notAbove = exact < most ? exact : most;
    const t_Floats cut = notAbove > -most ? notAbove : -most;
    const t_Longs whole = (t_Longs)(cut + kWhole) - std::bit_cast<INT32>(kWhole);
    const t_Longs isNone = exact != exact;
    return whole ^ ((whole ^ kNoWord) & isNone);
}

bool IsAny(t_Longs v)
{
    return (v[0] | v[1] | v[2] | v[3]) != 0;
}

/** The lower halves. */
t_Words Narrow(t_Longs low, t_Longs high)
{
    if constexpr (std::endian::native == std::endian::little)
    {
        return __builtin_shufflevector((t_Words)low, (t_Words)high, 0, 2, 4, 6, 8, 10, 12, 14);
    }
    else
    {
        return __builtin_shufflevector((t_Words)low, (t_Words)high, 1, 3, 5, 7, 9, 11, 13, 15);
    }
}
} // namespace

void CQuantizer::Convert(const float* values, INT16* target, UINT32 count)
{
    const UINT32 whole = count / kStep * kStep;
    Steps(values, target, whole);
    if (whole < count)
    {
        float last[kStep];
        INT16 words[kStep];
        for (UINT32 i = 0; i < kStep; ++i)
        {
            last[i] = values[std::min(whole + i, count - 1)];
        }
        Steps(last, words, kStep);
        std::memcpy(target + whole, words, (count - whole) * sizeof(INT16));
    }
}

void CQuantizer::Steps(const float* values, INT16* target, UINT32 count)
{
    const t_Floats factor = t_Floats{} + static_cast<float>(m_factor);
    const t_Floats summand = t_Floats{} + static_cast<float>(m_summand);
    const t_Floats most = t_Floats{} + m_most;
    t_Floats highest{};
    t_Floats lowest{};
    for (UINT32 i = 0; i < count; i += kStep)
    {
        const t_Floats low = Load<t_Floats>(values + i) * factor + summand;
        const t_Floats high = Load<t_Floats>(values + i + 4) * factor + summand;
        highest = low > highest ? low : highest;
        lowest = low < lowest ? low : lowest;
        highest = high > highest ? high : highest;
        lowest = high < lowest ? high : lowest;
        const t_Words words = Narrow(Words(low, most), Words(high, most));
        std::memcpy(target + i, &words, sizeof words);
    }
    m_flags |= (IsAny(highest > kMostWord) ? UINT32{eKW_TRACE_ABOVE_RANGE} : 0U) |
               (IsAny(lowest < -kMostWord) ? UINT32{eKW_TRACE_BELOW_RANGE} : 0U);
}

INT16 CQuantizer::Convert(double value)
{
    constexpr double kWholeDouble = 6755399441055744.0; // 1.5 × 2^52
    if (!std::isfinite(value))
    {
        return kNoWord;
    }
    const double exact = value * m_factor + m_summand;
    if (std::abs(exact) > double{kMostWord})
    {
        m_flags |= exact > 0 ? eKW_TRACE_ABOVE_RANGE : eKW_TRACE_BELOW_RANGE;
        return static_cast<INT16>(exact > 0 ? kMostWord : -kMostWord);
    }
    return static_cast<INT16>(exact + kWholeDouble - kWholeDouble);
}
} // namespace NMathematics
