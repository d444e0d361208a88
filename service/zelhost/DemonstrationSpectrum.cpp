// SPDX-License-Identifier: MIT
#include "DemonstrationSpectrum.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <complex>
#include <cstring>
#include <numbers>
#include <vector>

namespace
{
using t_Complex = std::complex<double>;

/** In place; the size is a power of two. */
void Transform(std::vector<t_Complex>& values)
{
    const std::size_t size = values.size();
    for (std::size_t i = 1, j = 0; i < size; ++i)
    {
        std::size_t bit = size >> 1U;
        for (; (j & bit) != 0; bit >>= 1U)
        {
            j ^= bit;
        }
        j ^= bit;
        if (i < j)
        {
            std::swap(values[i], values[j]);
        }
    }
    for (std::size_t length = 2; length <= size; length <<= 1U)
    {
        const t_Complex turn =
            std::polar(1.0, -2.0 * std::numbers::pi / static_cast<double>(length));
        for (std::size_t begin = 0; begin < size; begin += length)
        {
            t_Complex factor = 1.0;
            for (std::size_t i = begin; i < begin + length / 2; ++i)
            {
                const t_Complex odd = factor * values[i + length / 2];
                values[i + length / 2] = values[i] - odd;
                values[i] += odd;
                factor *= turn;
            }
        }
    }
}

UINT32 PlaceOf(const CKWRecord& record, KW_ZEL_CHANNEL channel)
{
    UINT32 place = 0;
    while (place < record.GetTraceCount() &&
           (record.GetTrace(place).channel != channel || record.GetTrace(place).count == 0))
    {
        ++place;
    }
    return place;
}

/** Levels of the points, windowed; empty where the trace has no such points. */
std::vector<t_Complex> ReadPoints(const CKWRecord& record, UINT32 place)
{
    const KW_TraceInfo trace = record.GetTrace(place);
    const UINT32 points = trace.count - std::min(trace.count, trace.settlingPoints);
    if (trace.format != eKW_SAMPLES_INT16 || points < 2)
    {
        return {};
    }
    const UINT32 size = std::min(std::bit_floor(points), CDemonstrationSpectrum::kMostPoints);
    const auto samples = record.GetSamples(place).subspan(2 * std::size_t{trace.settlingPoints});
    std::vector<t_Complex> values(size);
    for (UINT32 i = 0; i < size; ++i)
    {
        INT16 count = 0;
        std::memcpy(&count, &samples[2 * std::size_t{i}], sizeof count);
        const double window = 1.0 - std::cos(2.0 * std::numbers::pi * i / size);
        values[i] = window * (count * trace.scale + trace.offset);
    }
    return values;
}
} // namespace

CDemonstrationSpectrum::CDemonstrationSpectrum(IKWStream& stream) : m_writer(stream.MakeWriter())
{
    const KW_TraceLayout layout{eKW_SAMPLES_FLOAT, kMostPoints / 2 + 1};
    m_writer->Configure({&layout, 1}, 1, 1U << 20U);
}

void CDemonstrationSpectrum::Publish(const CKWRecord& record, KW_ZEL_CHANNEL channel)
{
    const UINT32 place = PlaceOf(record, channel);
    std::vector<t_Complex> values =
        place < record.GetTraceCount() ? ReadPoints(record, place) : std::vector<t_Complex>();
    const std::span<std::byte> room =
        values.empty() ? std::span<std::byte>() : m_writer->Reserve(0);
    if (room.empty())
    {
        return;
    }
    Transform(values);
    const auto size = static_cast<UINT32>(values.size());
    for (UINT32 i = 0; i <= size / 2; ++i)
    {
        // Of a sine's amplitude a, |value| is a × size / 2, as the window's mean is 1.
        const double peak = 2.0 * std::abs(values[i]) / size;
        const auto level =
            static_cast<float>(20.0 * std::log10(std::max(peak / std::numbers::sqrt2, 1e-9)));
        std::memcpy(&room[i * sizeof level], &level, sizeof level);
    }
    KW_TraceInfo info;
    info.channel = static_cast<KW_ZEL_CHANNEL>(eKW_ZEL_CHANNEL_FFT1 + channel);
    info.format = eKW_SAMPLES_FLOAT;
    info.unit = eKW_UNIT_LEVEL_DBV;
    info.count = size / 2 + 1;
    info.interval = 1.0 / (record.GetTrace(place).interval * size);
    m_writer->Advance(0, info.count);
    m_writer->Publish(record.GetInfo(), {&info, 1});
}
