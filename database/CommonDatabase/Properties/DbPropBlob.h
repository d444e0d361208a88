// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Nodes/DbPropBase.h"

/** Opaque byte block property. Read under the lock; copies share their bytes. */
class CDbPropBlob final : public CDbPropBase
{
public:
    /** Bytes that a client, a rule or a file may write: eKW_ACC_TOO_LONG above. */
    static constexpr INT32 kMaxSize = 1024 * 1024;

    /** Under the lock; what it answers shares its bytes and stays as it is. */
    QByteArray Get() const;
    INT32 GetMaxSize() const { return kMaxSize; }
    KW_ACCEPTANCE Set(const QByteArray& bytes) { return WriteValue(bytes, eWRITEKIND::Client); }
    KW_ACCEPTANCE DbSet(const QByteArray& bytes) { return WriteValue(bytes, eWRITEKIND::Internal); }
    KW_ACCEPTANCE SetResult(const QByteArray& bytes) { return WriteResult(bytes); }
    std::shared_ptr<IKWBlobProperty> GetFIMPointer();

    CDbValue GetValue() const override { return Get(); }
    CDbValue GetDefaultValue() const override { return QByteArray(); }
    void MakeNewHistValueEntry(CDbUndoStep& step) override;
    bool FinishNewHistValueEntry(CDbPropBaseHist& record) const override;
    QString GetTypeName() const override { return QStringLiteral("blob"); }
    /** Base64, the form of files; other text is refused as eKW_ACC_BAD_TEXT. */
    QString GetText() const override;
    QString GetDefaultText() const override { return QStringLiteral(""); }
    KW_ACCEPTANCE ParseText(const QString& text, CDbValue& value) const override;

protected:
    KW_ACCEPTANCE Validate(CDbValue& value, eWRITEKIND kind) const override;
    void Store(const CDbValue& value, eWRITEKIND kind) override;
    void LoadState(const CDbPropBaseHist& record, bool newState) override;
    void CreateFIM(CHandlePlace<IKWPropertyBase>& place) override;

private:
    struct t_State
    {
        CDbPropBase::t_CommonState common;
        QByteArray value;
        CDbValue AsValue() const { return value; }
        /** The bytes before the step: nothing else may keep them by then. */
        std::size_t HeldBytes() const { return static_cast<std::size_t>(value.size()); }
        bool operator==(const t_State&) const = default;
    };
    t_State GetState() const { return {GetCommonState(), m_value}; }

    /** Guarded by the tree's lock. */
    QByteArray m_value;
};
