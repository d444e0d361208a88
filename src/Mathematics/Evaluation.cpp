// SPDX-License-Identifier: MIT
#include "Mathematics/Evaluation.h"

#include "Mathematics/Intervals.h"

namespace NMathematics
{
CEvaluation::CEvaluation(const t_Task& task, float* scratch)
    : m_task(task), m_scratch(scratch),
      m_registers(scratch + std::size_t{eKW_MATH_CHANNELS} * kBlock), m_time(task.time)
{
}

const float* CEvaluation::Next(UINT32 first, UINT32 count, float* target)
{
    if (m_task.IsOverTime())
    {
        float* const place = target != nullptr ? target : RegisterAt(0);
        NextOverTime(first, count, place);
        return place;
    }
    return NextSteps(first, count, target);
}

const float* CEvaluation::NextSteps(UINT32 first, UINT32 count, float* target)
{
    const t_Program& program = *m_task.program;
    for (const KW_ZEL_CHANNEL channel : program.sources)
    {
        m_inputs[channel] = m_task.sources[channel].Fetch(
            first, count, m_scratch + std::size_t{kBlock} * static_cast<UINT32>(channel));
    }
    for (const t_Step& step : program.steps)
    {
        const bool isLast = target != nullptr && &step == &program.steps.back();
        ComputeBlock(step.type, InputOf(step.a), InputOf(step.b),
                     isLast ? target : RegisterAt(step.target), count);
    }
    if (!program.steps.empty())
    {
        return target != nullptr ? target : RegisterAt(program.result.number);
    }
    // A source or a constant alone. The block of M1, which is no source, is free.
    float* const place =
        target != nullptr ? target : m_scratch + std::size_t{kBlock} * eKW_ZEL_CHANNEL_M1;
    CopyBlock(InputOf(program.result), place, count);
    return place;
}

t_Input CEvaluation::InputOf(t_Operand operand) const
{
    t_Input input;
    switch (operand.kind)
    {
    case t_Operand::eKind::Source:
        return m_inputs[operand.number];
    case t_Operand::eKind::Constant:
        input.offset = static_cast<float>(m_task.program->constants[operand.number].value);
        return input;
    default:
        input.reals = RegisterAt(operand.number);
        return input;
    }
}

void CEvaluation::NextOverTime(UINT32 first, UINT32 count, float* target)
{
    const CSource& source = m_task.sources[m_task.program->sources.front()];
    const bool isDerivative = m_task.time.type == eKW_ZEL_MATHEMATICS_TYPE_DERIVATIVE;
    for (UINT32 i = 0; i < count; ++i)
    {
        const UINT32 point = first + i;
        target[i] = static_cast<float>(
            isDerivative ? DerivativeAt(source, point, m_task.grid.count, m_task.time.interval)
                         : m_time.Next(source.ValueAt(point), point));
    }
    t_Input input;
    input.reals = target;
    CopyBlock(input, target, count); // NaN are all the same
}

CPairEvaluation::CPairEvaluation(const t_Task& task)
    : m_task(task), m_low(task.time), m_high(task.time)
{
}

t_Interval CPairEvaluation::Next(UINT32 point)
{
    const t_Program& program = *m_task.program;
    std::array<t_Interval, eKW_MATH_CHANNELS> values;
    for (const KW_ZEL_CHANNEL channel : program.sources)
    {
        values[channel] = m_task.sources[channel].IntervalAt(point);
    }
    if (m_task.IsOverTime())
    {
        const t_Interval value = values[program.sources.front()];
        return {m_low.Next(value.low, point), m_high.Next(value.high, point)};
    }
    return Run<t_Interval>(program, values, ComputeInterval,
                           [](const t_Constant& constant) {
                               return t_Interval{constant.value, constant.value};
                           });
}
} // namespace NMathematics
