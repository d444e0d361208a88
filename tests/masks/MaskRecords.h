// SPDX-License-Identifier: MIT
#pragma once

#include "Masks/Mask.h"
#include "Streams/Record.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

/** Numbers that are the same on each machine for one seed. */
class t_Random
{
public:
    explicit t_Random(UINT32 seed) : m_engine(seed) {}

    UINT32 Below(std::size_t end) { return static_cast<UINT32>(m_engine() % end); }
    double Real(double low, double high)
    {
        return low + (high - low) * (static_cast<double>(m_engine()) / 4294967296.0);
    }

private:
    std::mt19937 m_engine;
};

/** A trace of random points, and what each is worth, lowest and highest; NaN for an invalid one. */
struct t_RandomTrace
{
    CKWRecord record;
    KW_TraceInfo info;
    std::vector<KW_MinMax> levels;
};

/** A record with one trace of these entries. */
template <class T>
CKWRecord RecordOf(const KW_TraceInfo& info, const std::vector<T>& entries)
{
    const auto bytes = std::as_bytes(std::span(entries));
    KW_ACCEPTANCE code = eKW_ACC_OK;
    CKWRecord record = KW_MakeRecord({}, {&info, 1}, {&bytes, 1}, &code);
    EXPECT_EQ(code, eKW_ACC_OK);
    return record;
}

/** 16-bit points of 0.01 V, 0.01 divisions each, from the left edge to the right one. */
inline CKWRecord ShownRecord(const std::vector<INT16>& points)
{
    KW_TraceInfo info;
    info.channel = eKW_ZEL_CHANNEL_C1;
    info.unit = eKW_UNIT_LEVEL_V;
    info.count = static_cast<UINT32>(points.size());
    info.interval = points.size() > 1 ? 10.0 / static_cast<double>(points.size() - 1) : 1.0;
    info.scale = 0.01;
    return RecordOf(info, points);
}

/** Curves that are slow, noisy or steep, with invalid runs, in one of the formats of levels. */
inline t_RandomTrace RandomTrace(t_Random& random, KW_SAMPLE_FORMAT format, UINT32 count)
{
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    t_RandomTrace trace;
    trace.info.format = format;
    trace.info.count = count;
    trace.info.settlingPoints = random.Below(3) == 0 ? random.Below(50) : 0;
    trace.info.interval = random.Real(0.3, 1.5) * 10 / count;
    trace.info.start = random.Real(-2, 2);
    trace.info.scale = random.Real(0.5, 2) * (random.Below(4) == 0 ? -1e-4 : 1e-4);
    trace.info.offset = random.Real(-1, 1);
    std::vector<INT16> words;
    std::vector<float> reals;
    const double noise = random.Below(2) == 0 ? random.Real(0, 20) : random.Real(0, 2000);
    const double turns = random.Real(0, 40);
    const bool isSquare = random.Below(3) == 0;
    UINT32 invalid = 0;
    for (UINT32 i = 0; i < count; ++i)
    {
        const double sine = std::sin(turns * i / count);
        const auto at = [&]
        {
            return static_cast<INT16>((isSquare ? (sine > 0 ? 1 : -1) : sine) * 15000 +
                                      random.Real(-noise, noise));
        };
        const INT16 one = at();
        const INT16 two = format == eKW_SAMPLES_MINMAX ? at() : one;
        INT16 low = std::min(one, two);
        INT16 high = std::max(one, two);
        invalid = invalid > 0 ? invalid - 1 : (random.Below(500) == 0 ? random.Below(300) : 0);
        if (invalid > 0)
        {
            low = high = std::numeric_limits<INT16>::min();
        }
        words.push_back(low);
        reals.push_back(invalid > 0 ? static_cast<float>(kNone) : low);
        if (format == eKW_SAMPLES_MINMAX)
        {
            words.push_back(high);
        }
        const double a = low * trace.info.scale + trace.info.offset;
        const double b = high * trace.info.scale + trace.info.offset;
        trace.levels.push_back(invalid > 0 ? KW_MinMax{kNone, kNone}
                                           : KW_MinMax{std::min(a, b), std::max(a, b)});
    }
    trace.record =
        format == eKW_SAMPLES_FLOAT ? RecordOf(trace.info, reals) : RecordOf(trace.info, words);
    return trace;
}

inline KW_MaskFrame RandomFrame(t_Random& random)
{
    return {eKW_UNIT_NOT_DEFINED, random.Real(-2, 2), random.Real(0.2, 2), random.Real(-1, 1),
            random.Real(0.2, 2)};
}
