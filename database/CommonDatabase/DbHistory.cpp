// SPDX-License-Identifier: MIT
#include "DbHistory.h"

#include "DbPropBase.h"

#include <algorithm>

void CDbHistRecord::Undo()
{
    DoUndo();
    m_processing = ePROCESSINGTYPE::Undone;
}

void CDbHistRecord::Redo()
{
    DoRedo();
    m_processing = ePROCESSINGTYPE::Done;
}

CDbPropBaseHist::CDbPropBaseHist(CDbPropBase& property)
    : CDbHistRecord(eOPERATIONTYPE::Value),
      m_property(std::static_pointer_cast<CDbPropBase>(property.shared_from_this()))
{
}

CDbPropBaseHist::~CDbPropBaseHist() = default;

bool CDbPropBaseHist::Finish()
{
    m_property->FinishNewHistValueEntry(*this);
    SetProcessingType(ePROCESSINGTYPE::Done);
    return IsChanged();
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

bool CDbUndoStep::Finish()
{
    m_records.erase(std::remove_if(m_records.begin(), m_records.end(),
                                   [](const auto& record) { return !record->Finish(); }),
                    m_records.end());
    return !m_records.empty();
}

void CDbUndoStep::Undo()
{
    std::for_each(m_records.rbegin(), m_records.rend(), [](const auto& r) { r->Undo(); });
}

void CDbUndoStep::Redo()
{
    std::for_each(m_records.begin(), m_records.end(), [](const auto& r) { r->Redo(); });
}

QString CDbUndoStep::GetText() const
{
    return !m_text.isEmpty() || m_records.empty() ? m_text : m_records.front()->GetText();
}

void CDbHistory::Add(std::unique_ptr<CDbUndoStep> step)
{
    m_undone.clear();
    m_done.push_back(std::move(step));
    if (m_done.size() > kMaxSteps)
    {
        m_done.pop_front();
    }
}

bool CDbHistory::Undo()
{
    if (m_done.empty())
    {
        return false;
    }
    m_done.back()->Undo();
    m_undone.push_back(std::move(m_done.back()));
    m_done.pop_back();
    return true;
}

bool CDbHistory::Redo()
{
    if (m_undone.empty())
    {
        return false;
    }
    m_undone.back()->Redo();
    m_done.push_back(std::move(m_undone.back()));
    m_undone.pop_back();
    return true;
}

void CDbHistory::Clear()
{
    m_done.clear();
    m_undone.clear();
}
