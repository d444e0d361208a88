// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

/** Runs each task `rounds` times in a thread of its own; all start together. */
inline void RunTogether(const std::vector<std::function<void(int)>>& tasks, int rounds)
{
    std::atomic<std::size_t> ready{0};
    std::vector<std::thread> threads;
    for (const auto& task : tasks)
    {
        threads.emplace_back(
            [&ready, &task, rounds, count = tasks.size()]
            {
                ++ready;
                while (ready < count)
                {
                    std::this_thread::yield();
                }
                for (int round = 0; round < rounds; ++round)
                {
                    task(round);
                }
            });
    }
    for (std::thread& thread : threads)
    {
        thread.join();
    }
}
