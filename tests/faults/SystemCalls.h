// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <cstddef>
#include <vector>

// The system calls by which a file comes about, taken over by this program for all of its
// libraries: they can be listed, made to fail, or be the last thing that the process does.

/** One call: its name and the path that it acts on. */
struct t_SystemCall
{
    QByteArray name;
    QByteArray path;
};

struct t_SystemCallFault
{
    static constexpr std::size_t kNever = static_cast<std::size_t>(-1);

    // Calls count from 0; writes of the standard streams and calls that only read do not.

    /** From this call on all of its name fail: a disk that is full stays so. */
    std::size_t failingCall = kNever;
    int error = 0;
    /** The process ends without any clean-up in place of this call. */
    std::size_t lastCall = kNever;
    /** Room on the disk: a write takes what fits, the next one fails as on a full disk. */
    std::size_t room = kNever;
};

/** While it lives, the calling thread's calls are listed and the fault strikes. Not nested. */
class CSystemCallFault
{
public:
    explicit CSystemCallFault(const t_SystemCallFault& fault = {});
    ~CSystemCallFault();
    CSystemCallFault(const CSystemCallFault&) = delete;
    CSystemCallFault& operator=(const CSystemCallFault&) = delete;
    const std::vector<t_SystemCall>& Calls() const;
};
