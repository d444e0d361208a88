// SPDX-License-Identifier: MIT
#pragma once

#include "soak/Tree.h"

#include <functional>
#include <random>

/** One way to use the tree; each runs in a thread of its own until it is told to stop. */
struct t_Worker
{
    const char* name;
    /** One round. */
    std::function<void(std::mt19937&)> work;
    UINT64 rounds = 0;
};

/** Ten: one that acquires and one that delivers, two writers of different functions, two readers,
    containers, undo, files, poller. The files are kept in `folder`. */
std::vector<t_Worker> MakeWorkers(const t_Root& root, const QString& folder, CVerdict& verdict);

/** Runs all at once for some seconds and counts their rounds. `seed` makes all random choices, the
    order of the threads aside. */
void RunWorkers(std::vector<t_Worker>& workers, double seconds, unsigned seed);
