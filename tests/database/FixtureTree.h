// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Handles/DbHandles.h"
#include "KWEnumerationsTrigger.h"
#include "Reports.h"

#include <functional>
#include <vector>

// One tree that holds every kind of node once, with as few rules as show the hooks.

/** Group of a test's tree, with a handle that knows no more than every group has. */
class CPgOfTest : public CZELPropertyGroup
{
public:
    using Interface = IKWFunctionBase;

protected:
    template <typename T>
    T* Declare(T* property, const char* name)
    {
        AddPropertyToList(property, QString::fromLatin1(name));
        return property;
    }
    std::unique_ptr<IKWFunctionBase> CreateFIM() override
    {
        return std::make_unique<CDbGroupHandle<IKWFunctionBase, CDbPropertyGroup>>(*this);
    }
};

/** A tree as the library builds its own: owned, computed, with handles and history. */
template <typename TRoot>
std::shared_ptr<TRoot> BuildTree()
{
    std::shared_ptr<TRoot> root(new TRoot, CDbNodeDeleter{});
    root->OnTreeCreated();
    root->GetDependencies().CalculateEverything();
    root->SetAutoUpdateDependencies(true);
    root->OnFIMCreated();
    root->EnableHistoryObjects();
    return root;
}

/** Item of the fixture's containers. */
class CPgFixtureItem : public CPgOfTest
{
public:
    CPgFixtureItem();

    CDbPropNum<double>* m_pLevel = Declare(new CDbPropNum<double>, "Level");
    CDbPropString* m_pLabel = Declare(new CDbPropString, "Label");
};

using CPgaFixtureItem = CDbPgArray<CPgFixtureItem, CDbPgArrayBase>;
using CPgmFixtureItem = CDbPgMap<CPgFixtureItem>;

/** Every property kind; "Double" drives the limits of "Follower", "Enum" its copy. */
class CPgFixture : public CPgOfTest
{
public:
    CPgFixture();
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void OnPropertyDbSet(const CDbPropBase* property) override;
    void OnPropertyAutoSet(const CDbPropBase* property) override;
    void OnPropertyUnchanged(const CDbPropBase* property) override;
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void OnItemInserted(CDbContainerBase* container, const QString& item) override;
    void UpdateGroup() override;

    CDbPropNum<INT16>* m_pInt16 = Declare(new CDbPropNum<INT16>, "Int16");
    CDbPropNum<UINT16>* m_pUInt16 = Declare(new CDbPropNum<UINT16>, "UInt16");
    CDbPropNum<INT32>* m_pInt32 = Declare(new CDbPropNum<INT32>, "Int32");
    CDbPropNum<UINT32>* m_pUInt32 = Declare(new CDbPropNum<UINT32>, "UInt32");
    CDbPropNum<INT64>* m_pInt64 = Declare(new CDbPropNum<INT64>, "Int64");
    CDbPropNum<UINT64>* m_pUInt64 = Declare(new CDbPropNum<UINT64>, "UInt64");
    CDbPropNum<double>* m_pDouble = Declare(new CDbPropNum<double>, "Double");
    CDbPropNum<double>* m_pListed = Declare(new CDbPropNum<double>, "Listed");
    CDbPropNum<double>* m_pFollower = Declare(new CDbPropNum<double>, "Follower");
    CDbPropNum<double>* m_pResult = Declare(new CDbPropNum<double>, "Result");
    CDbPropEnum<KW_ZEL_TRIGGER_TYPE>* m_pEnum =
        Declare(new CDbPropEnum<KW_ZEL_TRIGGER_TYPE>, "Enum");
    CDbPropEnum<KW_ZEL_TRIGGER_TYPE>* m_pEnumCopy =
        Declare(new CDbPropEnum<KW_ZEL_TRIGGER_TYPE>, "EnumCopy");
    CDbPropString* m_pText = Declare(new CDbPropString, "Text");
    CDbPropBlob* m_pBlob = Declare(new CDbPropBlob, "Blob");
    CDbPropBitPattern* m_pPattern = Declare(new CDbPropBitPattern, "Pattern");
    CDbPropFilePath* m_pPath = Declare(new CDbPropFilePath, "Path");
    CDbPropReference* m_pReference = Declare(new CDbPropReference, "Reference");
    CPgaFixtureItem* m_pArray = new CPgaFixtureItem(1, 20);
    CPgaFixtureItem* m_pFixed = new CPgaFixtureItem(0, CDbContainerBase::kUnlimited);
    CPgmFixtureItem* m_pMap = new CPgmFixtureItem(20);
    CDbFunction* m_pAction = new CDbFunction;
    CDbOperation* m_pOperation = new CDbOperation;

    /** Hooks that ran, such as "set Double". */
    std::vector<QString> m_hooks;
    /** A rule that writes the follower's own value again, as one does that adjusts a set of values.
     */
    bool m_settleFollower = false;
    /** A rule that sets this property back to its default whatever a client writes. */
    CDbPropBase* m_takenBack = nullptr;
    /** What OnFunction answers before it does anything; 0 to go on. */
    KW_ACCEPTANCE m_refusal = 0;
    /** A rule that runs after an item was inserted. */
    std::function<void(const QString& item)> m_onInserted;
    /** What OnPropertySet answers: more than 1 is a refusal further down. */
    KW_ACCEPTANCE m_answer = eKW_ACC_OK;
};

/** Root "Fixture" with the groups "First" and "Second" (both CPgFixture). */
class CPgFixtureRoot : public CDbPgRoot
{
public:
    CPgFixtureRoot();
    CPgFixture* m_pFirst = new CPgFixture;
    CPgFixture* m_pSecond = new CPgFixture;

    static std::shared_ptr<CPgFixtureRoot> Create() { return BuildTree<CPgFixtureRoot>(); }
    /** The whole tree as XML, without a file. */
    QByteArray Text() const;
    /** What a settings file holds, and the same without its digest, as one writes it by hand. */
    QByteArray SavedText(bool csv) const;
    QByteArray FileText(bool csv) const;
};

/** What most tests need: a tree, its first group, and the reports meanwhile. */
class CFixture
{
protected:
    std::shared_ptr<CPgFixtureRoot> m_root = CPgFixtureRoot::Create();
    CPgFixture& m_group = *m_root->m_pFirst;
    CReports m_reports;
};
