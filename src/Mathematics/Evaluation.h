// SPDX-License-Identifier: MIT
#pragma once

#include "Mathematics/Blocks.h"
#include "Mathematics/TimeOperations.h"

#include <optional>

/** The points of a curve: a program, or an operation over time, run over sources. */
namespace NMathematics
{
/** What is computed from which traces. */
struct t_Task
{
    const t_Program* program = nullptr;
    std::array<CSource, eKW_MATH_CHANNELS> sources; ///< those that the program names
    KW_TraceInfo grid;                              ///< where the points of the result stand
    t_TimeSettings time;                            ///< of an operation over time

    bool IsOverTime() const
    {
        return !program->steps.empty() && IsTimeOperation(program->steps.front().type);
    }
};

/** Computes the curve from its first point on, block by block. */
class CEvaluation
{
public:
    /** @param scratch ScratchSize floats */
    CEvaluation(const t_Task& task, float* scratch);

    static std::size_t ScratchSize(const t_Program& program)
    {
        return kBlock * (std::size_t{eKW_MATH_CHANNELS} + program.registers);
    }

    /**
     * The points from `first` on, where the block before ended, at most kBlock.
     * @param target has room for whole steps; may be null
     * @return `target`, or where they stand without one
     */
    const float* Next(UINT32 first, UINT32 count, float* target);

private:
    const float* NextSteps(UINT32 first, UINT32 count, float* target);
    void NextOverTime(UINT32 first, UINT32 count, float* target);
    t_Input InputOf(t_Operand operand) const;
    float* RegisterAt(UINT32 number) const { return m_registers + std::size_t{number} * kBlock; }

    const t_Task& m_task;
    float* const m_scratch;   ///< a block for each channel
    float* const m_registers; ///< and one for each register
    std::array<t_Input, eKW_MATH_CHANNELS> m_inputs{};
    CTimeOperation m_time;
};

/** The same of pairs: intervals point by point. */
class CPairEvaluation
{
public:
    explicit CPairEvaluation(const t_Task& task);
    t_Interval Next(UINT32 point);

private:
    const t_Task& m_task;
    CTimeOperation m_low;
    CTimeOperation m_high;
};
} // namespace NMathematics
