// SPDX-License-Identifier: MIT
#include "DbPropText.h"

#include "LockManager.h"

#include <algorithm>

void CDbPropTextBase::DbSetDefault(const QString& text)
{
    m_default = text;
    m_value = text;
}

QString CDbPropTextBase::Get() const
{
    const CLockGuard lock(eACCESS_READ);
    return m_value;
}

KW_ACCEPTANCE CDbPropTextBase::ParseText(const QString& text, CDbValue& value) const
{
    value = text.isNull() ? QStringLiteral("") : text;
    return eKW_ACC_OK;
}

KW_ACCEPTANCE CDbPropTextBase::Validate(CDbValue& value, eWRITEKIND /*kind*/) const
{
    const QString* const text = std::get_if<QString>(&value);
    return text != nullptr ? ValidateText(*text) : static_cast<KW_ACCEPTANCE>(eKW_ACC_WRONG_KIND);
}

void CDbPropTextBase::Store(const CDbValue& value, eWRITEKIND /*kind*/)
{
    m_value = std::get<QString>(value);
}

void CDbPropTextBase::MakeNewHistValueEntry(CDbUndoStep& step)
{
    step.Make<CDbPropHist<t_State>>(*this, GetState());
}

bool CDbPropTextBase::FinishNewHistValueEntry(CDbPropBaseHist& record) const
{
    return static_cast<CDbPropHist<t_State>&>(record).Complete(GetState());
}

void CDbPropTextBase::LoadState(const CDbPropBaseHist& record, bool newState)
{
    SetState(static_cast<const CDbPropHist<t_State>&>(record).State(newState));
}

void CDbPropTextBase::SetState(const t_State& state)
{
    SetCommonState(state.common);
    m_value = state.value;
}

bool CDbPropTextBase::IsSavable(const QString& text)
{
    for (auto c = text.cbegin(); c != text.cend(); ++c)
    {
        const char16_t code = c->unicode();
        const bool isControl = code < 0x20 && code != u'\t' && code != u'\n' && code != u'\r';
        if (isControl || code == 0xFFFE || code == 0xFFFF || c->isLowSurrogate())
        {
            return false;
        }
        if (c->isHighSurrogate() && (++c == text.cend() || !c->isLowSurrogate()))
        {
            return false;
        }
    }
    return true;
}

KW_ACCEPTANCE CDbPropString::ValidateText(const QString& text) const
{
    if (text.size() > m_maxLength)
    {
        return eKW_ACC_TOO_LONG;
    }
    if (!IsSavable(text) || !NTextForm::Fits(m_form, text))
    {
        return eKW_ACC_BAD_TEXT;
    }
    const QVariantList& list = GetValueList();
    return list.isEmpty() || list.contains(text)
               ? eKW_ACC_OK
               : static_cast<KW_ACCEPTANCE>(eKW_ACC_NOT_IN_VALUE_LIST);
}

std::shared_ptr<IKWStringProperty> CDbPropString::GetFIMPointer()
{
    return {shared_from_this(), static_cast<IKWStringProperty*>(EnsureFIM())};
}

KW_ACCEPTANCE CDbPropBitPattern::ValidateText(const QString& text) const
{
    if (text.size() > m_maxLength)
    {
        return eKW_ACC_TOO_LONG;
    }
    const bool isPattern = std::all_of(text.begin(), text.end(),
                                       [](QChar c) { return c == u'0' || c == u'1' || c == u'X'; });
    return isPattern ? eKW_ACC_OK : eKW_ACC_BAD_TEXT;
}

KW_ACCEPTANCE CDbPropBitPattern::SetFormat(E_NUMBERFORMAT format)
{
    if (format != eNUMBERFORMAT_HEX && format != eNUMBERFORMAT_BINARY)
    {
        return eKW_ACC_UNKNOWN_VALUE;
    }
    const CLockGuard lock;
    if (const KW_ACCEPTANCE access = CheckAccess(GetDbRoot(), true); access > eKW_ACC_WARNING)
    {
        return access;
    }
    const bool isResult = GetObjectType() == eOBJECTTYPE_RESULT;
    CDbChange change(*this, isResult ? eWRITEKIND::Internal : eWRITEKIND::Client);
    if (format != m_format)
    {
        change.Touch();
        m_format = format;
    }
    return eKW_ACC_OK;
}

void CDbPropBitPattern::MakeNewHistValueEntry(CDbUndoStep& step)
{
    step.Make<CDbPropHist<t_PatternState>>(*this, GetPatternState());
}

bool CDbPropBitPattern::FinishNewHistValueEntry(CDbPropBaseHist& record) const
{
    return static_cast<CDbPropHist<t_PatternState>&>(record).Complete(GetPatternState());
}

void CDbPropBitPattern::LoadState(const CDbPropBaseHist& record, bool newState)
{
    const auto& state = static_cast<const CDbPropHist<t_PatternState>&>(record).State(newState);
    SetState(state.text);
    m_format = state.format;
}

E_NUMBERFORMAT CDbPropBitPattern::GetFormat() const
{
    const CLockGuard lock(eACCESS_READ);
    return m_format;
}

std::shared_ptr<IKWBitPatternProperty> CDbPropBitPattern::GetFIMPointer()
{
    return {shared_from_this(), static_cast<IKWBitPatternProperty*>(EnsureFIM())};
}
