// SPDX-License-Identifier: MIT
#include "Demonstration.h"

#include "DemonstrationSpectrum.h"
#include "IKWFunctionSpectrum.h"
#include "IKWFunctionZEL.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstring>
#include <numbers>

namespace
{
using namespace std::chrono;

constexpr milliseconds kPeriod{50}; // a block of slow and roll mode takes as long
constexpr UINT64 kMemory = 32U << 20U;
constexpr UINT64 kSpectraMemory = 1U << 20U;
constexpr double kTurn = 2.0 * std::numbers::pi;
/** Hz. No sample rate divides it, so that slow time bases show more than one and the same place. */
constexpr double kFrequency = 5.0123e6;

/** Noise that is the same in each run. */
class CNoise
{
public:
    /** Evenly between −1 and 1. */
    double Next()
    {
        m_state ^= m_state << 13U;
        m_state ^= m_state >> 7U;
        m_state ^= m_state << 17U;
        return static_cast<double>(m_state >> 11U) * 0x1p-52 - 1.0;
    }

private:
    UINT64 m_state = 88172645463325252U;
};

/** What the inputs see at a time against the trigger, s; `swell` goes from −1 to 1 by and by. */
double Signal(KW_ZEL_CHANNEL channel, double time, double swell)
{
    const double phase = time * kFrequency - std::floor(time * kFrequency);
    const double since = phase / kFrequency;
    switch (channel)
    {
    case eKW_ZEL_CHANNEL_C1: // 5 MHz with its third harmonic
    {
        const double sine = std::sin(kTurn * phase);
        return (1.0 + 0.2 * swell) * sine + 0.1 * (3.0 - 4.0 * sine * sine) * sine;
    }
    case eKW_ZEL_CHANNEL_C2: // pulses of a slack edge
        return phase < 0.5 ? 2.0 - 2.0 * std::exp(-since * 5e7)
                           : 2.0 * std::exp(-(phase - 0.5) / kFrequency * 5e7);
    case eKW_ZEL_CHANNEL_C3: // triangle
        return 1.5 * (std::fabs(4.0 * phase - 2.0) - 1.0);
    default: // a damped ringing
        return std::exp(-since * 2e7) * std::sin(kTurn * 4e7 * since);
    }
}

INT16 CountsOf(double value, const KW_TraceInfo& trace, UINT32& flags)
{
    const double counts = std::round((value - trace.offset) / trace.scale);
    flags |= counts > INT16_MAX ? eKW_TRACE_ABOVE_RANGE : 0U;
    flags |= counts < -INT16_MAX ? eKW_TRACE_BELOW_RANGE : 0U;
    return static_cast<INT16>(std::clamp<double>(counts, -INT16_MAX, INT16_MAX));
}

/** The next points of a trace: all of them, or a block. */
void Fill(IKWAcquisition& acquisition, UINT32 place, CNoise& noise, double swell, UINT32& flags)
{
    const KW_ArmedAcquisition& armed = acquisition.GetArmed();
    const KW_TraceInfo& trace = armed.traces[place];
    const std::span<std::byte> room = acquisition.Reserve(place);
    const UINT32 done = acquisition.GetAdvanced(place);
    const UINT32 size = KW_GetPointSize(trace.format);
    auto points = static_cast<UINT32>(room.size() / size); // none: this record is dropped
    points = armed.blockSize > 0 ? std::min(points, armed.blockSize) : points;
    for (UINT32 i = 0; i < points; ++i)
    {
        const double time = trace.start + (done + i) * trace.interval;
        std::byte* const point = &room[std::size_t{i} * size];
        if (trace.format == eKW_SAMPLES_LINES)
        {
            const auto lines = static_cast<UINT8>(static_cast<INT64>(std::floor(time / 2e-8)));
            std::memcpy(point, &lines, sizeof lines);
            continue;
        }
        const double level = Signal(trace.channel, time, swell);
        std::array<INT16, 2> counts{};
        for (INT16& count : counts)
        {
            count = CountsOf(level + 0.02 * noise.Next(), trace, flags);
        }
        std::sort(counts.begin(), counts.end());
        std::memcpy(point, counts.data(), size);
    }
    acquisition.Advance(place, points);
}
} // namespace

CDemonstration::CDemonstration(const std::shared_ptr<IKWFunctionZEL>& root)
    : m_root(root), m_acquisition(KW_MakeAcquisition(root, kMemory)),
      m_spectra(KW_MakeStream(kSpectraMemory)), m_masks(KW_MakeMaskRun(root, m_acquisition)),
      m_mathematics(KW_MakeMathematicsCurve(root))
{
    if (m_acquisition && m_spectra)
    {
        m_acquisition->SetTest(m_masks.get());
        m_acquiring = std::thread([this] { Acquire(); });
        m_delivering = std::thread([this] { Deliver(); });
    }
}

CDemonstration::~CDemonstration()
{
    m_isEnd = true;
    for (std::thread* const thread : {&m_acquiring, &m_delivering})
    {
        if (thread->joinable())
        {
            thread->join();
        }
    }
    if (m_acquisition)
    {
        m_acquisition->SetTest(nullptr);
    }
}

void CDemonstration::Acquire()
{
    CNoise noise;
    const auto begin = steady_clock::now();
    for (auto next = begin; !m_isEnd; std::this_thread::sleep_until(next))
    {
        // After a long one the next does not hurry.
        next = std::max(next + kPeriod, steady_clock::now() + kPeriod / 5);
        if (!KW_IsAccepted(m_acquisition->Arm()))
        {
            continue; // the scope stands
        }
        const double swell =
            std::sin(kTurn * 0.3 * duration<double>(steady_clock::now() - begin).count());
        KW_AcquiredInfo info;
        info.triggerTime =
            duration_cast<nanoseconds>(system_clock::now().time_since_epoch()).count();
        for (UINT32 place = 0; place < eKW_PLACE_COUNT; ++place)
        {
            Fill(*m_acquisition, place, noise, swell, info.flags[place]);
        }
        m_acquisition->Publish(info);
    }
}

void CDemonstration::Deliver()
{
    const auto reader = m_acquisition->GetStream()->MakeReader();
    const auto source = m_root->GetPgSpectrum()->GetPrSource();
    CDemonstrationSpectrum spectrum(*m_spectra);
    UINT64 number = 0;
    for (; reader && !m_isEnd; std::this_thread::sleep_for(kPeriod / 2))
    {
        m_acquisition->Deliver();
        m_masks->Deliver();
        const CKWRecord shown = m_acquisition->GetShown(*reader);
        if (shown.GetInfo().number == number)
        {
            continue;
        }
        number = shown.GetInfo().number;
        CKWRecord curve;
        m_mathematics->Compute(shown, curve, m_acquisition->GetReference());
        m_mathematics->Deliver();
        spectrum.Publish(shown, source->Get());
    }
}
