// SPDX-License-Identifier: MIT
#pragma once

#include "Mathematics/Mathematics.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <span>
#include <string>
#include <vector>

inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

/** A trace from numbers, as its format has them. */
struct t_TestTrace
{
    KW_TraceInfo info;
    std::vector<std::byte> bytes;

    template <class T>
    static t_TestTrace Of(KW_ZEL_CHANNEL channel, KW_SAMPLE_FORMAT format,
                          const std::vector<T>& entries)
    {
        t_TestTrace trace;
        trace.info.channel = channel;
        trace.info.format = format;
        trace.info.unit = eKW_UNIT_LEVEL_V;
        const auto bytes = std::as_bytes(std::span(entries));
        trace.bytes.assign(bytes.begin(), bytes.end());
        trace.info.count = static_cast<UINT32>(trace.bytes.size() / KW_GetPointSize(format));
        return trace;
    }
    static t_TestTrace Words(KW_ZEL_CHANNEL channel, const std::vector<INT16>& words)
    {
        return Of(channel, eKW_SAMPLES_INT16, words);
    }
    static t_TestTrace Reals(KW_ZEL_CHANNEL channel, const std::vector<float>& reals)
    {
        return Of(channel, eKW_SAMPLES_FLOAT, reals);
    }
};

inline CKWRecord RecordOf(const std::vector<t_TestTrace>& traces, const KW_RecordInfo& info = {})
{
    std::vector<KW_TraceInfo> infos;
    std::vector<std::span<const std::byte>> samples;
    for (const t_TestTrace& trace : traces)
    {
        infos.push_back(trace.info);
        samples.emplace_back(trace.bytes);
    }
    return KW_MakeRecord(info, infos, samples);
}

template <class T>
T SampleAt(const CKWRecord& record, UINT32 trace, std::size_t i)
{
    T sample;
    std::memcpy(&sample, record.GetSamples(trace).data() + i * sizeof(T), sizeof sample);
    return sample;
}

/** Physical values; NaN where they are invalid. */
inline std::vector<double> ValuesOf(const CKWRecord& record, UINT32 trace = 0)
{
    const KW_TraceInfo info = record.GetTrace(trace);
    std::vector<double> values(info.count);
    for (std::size_t i = 0; i < values.size(); ++i)
    {
        const double sample = info.format == eKW_SAMPLES_FLOAT
                                  ? double(SampleAt<float>(record, trace, i))
                                  : double(SampleAt<INT16>(record, trace, i));
        const bool isNone = info.format != eKW_SAMPLES_FLOAT && sample == -32768;
        values[i] = isNone || !std::isfinite(sample) ? kNaN : sample * info.scale + info.offset;
    }
    return values;
}

/** C1, C2, C3, C4 and R1 of random formats, scales and values, some invalid. */
class CRandomTraces
{
public:
    CRandomTraces(std::mt19937& random, std::size_t count) : m_count(count)
    {
        for (const int channel : {0, 1, 2, 3, 5})
        {
            m_places[channel] = m_traces.size();
            m_traces.push_back(random() % 2 == 0 ? Words(random, KW_ZEL_CHANNEL(channel))
                                                 : Reals(random, KW_ZEL_CHANNEL(channel)));
        }
        m_record = RecordOf(m_traces);
        for (UINT32 i = 0; i < m_traces.size(); ++i)
        {
            m_values.push_back(ValuesOf(m_record, i));
        }
    }

    std::size_t Count() const { return m_count; }
    const CKWRecord& Record() const { return m_record; }
    double Value(int channel, std::size_t i) const { return m_values[m_places[channel]][i]; }
    /** Of what is added to make it. */
    double Magnitude(int channel, std::size_t i) const
    {
        const KW_TraceInfo& info = m_traces[m_places[channel]].info;
        return 3 * (std::fabs(Value(channel, i)) + std::fabs(info.offset)) + 1e-44;
    }

private:
    void Place(std::mt19937& random, KW_TraceInfo& info)
    {
        static constexpr double kScales[] = {1.0, 1e-4, 0.25, -3e-3, 7e5};
        static constexpr double kOffsets[] = {0.0, 0.0, 1.0, -20.0};
        info.scale = kScales[random() % 5];
        info.offset = kOffsets[random() % 4];
    }

    t_TestTrace Words(std::mt19937& random, KW_ZEL_CHANNEL channel)
    {
        std::vector<INT16> words(m_count);
        for (INT16& word : words)
        {
            word = random() % 9 == 0 ? INT16_MIN
                                     : INT16(random() % 5 == 0 ? 0 : int(random() % 65535) - 32767);
        }
        t_TestTrace trace = t_TestTrace::Words(channel, words);
        Place(random, trace.info);
        return trace;
    }

    t_TestTrace Reals(std::mt19937& random, KW_ZEL_CHANNEL channel)
    {
        static constexpr float kSpecial[] = {0.0F,
                                             -0.0F,
                                             std::numeric_limits<float>::quiet_NaN(),
                                             std::numeric_limits<float>::infinity(),
                                             3e38F,
                                             1e-30F};
        std::vector<float> reals(m_count);
        for (float& real : reals)
        {
            real =
                random() % 4 == 0 ? kSpecial[random() % 6] : float(int(random() % 20001) - 10000);
        }
        t_TestTrace trace = t_TestTrace::Reals(channel, reals);
        if (random() % 2 == 0)
        {
            Place(random, trace.info);
        }
        return trace;
    }

    std::size_t m_count;
    std::array<std::size_t, 6> m_places{};
    std::vector<t_TestTrace> m_traces;
    std::vector<std::vector<double>> m_values;
    CKWRecord m_record;
};
