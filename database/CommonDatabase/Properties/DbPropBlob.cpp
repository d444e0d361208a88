// SPDX-License-Identifier: MIT
#include "DbPropBlob.h"

#include "LockManager.h"

QByteArray CDbPropBlob::Get() const
{
    const CLockGuard lock(eACCESS_READ);
    return m_value;
}

QString CDbPropBlob::GetText() const
{
    return QString::fromLatin1(Get().toBase64());
}

KW_ACCEPTANCE CDbPropBlob::ParseText(const QString& text, CDbValue& value) const
{
    auto decoded =
        QByteArray::fromBase64Encoding(text.toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded)
    {
        return eKW_ACC_BAD_TEXT;
    }
    value = std::move(*decoded);
    return eKW_ACC_OK;
}

KW_ACCEPTANCE CDbPropBlob::Validate(CDbValue& value, eWRITEKIND /*kind*/) const
{
    const QByteArray* const bytes = std::get_if<QByteArray>(&value);
    if (bytes == nullptr)
    {
        return eKW_ACC_WRONG_KIND;
    }
    return bytes->size() > kMaxSize ? eKW_ACC_TOO_LONG : eKW_ACC_OK;
}

void CDbPropBlob::Store(const CDbValue& value, eWRITEKIND /*kind*/)
{
    m_value = std::get<QByteArray>(value);
}

void CDbPropBlob::MakeNewHistValueEntry(CDbUndoStep& step)
{
    step.Make<CDbPropHist<t_State>>(*this, GetState());
}

bool CDbPropBlob::FinishNewHistValueEntry(CDbPropBaseHist& record) const
{
    return static_cast<CDbPropHist<t_State>&>(record).Complete(GetState());
}

void CDbPropBlob::LoadState(const CDbPropBaseHist& record, bool newState)
{
    const t_State& state = static_cast<const CDbPropHist<t_State>&>(record).State(newState);
    SetCommonState(state.common);
    m_value = state.value;
}

std::shared_ptr<IKWBlobProperty> CDbPropBlob::GetFIMPointer()
{
    return {shared_from_this(), static_cast<IKWBlobProperty*>(EnsureFIM())};
}
