// SPDX-License-Identifier: MIT
#include "DbHistory.h"

#include "CommonDatabase/Values/DbBounds.h"
#include "ErrorReport.h"

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

void CDbStepMemory::Grow(std::size_t bytes)
{
    const std::size_t size = std::max({bytes, kFirstBlock, 2 * m_blockBytes});
    m_blocks.push_back(std::make_unique_for_overwrite<std::byte[]>(size));
    m_blockBytes = size;
    m_left = size;
}

void CDbStepMemory::Clear()
{
    if (m_blockBytes > kKeptBlock)
    {
        m_blocks.clear();
        m_blockBytes = 0;
    }
    else if (m_blocks.size() > 1)
    {
        m_blocks.erase(m_blocks.begin(), m_blocks.end() - 1);
    }
    m_left = m_blockBytes;
}

void CDbUndoStep::Finish()
{
    // All first, so that none is lost when one can not be finished.
    bool areChanged = true;
    m_heldBytes = 0;
    for (const t_Owner& record : m_records)
    {
        record->Finish();
        areChanged = areChanged && record->IsChanged();
        m_heldBytes += record->GetHeldBytes();
    }
    if (!areChanged)
    {
        m_records.erase(std::remove_if(m_records.begin(), m_records.end(),
                                       [](const t_Owner& record) { return !record->IsChanged(); }),
                        m_records.end());
    }
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

void CDbUndoStep::Clear()
{
    m_records.clear();
    if (m_records.capacity() > kKeptRecords)
    {
        m_records.shrink_to_fit();
    }
    m_memory.Clear();
    m_text.clear();
    m_heldBytes = 0;
}

CDbUndoStep& CDbHistory::Begin()
{
    t_Step& step = Begun();
    if (!step)
    {
        step = std::make_unique<CDbUndoStep>();
    }
    return *step;
}

void CDbHistory::Take()
{
    if (Begun()->IsEmpty())
    {
        Drop();
        return;
    }
    if (m_undone > 0)
    {
        DropUndone();
    }
    m_doneBytes += At(m_done)->GetHeldBytes();
    ++m_done;
    while (m_done > kMaxSteps || (m_doneBytes > NDbBounds::kMaxHistoryBytes && m_done > 1))
    {
        DropOldest();
    }
}

void CDbHistory::DropOldest()
{
    m_doneBytes -= At(0)->GetHeldBytes();
    At(0)->Clear();
    m_oldest = (m_oldest + 1) % kPlaces;
    --m_done;
}

/** The one that was begun takes the place of the first of them. */
void CDbHistory::DropUndone()
{
    At(m_done).swap(Begun());
    for (; m_undone > 0; --m_undone)
    {
        At(m_done + m_undone)->Clear();
    }
}

bool CDbHistory::Undo()
{
    if (m_done == 0)
    {
        return false;
    }
    At(m_done - 1)->Undo();
    --m_done;
    ++m_undone;
    m_doneBytes -= At(m_done)->GetHeldBytes();
    return true;
}

bool CDbHistory::Redo()
{
    if (m_undone == 0)
    {
        return false;
    }
    At(m_done)->Redo();
    m_doneBytes += At(m_done)->GetHeldBytes();
    ++m_done;
    --m_undone;
    return true;
}

void CDbHistory::Clear()
{
    m_steps = {};
    m_oldest = m_done = m_undone = 0;
    m_doneBytes = 0;
}
