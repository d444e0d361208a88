// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsReadings.h"
#include "Samples/MaskPlan.h"

#include <atomic>
#include <bit>

namespace NSamples
{
/** What a mask test has found since it began. */
struct t_MaskCounts
{
    UINT64 begin = 0; ///< as t_MaskValues has it
    UINT64 tested = 0;
    UINT64 failed = 0;
    std::array<UINT64, kMaskChannels> failedOf{};
    std::array<UINT64, kMaskChannels> lines{}; ///< KW_ZEL_LIMIT of the last acquisition
    UINT64 record = 0;                         ///< number of the last one that failed
    UINT64 isEnded = 0;                        ///< nothing more is to be tested
    UINT64 stopped = 0;                        ///< number of the run that a violation stops, plus 1
};

/** Counts that one thread writes and others read, all of one moment. Neither waits for the other
    but for the length of a copy: a reader in whose copy the writer came looks again. */
class CSharedMaskCounts
{
public:
    void Write(const t_MaskCounts& counts)
    {
        const UINT64 sequence = m_sequence.load(std::memory_order_relaxed);
        m_sequence.store(sequence + 1, std::memory_order_relaxed);
        const auto words = std::bit_cast<t_Words>(counts);
        for (std::size_t i = 0; i < kWords; ++i)
        {
            m_words[i].store(words[i], std::memory_order_release); // after the odd number
        }
        m_sequence.store(sequence + 2, std::memory_order_release);
    }

    t_MaskCounts Read() const
    {
        for (;;)
        {
            const UINT64 before = m_sequence.load(std::memory_order_acquire);
            t_Words words;
            for (std::size_t i = 0; i < kWords; ++i)
            {
                words[i] = m_words[i].load(std::memory_order_acquire);
            }
            if (before % 2 == 0 && m_sequence.load(std::memory_order_relaxed) == before)
            {
                return std::bit_cast<t_MaskCounts>(words);
            }
        }
    }

private:
    static constexpr std::size_t kWords = sizeof(t_MaskCounts) / sizeof(UINT64);
    using t_Words = std::array<UINT64, kWords>;

    std::atomic<UINT64> m_sequence{0}; ///< odd while they are written
    std::array<std::atomic<UINT64>, kWords> m_words{};
};
} // namespace NSamples
