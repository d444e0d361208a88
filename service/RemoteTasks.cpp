// SPDX-License-Identifier: MIT
#include "RemoteTasks.h"

#include <new>
#include <system_error>

namespace
{
t_RemoteError RunWork(const std::function<t_RemoteError()>& work)
{
    try
    {
        return work();
    }
    catch (const std::bad_alloc&)
    {
        return {eREMOTE_OUT_OF_MEMORY, QString()};
    }
}
} // namespace

void CRemoteTasks::Join()
{
    std::list<t_Running> running;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_most = 0;
        running.swap(m_running);
    }
    for (t_Running& task : running)
    {
        task.thread.join();
    }
}

void CRemoteTasks::JoinEnded()
{
    for (auto running = m_running.begin(); running != m_running.end();)
    {
        const auto next = std::next(running);
        if (running->task->isDone)
        {
            running->thread.join();
            m_running.erase(running);
        }
        running = next;
    }
}

std::shared_ptr<const CRemoteTasks::t_Task> CRemoteTasks::Start(std::function<t_RemoteError()> work,
                                                                std::function<void()> done)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    JoinEnded();
    if (m_running.size() >= m_most)
    {
        return nullptr;
    }
    auto task = std::make_shared<t_Task>();
    t_Running& running = m_running.emplace_back(t_Running{task, {}});
    try
    {
        running.thread = std::thread(
            [task, work = std::move(work), done = std::move(done)]
            {
                task->error = RunWork(work);
                task->isDone = true;
                done();
            });
    }
    catch (const std::system_error&)
    {
        m_running.pop_back();
        return nullptr;
    }
    return task;
}
