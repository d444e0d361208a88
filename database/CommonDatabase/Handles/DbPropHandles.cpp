// SPDX-License-Identifier: MIT
// Handles of properties. A handle belongs to its node and forwards every call; it has no state.
#include "CommonDatabase/Containers/DbPropReference.h"
#include "CommonDatabase/Nodes/DbPropertyGroup.h"
#include "CommonDatabase/Properties/DbPropBlob.h"
#include "CommonDatabase/Properties/DbPropNum.h"
#include "CommonDatabase/Properties/DbPropText.h"

namespace
{
template <typename T>
class CFIMNumeric final : public IKWNumericProperty<T>
{
public:
    explicit CFIMNumeric(CDbPropNum<T>& node) : m_node(node) {}
    T Get() const override { return m_node.Get(); }
    T GetMin() const override { return m_node.GetMin(); }
    T GetMax() const override { return m_node.GetMax(); }
    T GetDefault() const override { return m_node.GetDefault(); }
    T GetStep() const override { return m_node.GetStep(); }
    T GetUserValue() const override { return m_node.GetUserValue(); }
    KW_UNIT GetUnit() const override { return m_node.GetUnit(); }
    KW_ACCEPTANCE Set(T value) override { return m_node.Set(value); }
    KW_ACCEPTANCE SetLimited(T value) override { return m_node.SetLimited(value); }
    KW_ACCEPTANCE SetUserValue(T value) override { return m_node.SetUserValue(value); }
    KW_ACCEPTANCE SetToMin() override { return m_node.SetToMin(); }
    KW_ACCEPTANCE SetToMax() override { return m_node.SetToMax(); }
    KW_ACCEPTANCE Inc() override { return m_node.Inc(); }
    KW_ACCEPTANCE Dec() override { return m_node.Dec(); }
    KW_ACCEPTANCE IncDec(INT32 steps) override { return m_node.IncDec(steps); }
    KW_ACCEPTANCE SetResult(T value) override { return m_node.SetResult(value); }
    std::shared_ptr<IDbProperty> GetDbObject() const override { return m_node.ShareProperty(); }

private:
    CDbPropNum<T>& m_node;
};

class CFIMString final : public IKWStringProperty
{
public:
    explicit CFIMString(CDbPropString& node) : m_node(node) {}
    QString Get() const override { return m_node.Get(); }
    KW_ACCEPTANCE Set(const QString& text) override { return m_node.Set(text); }
    QString GetDefault() const override { return m_node.GetDefault(); }
    INT32 GetMaxLength() const override { return m_node.GetMaxLength(); }
    KW_ACCEPTANCE SetResult(const QString& text) override { return m_node.SetResult(text); }
    std::shared_ptr<IDbProperty> GetDbObject() const override { return m_node.ShareProperty(); }

private:
    CDbPropString& m_node;
};

class CFIMBitPattern final : public IKWBitPatternProperty
{
public:
    explicit CFIMBitPattern(CDbPropBitPattern& node) : m_node(node) {}
    QString Get() const override { return m_node.Get(); }
    KW_ACCEPTANCE Set(const QString& pattern) override { return m_node.Set(pattern); }
    QString GetDefault() const override { return m_node.GetDefault(); }
    INT32 GetMaxLength() const override { return m_node.GetMaxLength(); }
    E_NUMBERFORMAT GetFormat() const override { return m_node.GetFormat(); }
    KW_ACCEPTANCE SetFormat(E_NUMBERFORMAT format) override { return m_node.SetFormat(format); }
    KW_ACCEPTANCE SetResult(const QString& pattern) override { return m_node.SetResult(pattern); }
    std::shared_ptr<IDbProperty> GetDbObject() const override { return m_node.ShareProperty(); }

private:
    CDbPropBitPattern& m_node;
};

class CFIMBlob final : public IKWBlobProperty
{
public:
    explicit CFIMBlob(CDbPropBlob& node) : m_node(node) {}
    QByteArray Get() const override { return m_node.Get(); }
    KW_ACCEPTANCE Set(const QByteArray& bytes) override { return m_node.Set(bytes); }
    INT32 GetMaxSize() const override { return m_node.GetMaxSize(); }
    KW_ACCEPTANCE SetResult(const QByteArray& bytes) override { return m_node.SetResult(bytes); }
    std::shared_ptr<IDbProperty> GetDbObject() const override { return m_node.ShareProperty(); }

private:
    CDbPropBlob& m_node;
};

class CFIMFilePath final : public IKWFilePathProperty
{
public:
    explicit CFIMFilePath(CDbPropFilePath& node) : m_node(node) {}
    QString Get() const override { return m_node.Get(); }
    KW_ACCEPTANCE Set(const QString& fileName) override { return m_node.Set(fileName); }
    QString GetFolder() const override { return m_node.GetFolder(); }
    QStringList GetOpenExtensions() const override { return m_node.GetOpenExtensions(); }
    QStringList GetSaveExtensions() const override { return m_node.GetSaveExtensions(); }
    QString GetFullPath() const override { return m_node.GetFullPath(); }
    QString CreateNewFileName() const override { return m_node.CreateNewFileName(); }
    KW_ACCEPTANCE Load(QByteArray& contents) const override { return m_node.Load(contents); }
    KW_ACCEPTANCE Write(const QByteArray& contents) override { return m_node.Write(contents); }
    std::shared_ptr<IDbProperty> GetDbObject() const override { return m_node.ShareProperty(); }

private:
    CDbPropFilePath& m_node;
};

class CFIMReference final : public IKWReferenceProperty
{
public:
    explicit CFIMReference(CDbPropReference& node) : m_node(node) {}
    QString Get() const override { return m_node.Get(); }
    KW_ACCEPTANCE Set(const QString& path) override { return m_node.Set(path); }
    bool IsActive() const override { return m_node.IsActive(); }
    std::shared_ptr<IDbGroup> GetReferencedGroup() const override
    {
        return m_node.GetReferencedGroup();
    }
    std::shared_ptr<IDbProperty> GetDbObject() const override { return m_node.ShareProperty(); }

private:
    CDbPropReference& m_node;
};
} // namespace

template <typename T>
void CDbPropNum<T>::CreateFIM(CHandlePlace<IKWPropertyBase>& place)
{
    place.Make<CFIMNumeric<T>>(*this);
}

template void CDbPropNum<INT16>::CreateFIM(CHandlePlace<IKWPropertyBase>&);
template void CDbPropNum<UINT16>::CreateFIM(CHandlePlace<IKWPropertyBase>&);
template void CDbPropNum<INT32>::CreateFIM(CHandlePlace<IKWPropertyBase>&);
template void CDbPropNum<UINT32>::CreateFIM(CHandlePlace<IKWPropertyBase>&);
template void CDbPropNum<INT64>::CreateFIM(CHandlePlace<IKWPropertyBase>&);
template void CDbPropNum<UINT64>::CreateFIM(CHandlePlace<IKWPropertyBase>&);
template void CDbPropNum<double>::CreateFIM(CHandlePlace<IKWPropertyBase>&);

void CDbPropString::CreateFIM(CHandlePlace<IKWPropertyBase>& place)
{
    place.Make<CFIMString>(*this);
}

void CDbPropBitPattern::CreateFIM(CHandlePlace<IKWPropertyBase>& place)
{
    place.Make<CFIMBitPattern>(*this);
}

void CDbPropBlob::CreateFIM(CHandlePlace<IKWPropertyBase>& place)
{
    place.Make<CFIMBlob>(*this);
}

void CDbPropFilePath::CreateFIM(CHandlePlace<IKWPropertyBase>& place)
{
    place.Make<CFIMFilePath>(*this);
}

void CDbPropReference::CreateFIM(CHandlePlace<IKWPropertyBase>& place)
{
    place.Make<CFIMReference>(*this);
}
