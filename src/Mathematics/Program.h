// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsMathematics.h"
#include "Mathematics/MathExpression.h"

#include <array>
#include <optional>
#include <vector>

/**
 * What an expression is compiled to: steps in the order in which they are computed, each an
 * operation on sources, constants and results of earlier steps. The same steps are run over units,
 * numbers, intervals and blocks of samples.
 */
namespace NMathematics
{
/** What a step is computed from. */
struct t_Operand
{
    enum class eKind : UINT8
    {
        Source,   ///< `number` of the channel
        Constant, ///< place among the constants
        Register, ///< result of an earlier step
    };
    eKind kind = eKind::Source;
    UINT8 number = 0;
};

/** One operation, ADD to LN of the mathematics channel; those on one source do not look at `b`. */
struct t_Step
{
    KW_ZEL_MATHEMATICS_TYPE type = eKW_ZEL_MATHEMATICS_TYPE_ADD;
    t_Operand a;
    t_Operand b;
    UINT8 target = 0; ///< register; may be one of the operands'
};

struct t_Constant
{
    double value = 0.0;
    KW_UNIT unit = eKW_UNIT_NONE;
};

struct t_Program
{
    KW_MathElements elements;            ///< none where it is no expression
    std::vector<KW_ZEL_CHANNEL> sources; ///< each once, the first in the text first
    std::vector<t_Constant> constants;
    std::vector<t_Step> steps;
    t_Operand result;
    UINT32 registers = 0; ///< that the steps need, at most eKW_MATH_ELEMENTS
};

/** Nothing, and where and why, when the elements are in no order that can be computed. */
std::optional<t_Program> Compile(const KW_MathElements& elements, const QString& text,
                                 KW_MathError& error);

/** One operation on one or two sources. */
t_Program CompileOperation(KW_ZEL_MATHEMATICS_TYPE type, KW_ZEL_CHANNEL a, KW_ZEL_CHANNEL b);

constexpr bool HasTwoSources(KW_ZEL_MATHEMATICS_TYPE type)
{
    return type <= eKW_ZEL_MATHEMATICS_TYPE_DIVIDE;
}

/** Runs a program over any kind of values. `compute(type, a, b)` answers the value of a step,
    `constant` that of a constant. */
template <class TValue, class TCompute, class TConstant>
TValue Run(const t_Program& program, std::span<const TValue, eKW_MATH_CHANNELS> sources,
           const TCompute& compute, const TConstant& constant)
{
    std::array<TValue, eKW_MATH_ELEMENTS> registers; // each is written before it is read
    const auto value = [&](t_Operand operand) -> TValue
    {
        switch (operand.kind)
        {
        case t_Operand::eKind::Source:
            return sources[operand.number];
        case t_Operand::eKind::Constant:
            return constant(program.constants[operand.number]);
        default:
            return registers[operand.number];
        }
    };
    for (const t_Step& step : program.steps)
    {
        registers[step.target] = compute(step.type, value(step.a), value(step.b));
    }
    return value(program.result);
}

KW_UNIT UnitOf(const t_Program& program, std::span<const KW_UNIT, eKW_MATH_CHANNELS> units);

/** NaN where a step has no finite result. */
double Evaluate(const t_Program& program, std::span<const double, eKW_MATH_CHANNELS> values);

/** One operation, ADD to LN; NaN where it has no finite result. */
double Compute(KW_ZEL_MATHEMATICS_TYPE type, double a, double b);
} // namespace NMathematics

struct CKWMathExpression::t_Access
{
    static std::shared_ptr<const NMathematics::t_Program>
    ProgramOf(const CKWMathExpression& expression)
    {
        return expression.m_program;
    }
};
