// SPDX-License-Identifier: MIT
#include "IKWFunctionZEL.h"
#include "KWTreeCopy.h"
#include "LockManager.h"
#include "Root/PgZEL.h"
#include "Rules/PresentTree.h"

namespace
{
/** `enter` is told of the root already while it is being built: its rules may call helpers that
   peek at the root. */
std::shared_ptr<CPgZEL> BuildTree(void (&enter)(const std::shared_ptr<CDbPgRoot>&))
{
    std::shared_ptr<CPgZEL> root(new CPgZEL, CDbNodeDeleter{});
    enter(root);
    root->OnTreeCreated();
    root->GetDependencies().CalculateEverything();
    root->SetAutoUpdateDependencies(true);
    root->OnFIMCreated();
    root->EnableHistoryObjects();
    return root;
}

std::shared_ptr<CDbPgRoot> BuildRoot()
{
    return BuildTree(NPresentTree::Enter);
}
} // namespace

std::shared_ptr<CPgZEL> KW_PeekZELRoot()
{
    return std::static_pointer_cast<CPgZEL>(NPresentTree::PeekInstrument());
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

std::shared_ptr<IKWFunctionRootBase> KW_CopyTree(const IKWFunctionRootBase& tree)
{
    const auto source = std::dynamic_pointer_cast<CPgZEL>(tree.GetDbObject());
    if (!source)
    {
        return nullptr;
    }
    const auto copy = BuildTree(NPresentTree::EnterCopy);
    return KW_IsAccepted(copy->TakeOver(*source)) ? copy->GetFIMPointer() : nullptr;
}
