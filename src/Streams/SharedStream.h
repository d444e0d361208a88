// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/Pool.h"
#include "Streams/Waiting.h"

#include <atomic>
#include <memory>

namespace NStreams
{
/** What stream, writer and readers share, and keep while one of them lives. */
struct t_SharedStream
{
    explicit t_SharedStream(UINT32 bytes) : pool(bytes) {}

    CPool pool;
    CWaiters waiters;
    std::atomic<bool> hasWriter{false};
    std::atomic<UINT64> numbers{0}; ///< given to records, dropped ones included
    std::atomic<UINT64> dropped{0};
};
using t_SharedPtr = std::shared_ptr<t_SharedStream>;
} // namespace NStreams
