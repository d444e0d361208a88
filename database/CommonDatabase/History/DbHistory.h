// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Values/DbTypes.h"

#include <deque>
#include <memory>
#include <vector>

/** One reversible change. */
class CDbHistRecord
{
public:
    explicit CDbHistRecord(eOPERATIONTYPE type) : m_operation(type) {}
    virtual ~CDbHistRecord() = default;

    eOPERATIONTYPE GetOperationType() const { return m_operation; }
    ePROCESSINGTYPE GetProcessingType() const { return m_processing; }

    /** Takes the new state once all that belongs to the step has been written. */
    virtual void Finish() { SetProcessingType(ePROCESSINGTYPE::Done); }
    /** False when nothing changed after all, so that a finished record can be dropped. */
    virtual bool IsChanged() const { return true; }
    /** "Scale", "Label3 inserted". */
    virtual QString GetText() const = 0;
    /** Roughly what the record keeps in memory. */
    virtual std::size_t GetHeldBytes() const = 0;
    void Undo();
    void Redo();

protected:
    virtual void DoUndo() = 0;
    virtual void DoRedo() = 0;
    void SetProcessingType(ePROCESSINGTYPE type) { m_processing = type; }

private:
    eOPERATIONTYPE m_operation;
    ePROCESSINGTYPE m_processing = ePROCESSINGTYPE::Recording;
};

/** All that one client write, or one transaction, changed. */
class CDbUndoStep
{
public:
    explicit CDbUndoStep(QString text) : m_text(std::move(text)) {}
    void Add(std::unique_ptr<CDbHistRecord> record) { m_records.push_back(std::move(record)); }
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
    /** The step's name; without one that of its first record. */
    QString GetText() const;
    std::size_t GetHeldBytes() const;

private:
    QString m_text;
    std::vector<std::unique_ptr<CDbHistRecord>> m_records;
};

/** The steps that can be undone and redone; bounded in number and in what they keep
    (NDbBounds), the oldest go first. */
class CDbHistory
{
public:
    static constexpr std::size_t kMaxSteps = 100;

    /** Takes a finished step, unless it is empty or an exception comes. */
    void Add(std::unique_ptr<CDbUndoStep>& step);
    bool Undo();
    bool Redo();
    void Clear();
    const CDbUndoStep* NextUndo() const
    {
        return m_done.empty() ? nullptr : m_done.back().step.get();
    }
    const CDbUndoStep* NextRedo() const
    {
        return m_undone.empty() ? nullptr : m_undone.back().step.get();
    }

private:
    /** A step and what it keeps. */
    struct t_Kept
    {
        std::unique_ptr<CDbUndoStep> step;
        std::size_t bytes = 0;
    };

    std::deque<t_Kept> m_done;
    std::vector<t_Kept> m_undone;
    std::size_t m_doneBytes = 0; ///< of the steps that are done
};
