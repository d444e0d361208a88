// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Containers/DbPgArray.h"
#include "CommonDatabase/Containers/DbPgMap.h"
#include "CommonDatabase/Containers/DbPropReference.h"
#include "CommonDatabase/Nodes/DbFunction.h"
#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "CommonDatabase/Properties/DbPropBlob.h"
#include "CommonDatabase/Properties/DbPropEnum.h"
#include "CommonDatabase/Properties/DbPropNum.h"
#include "CommonDatabase/Properties/DbPropText.h"
#include "IKWFunctionRootBase.h"

// Handles of groups, roots and containers. A handle belongs to its node and forwards every call; it
// has no state.

/** Handle of a group of class N with the interface I; generated classes add the accessors. */
template <typename I, typename N>
class CDbGroupHandle : public I
{
public:
    explicit CDbGroupHandle(N& node) : m_node(node) {}
    bool HasChanged(long long& counter) const override { return m_node.HasChanged(counter); }
    std::shared_ptr<IDbGroup> GetDbObject() const override { return m_node.ShareGroup(); }

protected:
    N& m_node; ///< owns the handle, so it lives at least as long
};

/** Handle of a root. Each call takes the lock itself; brackets and transactions keep it for the
   calling thread until they end. */
template <typename I, typename N>
class CDbRootHandle : public CDbGroupHandle<I, N>
{
public:
    using CDbGroupHandle<I, N>::CDbGroupHandle;
    using CDbGroupHandle<I, N>::m_node;
    KW_ACCEPTANCE Save(const QString& fileName) override { return m_node.Save(fileName); }
    KW_ACCEPTANCE Recall(const QString& fileName) override { return m_node.Recall(fileName); }
    KW_ACCEPTANCE RunPresetSequence(bool factory) override
    {
        return m_node.RunPresetSequence(factory);
    }
    void SetSettingsFolder(const QString& folder) override { m_node.SetSettingsFolder(folder); }
    QString GetSettingsFolder() const override { return m_node.GetSettingsFolder(); }
    void UpdateAllMeasSettings() override { m_node.UpdateAllMeasSettings(); }
    KW_ACCEPTANCE Undo() override { return m_node.Undo(); }
    KW_ACCEPTANCE Redo() override { return m_node.Redo(); }
    bool CanUndo() const override { return m_node.CanUndo(); }
    bool CanRedo() const override { return m_node.CanRedo(); }
    QString GetUndoText() const override { return m_node.GetUndoText(); }
    QString GetRedoText() const override { return m_node.GetRedoText(); }
    void EnableHistory(bool on) override
    {
        on ? m_node.EnableHistoryObjects() : m_node.DisableHistoryObjects();
    }
    void StartTransaction(const QString& text) override { m_node.StartTransaction(text); }
    KW_ACCEPTANCE EndTransaction(bool keep) override { return m_node.EndTransaction(keep); }
    void StartReadAccess() override { m_node.StartReadAccess(); }
    void EndReadAccess() override { m_node.EndReadAccess(); }
    void StartWriteAccess(KW_CLIENT_ORIGIN origin) override { m_node.StartWriteAccess(origin); }
    void EndWriteAccess() override { m_node.EndWriteAccess(); }
    void SetControlMode(KW_CONTROL_MODE mode) override { m_node.SetControlMode(mode); }
    KW_CONTROL_MODE GetControlMode() const override { return m_node.GetControlMode(); }
};

/** Handle of an array, whatever its items: what is asked of an item is the item's handle. */
template <typename I>
class CFIMArray final : public CDbGroupHandle<IKWArray<I>, CDbPgArrayBase>
{
public:
    using CDbGroupHandle<IKWArray<I>, CDbPgArrayBase>::CDbGroupHandle;
    using CDbGroupHandle<IKWArray<I>, CDbPgArrayBase>::m_node;
    INT32 GetCount() const override { return m_node.GetCount(); }
    INT32 GetMaxCount() const override { return m_node.GetMaxCount(); }
    KW_ACCEPTANCE Insert(INT32 index) override { return m_node.Insert(index); }
    KW_ACCEPTANCE Remove(INT32 index, INT32 n) override { return m_node.Remove(index, n); }
    KW_ACCEPTANCE Grow(INT32 count) override { return m_node.Grow(count); }
    KW_ACCEPTANCE SetActive(INT32 index) override { return m_node.SetActive(index); }
    INT32 GetActive() const override { return m_node.GetActive(); }
    std::shared_ptr<IKWFunctionBase> GetItemBase(INT32 index) const override
    {
        return m_node.ShareItemHandle(index);
    }
};

/** Handle of a map. Items are asked for anew each time: a handle of one that was removed stays
   good, but is no longer found here. */
template <typename I>
class CFIMMap final : public CDbGroupHandle<IKWMap<I>, CDbPgMapBase>
{
public:
    using CDbGroupHandle<IKWMap<I>, CDbPgMapBase>::CDbGroupHandle;
    using CDbGroupHandle<IKWMap<I>, CDbPgMapBase>::m_node;
    INT32 GetCount() const override { return m_node.GetCount(); }
    INT32 GetMaxCount() const override { return m_node.GetMaxCount(); }
    QStringList GetNames() const override { return m_node.GetNames(); }
    KW_ACCEPTANCE Insert(const QString& name) override { return m_node.Insert(name); }
    KW_ACCEPTANCE Remove(const QString& name) override { return m_node.Remove(name); }
    KW_ACCEPTANCE Rename(const QString& from, const QString& to) override
    {
        return m_node.Rename(from, to);
    }
    KW_ACCEPTANCE Copy(const QString& from, const QString& to) override
    {
        return m_node.Copy(from, to);
    }
    KW_ACCEPTANCE SetActive(const QString& name) override { return m_node.SetActive(name); }
    QString GetActive() const override { return m_node.GetActiveItem(); }
    bool IsNameValid(const QString& name) const override { return m_node.IsNameValid(name); }
    QString CreateUniqueName() const override { return m_node.CreateUniqueName(); }
    std::shared_ptr<IKWMapItem> GetMapItem(const QString& name) const override
    {
        return m_node.ShareMapItem(name);
    }
    std::shared_ptr<IKWMapItem> GetMapItem(INT32 numericKey) const override
    {
        return m_node.ShareMapItem(numericKey);
    }
};

// Declared with the containers, which know nothing of handles; each generated class that has one
// makes its own.

template <typename T, typename TBase>
std::unique_ptr<IKWFunctionBase> CDbPgArray<T, TBase>::CreateFIM()
{
    return std::make_unique<CFIMArray<typename T::Interface>>(*this);
}

template <typename T>
std::unique_ptr<IKWFunctionBase> CDbPgMap<T>::CreateFIM()
{
    return std::make_unique<CFIMMap<typename T::Interface>>(*this);
}
