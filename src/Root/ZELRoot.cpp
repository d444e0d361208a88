// SPDX-License-Identifier: MIT
#include "IKWFunctionZEL.h"
#include "LockManager.h"
#include "Root/PgZEL.h"

#include <mutex>

namespace
{
// Recursive: while the tree is being built, its rules may call helpers that peek at the root.
std::recursive_mutex s_rootMutex;
// The library itself keeps no tree alive: when the last client lets the root go, it is gone.
std::weak_ptr<CPgZEL> s_root;

std::shared_ptr<CPgZEL> BuildRoot()
{
    std::shared_ptr<CPgZEL> root(new CPgZEL, CDbNodeDeleter{});
    s_root = root;
    root->OnTreeCreated();
    root->GetDependencies().CalculateEverything();
    root->SetAutoUpdateDependencies(true);
    root->OnFIMCreated();
    root->EnableHistoryObjects();
    return root;
}
} // namespace

std::shared_ptr<CPgZEL> KW_PeekZELRoot()
{
    const std::lock_guard<std::recursive_mutex> lock(s_rootMutex);
    return s_root.lock();
}

std::shared_ptr<IKWFunctionZEL> GetZELRoot()
{
    if (const auto root = KW_PeekZELRoot())
    {
        return root->GetFIMPointer();
    }
    // The tree's lock comes first: a rule that holds it may peek at the root meanwhile.
    const CLockGuard treeLock;
    const std::lock_guard<std::recursive_mutex> lock(s_rootMutex);
    if (const auto root = s_root.lock())
    {
        return root->GetFIMPointer();
    }
    return BuildRoot()->GetFIMPointer();
}
