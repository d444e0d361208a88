// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>

/** While it lives, an interrupt (Ctrl-C) ends what waits here instead of the program. One at a
    time; without one, waiting is only that. */
class CInterruptGuard
{
public:
    CInterruptGuard();
    ~CInterruptGuard();
    CInterruptGuard(const CInterruptGuard&) = delete;
    CInterruptGuard& operator=(const CInterruptGuard&) = delete;

    static bool IsInterrupted();
    /** Waits until something comes at a descriptor; false when an interrupt came instead, or when
        nothing has come for so many milliseconds, which are without end where they are negative. */
    static bool WaitFor(int descriptor, int milliseconds = -1);

private:
    struct sigaction m_before
    {
    };
};
