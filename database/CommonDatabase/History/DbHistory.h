// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Values/DbTypes.h"

#include <array>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

/** One reversible change; it lives in the memory of the step that it belongs to. */
class CDbHistRecord
{
public:
    explicit CDbHistRecord(eOPERATIONTYPE type) : m_operation(type) {}
    virtual ~CDbHistRecord() = default;
    CDbHistRecord(const CDbHistRecord&) = delete;
    CDbHistRecord& operator=(const CDbHistRecord&) = delete;

    eOPERATIONTYPE GetOperationType() const { return m_operation; }
    ePROCESSINGTYPE GetProcessingType() const { return m_processing; }

    /** Takes the new state once all that belongs to the step has been written. */
    void Finish()
    {
        m_isChanged = DoFinish();
        m_processing = ePROCESSINGTYPE::Done;
    }
    /** False when nothing changed after all, so that a finished record can be dropped. */
    bool IsChanged() const { return m_isChanged; }
    /** "Scale", "Label3 inserted". */
    virtual QString GetText() const = 0;
    /** Roughly what the record keeps in memory. */
    virtual std::size_t GetHeldBytes() const = 0;
    void Undo();
    void Redo();

protected:
    /** Whether the new state is another one. */
    virtual bool DoFinish() { return true; }
    virtual void DoUndo() = 0;
    virtual void DoRedo() = 0;

private:
    eOPERATIONTYPE m_operation;
    ePROCESSINGTYPE m_processing = ePROCESSINGTYPE::Recording;
    bool m_isChanged = true;
};

/** Memory that is handed out piece by piece and taken back all at once. What a small step needs is
    kept for the next one. */
class CDbStepMemory
{
public:
    /** For any type that asks for no more than the usual alignment. Valid until Clear. */
    void* Take(std::size_t bytes)
    {
        const std::size_t taken = (bytes + kUnit - 1) / kUnit * kUnit;
        if (taken > m_left)
        {
            Grow(taken);
        }
        m_left -= taken;
        return m_blocks.back().get() + m_left;
    }
    void Clear();

private:
    static constexpr std::size_t kUnit = alignof(std::max_align_t);
    static constexpr std::size_t kFirstBlock = 192; ///< the record of one number
    static constexpr std::size_t kKeptBlock = 2048;

    void Grow(std::size_t bytes);

    std::vector<std::unique_ptr<std::byte[]>> m_blocks; ///< the present one last
    std::size_t m_left = 0;                             ///< in the present block, at its begin
    std::size_t m_blockBytes = 0;                       ///< of the present block
};

/** All that one client write, or one transaction, changed. Its records stand in its own memory and
    go together. */
class CDbUndoStep
{
public:
    CDbUndoStep() = default;
    CDbUndoStep(const CDbUndoStep&) = delete;
    CDbUndoStep& operator=(const CDbUndoStep&) = delete;

    /** Adds a record. Where that throws, the step is as before. */
    template <typename TRecord, typename... TArgs>
    void Make(TArgs&&... args)
    {
        void* const place = m_memory.Take(sizeof(TRecord));
        m_records.push_back(t_Owner(::new (place) TRecord(std::forward<TArgs>(args)...)));
    }
    /** Who began the step names it: the first name stays. */
    void Name(const QString& text) { m_text = m_text.isEmpty() ? text : m_text; }
    void Finish();
    bool IsEmpty() const { return m_records.empty(); }
    /** Where memory is too short for them nothing is undone or redone, and that is thrown. */
    void Undo();
    void Redo();
    /** Undo of a step that could not be finished. Values need no memory for it; a container's item
        that can not even be put back now is reported, and the rest is rolled back. */
    void RollBack() noexcept;
    /** Makes it as a new one, with the memory that a small step needs. */
    void Clear();
    /** The step's name; without one that of its first record. */
    QString GetText() const;
    /** Roughly what the finished step keeps in memory. */
    std::size_t GetHeldBytes() const { return m_heldBytes; }

private:
    static constexpr std::size_t kKeptRecords = 32;

    /** The memory goes with the step. */
    struct t_Destroy
    {
        void operator()(CDbHistRecord* record) const { record->~CDbHistRecord(); }
    };
    using t_Owner = std::unique_ptr<CDbHistRecord, t_Destroy>;

    QString m_text;
    CDbStepMemory m_memory;
    std::vector<t_Owner> m_records;
    std::size_t m_heldBytes = 0;
};

/** The steps that can be undone and redone; bounded in number and in what they keep
    (NDbBounds), the oldest go first. */
class CDbHistory
{
public:
    static constexpr std::size_t kMaxSteps = 100;

    /** An empty step to record into, until Take or Drop. Others are neither undone nor redone in
        between. */
    CDbUndoStep& Begin();
    /** Takes the step that was begun, now finished; an empty one leaves no trace. */
    void Take();
    /** Forgets the step that was begun. */
    void Drop() { Begun()->Clear(); }
    bool Undo();
    bool Redo();
    void Clear();
    /** The step that would be next after `ahead` others; null for none. */
    ///@{
    const CDbUndoStep* NextUndo(std::size_t ahead = 0) const
    {
        return ahead < m_done ? At(m_done - 1 - ahead).get() : nullptr;
    }
    const CDbUndoStep* NextRedo(std::size_t ahead = 0) const
    {
        return ahead < m_undone ? At(m_done + ahead).get() : nullptr;
    }
    ///@}

private:
    using t_Step = std::unique_ptr<CDbUndoStep>;
    /** A power of two above kMaxSteps: there is always a place for one that is begun. */
    static constexpr std::size_t kPlaces = 128;

    /** Counted from the oldest step that is done; behind those that are done stand the undone
        ones, behind these the one that was begun. Steps that went leave theirs for reuse. */
    const t_Step& At(std::size_t place) const { return m_steps[(m_oldest + place) % kPlaces]; }
    t_Step& At(std::size_t place) { return m_steps[(m_oldest + place) % kPlaces]; }
    t_Step& Begun() { return At(m_done + m_undone); }
    void DropOldest();
    void DropUndone();

    std::array<t_Step, kPlaces> m_steps;
    std::size_t m_oldest = 0;
    std::size_t m_done = 0;
    std::size_t m_undone = 0;
    std::size_t m_doneBytes = 0; ///< of the steps that are done
};
