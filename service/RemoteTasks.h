// SPDX-License-Identifier: MIT
#pragma once

#include "RemoteErrors.h"

#include <atomic>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <thread>

/**
 * Work that takes its time, such as an operation that the acquisition carries out: each on a thread
 * of its own, so that no connection waits for another's. Shared by all connections of a server;
 * its end waits for what runs.
 */
class CRemoteTasks
{
public:
    explicit CRemoteTasks(std::size_t most = 64) : m_most(most) {}
    ~CRemoteTasks() { Join(); }
    CRemoteTasks(const CRemoteTasks&) = delete;
    CRemoteTasks& operator=(const CRemoteTasks&) = delete;

    /** Waits for all that runs; nothing is started any more. */
    void Join();

    /** `error` can be read once `isDone` is true. */
    struct t_Task
    {
        std::atomic<bool> isDone{false};
        t_RemoteError error;
    };

    /** Starts `work`, and calls `done` in its thread when it has ended. Null when too many run. */
    std::shared_ptr<const t_Task> Start(std::function<t_RemoteError()> work,
                                        std::function<void()> done);

private:
    struct t_Running
    {
        std::shared_ptr<t_Task> task;
        std::thread thread;
    };
    void JoinEnded();

    std::size_t m_most; ///< 0 behind Join
    std::mutex m_mutex;
    std::list<t_Running> m_running;
};
