// SPDX-License-Identifier: MIT
// What fuzzers of the service reach: the small tree that has every kind of node.
#include "KWTreeCopy.h"
#include "database/FixtureTree.h"
#include "service/ServiceTargets.h"

#include <QLoggingCategory>
#include <QTemporaryDir>

namespace
{
class CPgServed : public CPgFixtureRoot
{
public:
    using Interface = IKWFunctionRootBase;

protected:
    std::unique_ptr<IKWFunctionBase> CreateFIM() override
    {
        return std::make_unique<CDbRootHandle<IKWFunctionRootBase, CPgServed>>(*this);
    }
};
} // namespace

std::shared_ptr<IKWFunctionRootBase> KW_MakeServedTree()
{
    static const QTemporaryDir folder;
    static const bool isQuiet = []
    {
        QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
        return true;
    }();
    static_cast<void>(isQuiet);
    const auto root = BuildTree<CPgServed>();
    root->SetSettingsFolder(folder.path());
    return std::dynamic_pointer_cast<IKWFunctionRootBase>(root->GetHandle());
}

/** As of every tree that is not the instrument's. */
std::shared_ptr<IKWFunctionRootBase> KW_CopyTree(const IKWFunctionRootBase& /*tree*/)
{
    return nullptr;
}
