// SPDX-License-Identifier: MIT
#include "DbPropBase.h"

#include "CommonDatabase/Values/DbValueList.h"
#include "KWEnumerationsUnits.h"
#include "LockManager.h"

CDbPropBase::~CDbPropBase() = default;

KW_ACCEPTANCE CDbPropBase::RestoreValue(const CDbPropBase& other)
{
    const CLockGuard lock;
    return GetTypeName() == other.GetTypeName() ? WriteValue(other.GetValue(), eWRITEKIND::Internal)
                                                : static_cast<KW_ACCEPTANCE>(eKW_ACC_WRONG_KIND);
}

KW_ACCEPTANCE CDbPropBase::WriteDefault()
{
    return WriteValue(GetDefaultValue(), eWRITEKIND::Default);
}

KW_ACCEPTANCE CDbPropBase::SetToDefault()
{
    return WriteValue(GetDefaultValue(), eWRITEKIND::Client);
}

KW_ACCEPTANCE CDbPropBase::SetText(const QString& text)
{
    CDbValue value;
    const KW_ACCEPTANCE code = ParseText(text, value);
    return code > eKW_ACC_WARNING ? code : WriteValue(std::move(value), eWRITEKIND::Client);
}

KW_ACCEPTANCE CDbPropBase::SetValidity(KW_VALIDITY validity)
{
    CDbChange change(*this);
    if (validity != GetValidity())
    {
        change.Touch();
        m_validity.store(validity, std::memory_order_release);
    }
    return eKW_ACC_OK;
}

void CDbPropBase::DeclareMeasured(eMEASURED measured)
{
    m_measured = measured;
    m_validity = measured == eMEASURED::Reading ? eKW_VALIDITY_INVALID : eKW_VALIDITY_VALID;
}

void CDbPropBase::DropMeasured()
{
    if (m_measured == eMEASURED::Reading)
    {
        SetValidity(eKW_VALIDITY_INVALID);
    }
    else if (m_measured == eMEASURED::Count)
    {
        WriteValue(GetDefaultValue(), eWRITEKIND::Internal);
    }
}

void CDbPropBase::SetAvailability(KW_AVAILABILITY availability)
{
    CDbChange change(*this);
    if (availability != GetCurrentAvailability())
    {
        change.Touch();
        CDbObject::SetAvailability(availability);
    }
}

const QVariantList& CDbPropBase::GetValueList() const
{
    static const QVariantList none;
    return m_valueList ? m_valueList->entries : none;
}

void CDbPropBase::DeclareValueList(std::initializer_list<QVariant> values)
{
    auto list = values.size() > 0 ? std::make_unique<t_ValueList>() : nullptr;
    for (const QVariant& value : values)
    {
        list->entries.append(
            value); // the list's own constructor does not look whether it got memory
    }
    m_valueList = std::move(list);
}

void CDbPropBase::DeclareValueList(const QVariantList& values)
{
    auto list = values.isEmpty() ? nullptr : std::make_unique<t_ValueList>();
    if (list)
    {
        list->entries = values;
    }
    m_valueList = std::move(list);
}

void CDbPropBase::SetOffered(UINT64 offered)
{
    if (m_valueList)
    {
        m_valueList->offered = offered;
    }
}

QStringList CDbPropBase::GetValueTexts() const
{
    const CLockGuard lock(eACCESS_READ);
    const QVariantList& list = GetValueList();
    QStringList texts;
    for (int i = 0; i < list.size(); ++i)
    {
        if (NValueList::IsOffered(GetOffered(), i))
        {
            texts.append(ToText(list[i]));
        }
    }
    return texts;
}

KW_UNIT CDbPropBase::GetUnitCode() const
{
    return eKW_UNIT_NOT_DEFINED;
}

KW_ACCEPTANCE CDbPropBase::IncDec(INT32 /*steps*/)
{
    return eKW_ACC_WRONG_KIND;
}

void CDbPropBase::RollbackValue(const CDbPropBaseHist& record)
{
    RestoreState(record, false);
}

void CDbPropBase::RedoValue(const CDbPropBaseHist& record)
{
    RestoreState(record, true);
}

KW_ACCEPTANCE CDbPropBase::CloneHistoryData(const CDbPropBaseHist& record, bool newValue)
{
    return WriteValue(record.GetValue(newValue), eWRITEKIND::Internal);
}

KW_ACCEPTANCE CDbPropBase::ClonePropData(const CDbPropBase& source)
{
    return RestoreValue(source);
}

void CDbPropBase::SetCommonState(const t_CommonState& state)
{
    m_validity.store(state.validity, std::memory_order_release);
    CDbObject::SetAvailability(state.availability);
}

IKWPropertyBase* CDbPropBase::EnsureFIM()
{
    return m_fim.Get(m_hasFim, [this] { CreateFIM(m_fim); });
}

std::shared_ptr<IKWPropertyBase> CDbPropBase::GetHandle()
{
    return {shared_from_this(), EnsureFIM()};
}

std::shared_ptr<IDbProperty> CDbPropBase::ShareProperty()
{
    return {shared_from_this(), this};
}

QString CDbPropBase::GetXMLElementName() const
{
    return QStringLiteral("Prop");
}

CDbPropBaseHist::CDbPropBaseHist(CDbPropBase& property)
    : CDbHistRecord(eOPERATIONTYPE::Value),
      m_property(std::static_pointer_cast<CDbPropBase>(property.shared_from_this()))
{
}

CDbPropBaseHist::~CDbPropBaseHist() = default;

bool CDbPropBaseHist::DoFinish()
{
    return m_property->FinishNewHistValueEntry(*this);
}

QString CDbPropBaseHist::GetText() const
{
    return m_property->GetPath();
}

void CDbPropBaseHist::DoUndo()
{
    m_property->RollbackValue(*this);
}

void CDbPropBaseHist::DoRedo()
{
    m_property->RedoValue(*this);
}
