// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Nodes/DbPropBase.h"

class CDbContainerBase;

/**
 * Refers to an item of an array or map. The reference follows the item when it is renamed or its
 * index shifts; when the item goes, the reference becomes inactive by itself and becomes active
 * again if an undo brings the item back.
 */
class CDbPropReference final : public CDbPropBase
{
public:
    /** Path of the item; empty while inactive. */
    QString Get() const;
    /** eKW_ACC_NOT_FOUND where no item of the tree has the path; the empty path refers to nothing.
     */
    KW_ACCEPTANCE Set(const QString& path) { return WriteValue(path, eWRITEKIND::Client); }
    KW_ACCEPTANCE DbSet(const QString& path) { return WriteValue(path, eWRITEKIND::Internal); }

    /** Null while inactive. Takes the lock, as all of these. */
    std::shared_ptr<CDbPropertyGroup> GetReferencedGroup() const;
    CDbContainerBase* GetContainer() const;
    /** Position of the item in its container, −1 while inactive. */
    INT32 GetContainerIndex() const;
    bool IsActive() const { return GetReferencedGroup() != nullptr; }
    void ReleaseReferences() override;
    std::shared_ptr<IKWReferenceProperty> GetFIMPointer();

    CDbValue GetValue() const override { return Get(); }
    CDbValue GetDefaultValue() const override { return QStringLiteral(""); }
    void MakeNewHistValueEntry(CDbUndoStep& step) override;
    bool FinishNewHistValueEntry(CDbPropBaseHist& record) const override;
    QString GetTypeName() const override { return QStringLiteral("reference"); }
    QString GetText() const override { return Get(); }
    QString GetDefaultText() const override { return QStringLiteral(""); }
    KW_ACCEPTANCE ParseText(const QString& text, CDbValue& value) const override;
    void DeSerialize(const CDbSettingsElement& element, CDbRecall& recall) override;

protected:
    KW_ACCEPTANCE Validate(CDbValue& value, eWRITEKIND kind) const override;
    void Store(const CDbValue& value, eWRITEKIND kind) override;
    void LoadState(const CDbPropBaseHist& record, bool newState) override;
    void CreateFIM(CHandlePlace<IKWPropertyBase>& place) override;

private:
    /** The item itself: while a step is written another one may take its path. */
    struct t_State
    {
        CDbPropBase::t_CommonState common;
        std::weak_ptr<CDbPropertyGroup> group;
        CDbValue AsValue() const { return PathOf(group); }
        /** The same item, whether it is still there or not. */
        bool operator==(const t_State& other) const;
    };
    t_State GetState() const { return {GetCommonState(), m_group}; }

    std::shared_ptr<CDbPropertyGroup> FindItem(const QString& path) const;
    /** Null for an item that was removed: it may live on in the history or in a client's hands. */
    static std::shared_ptr<CDbPropertyGroup> Active(const std::weak_ptr<CDbPropertyGroup>& group);
    static QString PathOf(const std::weak_ptr<CDbPropertyGroup>& group);

    std::weak_ptr<CDbPropertyGroup> m_group;
};
