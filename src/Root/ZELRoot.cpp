// SPDX-License-Identifier: MIT
#include "IKWFunctionZEL.h"
#include "LockManager.h"
#include "Root/PgZEL.h"
#include "Rules/PresentTree.h"

namespace
{
std::shared_ptr<CDbPgRoot> BuildRoot()
{
    std::shared_ptr<CPgZEL> root(new CPgZEL, CDbNodeDeleter{});
    // Already while it is being built: its rules may call helpers that peek at the root.
    NPresentTree::Enter(root);
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
    return std::static_pointer_cast<CPgZEL>(NPresentTree::Peek());
}

std::shared_ptr<IKWFunctionZEL> GetZELRoot()
{
    if (const auto root = KW_PeekZELRoot())
    {
        return root->GetFIMPointer();
    }
    // The tree's lock comes first: a rule that holds it may peek at the root meanwhile.
    const CLockGuard treeLock;
    return std::static_pointer_cast<CPgZEL>(NPresentTree::PeekOrBuild(BuildRoot))->GetFIMPointer();
}
