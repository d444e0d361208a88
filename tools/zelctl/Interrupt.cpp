// SPDX-License-Identifier: MIT
#include "Interrupt.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace
{
volatile std::sig_atomic_t s_interrupted = 0;
/** What waits for input sees an interrupt here even when it came just before the waiting. */
std::array<int, 2> s_wake{-1, -1};

void NoteInterrupt(int /*signal*/)
{
    s_interrupted = 1;
    const int before = errno;
    [[maybe_unused]] const auto written = write(s_wake[1], "", 1);
    errno = before;
}
} // namespace

CInterruptGuard::CInterruptGuard()
{
    s_interrupted = 0;
    if (pipe2(s_wake.data(), O_CLOEXEC | O_NONBLOCK) != 0)
    {
        s_wake = {-1, -1}; // an interrupt then waits for the next key
    }
    struct sigaction action
    {
    };
    action.sa_handler = NoteInterrupt;
    sigaction(SIGINT, &action, &m_before);
}

CInterruptGuard::~CInterruptGuard()
{
    sigaction(SIGINT, &m_before, nullptr);
    close(s_wake[0]);
    close(s_wake[1]);
    s_wake = {-1, -1};
    s_interrupted = 0;
}

bool CInterruptGuard::IsInterrupted()
{
    return s_interrupted != 0;
}

bool CInterruptGuard::WaitFor(int descriptor, int milliseconds)
{
    std::array<pollfd, 2> sources{{{descriptor, POLLIN, 0}, {s_wake[0], POLLIN, 0}}};
    int ready = 0;
    do
    {
        ready = IsInterrupted() ? 0 : poll(sources.data(), sources.size(), milliseconds);
    } while (ready < 0 && errno == EINTR);
    return ready > 0 && !IsInterrupted();
}
