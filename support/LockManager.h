// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

/** Critical sections of the process. */
enum CS_TYPE : INT32
{
    eCS_TREE = 0, ///< the property tree and everything that hangs on it
    eCS_COUNT
};

/** What the holder means to do; both exclude other threads. */
enum ACCESS_TYPE : INT32
{
    eACCESS_READ = 0,
    eACCESS_WRITE = 1
};

/**
 * The process-wide lock. Recursive: a thread may take a section as often as it gives it back.
 * Readers and writers exclude each other alike, because a bracket that reads may go on to write
 * and a shared lock that is upgraded in two threads at once never ends. A section that the calling
 * thread does not hold is not given back.
 *
 * Builds with KWI_CHECK_LOCK_ORDER remember who holds what and report a lock that is given back
 * out of order, or never taken, with the place that took it.
 */
class CLockManager
{
public:
    /** Never destroyed, so that trees released during process exit still find it. */
    static CLockManager& instance() { return s_instance; }

    void Lock(CS_TYPE section, ACCESS_TYPE access, const char* file, long line);
    /** With the arguments of the Lock that it ends. */
    void Unlock(CS_TYPE section, ACCESS_TYPE access, const char* file, long line);

private:
    constexpr CLockManager() = default;

    static CLockManager s_instance;
};

/** Holds the lock for a block. */
class CLockGuard
{
public:
    explicit CLockGuard(ACCESS_TYPE access = eACCESS_WRITE, const char* file = __builtin_FILE(),
                        long line = __builtin_LINE())
        : m_access(access), m_file(file), m_line(line)
    {
        CLockManager::instance().Lock(eCS_TREE, m_access, m_file, m_line);
    }
    ~CLockGuard() { CLockManager::instance().Unlock(eCS_TREE, m_access, m_file, m_line); }
    CLockGuard(const CLockGuard&) = delete;
    CLockGuard& operator=(const CLockGuard&) = delete;

private:
    ACCESS_TYPE m_access;
    const char* m_file;
    long m_line;
};
