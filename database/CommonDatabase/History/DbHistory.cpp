// SPDX-License-Identifier: MIT
#include "DbHistory.h"

#include "CommonDatabase/Values/DbBounds.h"
#include "ErrorReport.h"

#include <algorithm>
#include <numeric>

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

namespace
{
/** All or none: what was done is reversed when one can not be done. */
template <typename TIterator>
void ApplyAll(TIterator begin, TIterator end, void (CDbHistRecord::*apply)(),
              void (CDbHistRecord::*reverse)())
{
    for (TIterator record = begin; record != end; ++record)
    {
        try
        {
            (**record.*apply)();
        }
        catch (...)
        {
            while (record != begin)
            {
                (**--record.*reverse)();
            }
            throw;
        }
    }
}
} // namespace

void CDbUndoStep::Finish()
{
    // All first, so that none is lost when one can not be finished.
    std::for_each(m_records.begin(), m_records.end(), [](const auto& r) { r->Finish(); });
    m_records.erase(std::remove_if(m_records.begin(), m_records.end(),
                                   [](const auto& record) { return !record->IsChanged(); }),
                    m_records.end());
}

void CDbUndoStep::Undo()
{
    ApplyAll(m_records.rbegin(), m_records.rend(), &CDbHistRecord::Undo, &CDbHistRecord::Redo);
}

void CDbUndoStep::Redo()
{
    ApplyAll(m_records.begin(), m_records.end(), &CDbHistRecord::Redo, &CDbHistRecord::Undo);
}

void CDbUndoStep::RollBack() noexcept
{
    for (auto record = m_records.rbegin(); record != m_records.rend(); ++record)
    {
        try
        {
            (*record)->Undo();
        }
        catch (...)
        {
            static const QString text =
                QStringLiteral("Out of memory: an item of a container could not be put back");
            KW_REPORT_ERROR(text, "CommonDatabase/Src/DbHistory");
        }
    }
}

QString CDbUndoStep::GetText() const
{
    return !m_text.isEmpty() || m_records.empty() ? m_text : m_records.front()->GetText();
}

std::size_t CDbUndoStep::GetHeldBytes() const
{
    return std::accumulate(m_records.begin(), m_records.end(), std::size_t{0},
                           [](std::size_t sum, const auto& record)
                           { return sum + record->GetHeldBytes(); });
}

void CDbHistory::Add(std::unique_ptr<CDbUndoStep>& step)
{
    if (step->IsEmpty())
    {
        return;
    }
    m_done.emplace_back();
    m_done.back() = {std::move(step), 0};
    m_done.back().bytes = m_done.back().step->GetHeldBytes();
    m_doneBytes += m_done.back().bytes;
    m_undone.clear();
    while (m_done.size() > kMaxSteps ||
           (m_doneBytes > NDbBounds::kMaxHistoryBytes && m_done.size() > 1))
    {
        m_doneBytes -= m_done.front().bytes;
        m_done.pop_front();
    }
}

// Room comes first: a step that is undone must not get lost on the way.
bool CDbHistory::Undo()
{
    if (m_done.empty())
    {
        return false;
    }
    m_undone.reserve(m_undone.size() + 1);
    m_done.back().step->Undo();
    m_doneBytes -= m_done.back().bytes;
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
    m_done.emplace_back();
    try
    {
        m_undone.back().step->Redo();
    }
    catch (...)
    {
        m_done.pop_back();
        throw;
    }
    m_done.back() = std::move(m_undone.back());
    m_doneBytes += m_done.back().bytes;
    m_undone.pop_back();
    return true;
}

void CDbHistory::Clear()
{
    m_done.clear();
    m_undone.clear();
    m_doneBytes = 0;
}
