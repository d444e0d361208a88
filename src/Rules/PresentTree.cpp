// SPDX-License-Identifier: MIT
#include "Rules/PresentTree.h"

#include <mutex>

namespace
{
// Recursive: while the tree is being built, its rules may call helpers that peek at the root.
std::recursive_mutex s_mutex;
// The library itself keeps no tree alive: when the last client lets the root go, it is gone.
std::weak_ptr<CDbPgRoot> s_root;
thread_local std::weak_ptr<CDbPgRoot> s_copy;
} // namespace

std::shared_ptr<CDbPgRoot> NPresentTree::Peek()
{
    const auto copy = s_copy.lock();
    return copy ? copy : PeekInstrument();
}

std::shared_ptr<CDbPgRoot> NPresentTree::PeekInstrument()
{
    const std::lock_guard<std::recursive_mutex> lock(s_mutex);
    return s_root.lock();
}

std::shared_ptr<CDbPgRoot>
NPresentTree::PeekOrBuild(const std::function<std::shared_ptr<CDbPgRoot>()>& build)
{
    const std::lock_guard<std::recursive_mutex> lock(s_mutex);
    const auto root = s_root.lock();
    return root ? root : build();
}

void NPresentTree::Enter(const std::shared_ptr<CDbPgRoot>& root)
{
    const std::lock_guard<std::recursive_mutex> lock(s_mutex);
    s_root = root;
}

void NPresentTree::EnterCopy(const std::shared_ptr<CDbPgRoot>& root)
{
    s_copy = root;
}
