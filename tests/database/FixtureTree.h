// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Handles/DbHandles.h"
#include "Reports.h"

#include <functional>
#include <vector>

enum KW_ZEL_TRIGGER_TYPE : INT32;

// One tree that holds every kind of node once, with as few rules as show the hooks.

/** Item of the fixture's containers. */
class CPgFixtureItem : public CZELPropertyGroup
{
public:
    using Interface = IKWFunctionBase;
    CPgFixtureItem();

    CDbPropNum<double>* m_pLevel;
    CDbPropString* m_pLabel;

protected:
    std::unique_ptr<IKWFunctionBase> CreateFIM() override;
};

using CPgaFixtureItem = CDbPgArray<CPgFixtureItem, CDbPgArrayBase>;
using CPgmFixtureItem = CDbPgMap<CPgFixtureItem>;

/** Every property kind; "Double" drives the limits of "Follower", "Enum" its copy. */
class CPgFixture : public CZELPropertyGroup
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

    CDbPropNum<INT16>* m_pInt16;
    CDbPropNum<UINT16>* m_pUInt16;
    CDbPropNum<INT32>* m_pInt32;
    CDbPropNum<UINT32>* m_pUInt32;
    CDbPropNum<INT64>* m_pInt64;
    CDbPropNum<UINT64>* m_pUInt64;
    CDbPropNum<double>* m_pDouble;
    CDbPropNum<double>* m_pListed;
    CDbPropNum<double>* m_pFollower;
    CDbPropNum<double>* m_pResult;
    CDbPropEnum<KW_ZEL_TRIGGER_TYPE>* m_pEnum;
    CDbPropEnum<KW_ZEL_TRIGGER_TYPE>* m_pEnumCopy;
    CDbPropString* m_pText;
    CDbPropBlob* m_pBlob;
    CDbPropBitPattern* m_pPattern;
    CDbPropFilePath* m_pPath;
    CDbPropReference* m_pReference;
    CPgaFixtureItem* m_pArray;
    CPgaFixtureItem* m_pFixed;
    CPgmFixtureItem* m_pMap;
    CDbFunction* m_pAction;
    CDbOperation* m_pOperation;

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

protected:
    std::unique_ptr<IKWFunctionBase> CreateFIM() override;
};

/** Root "Fixture" with the groups "First" and "Second" (both CPgFixture). */
class CPgFixtureRoot : public CDbPgRoot
{
public:
    CPgFixtureRoot();
    CPgFixture* m_pFirst;
    CPgFixture* m_pSecond;

    /** Built as the library builds its own tree: owned, computed, with handles and history. */
    static std::shared_ptr<CPgFixtureRoot> Create();
    /** The whole tree as XML, without a file. */
    QByteArray Text() const;
    /** What a settings file holds, and the same without its digest, as one writes it by hand. */
    QByteArray SavedText(bool csv) const;
    QByteArray FileText(bool csv) const;

protected:
    std::unique_ptr<IKWFunctionBase> CreateFIM() override;
};
