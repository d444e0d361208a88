// SPDX-License-Identifier: MIT
#include "Mathematics/MathExpression.h"

#include "Mathematics/Program.h"
#include "Mathematics/UnitRules.h"

#include <cmath>
#include <limits>

using namespace NMathematics;

namespace
{
double Raw(KW_ZEL_MATHEMATICS_TYPE type, double a, double b)
{
    switch (type)
    {
    case eKW_ZEL_MATHEMATICS_TYPE_ADD:
        return a + b;
    case eKW_ZEL_MATHEMATICS_TYPE_SUBTRACT:
        return a - b;
    case eKW_ZEL_MATHEMATICS_TYPE_MULTIPLY:
        return a * b;
    case eKW_ZEL_MATHEMATICS_TYPE_DIVIDE:
        return a / b;
    case eKW_ZEL_MATHEMATICS_TYPE_ABS:
        return std::fabs(a);
    case eKW_ZEL_MATHEMATICS_TYPE_INVERT:
        return 0.0 - a;
    case eKW_ZEL_MATHEMATICS_TYPE_RECIPROCAL:
        return 1.0 / a;
    case eKW_ZEL_MATHEMATICS_TYPE_SQUARE:
        return a * a;
    case eKW_ZEL_MATHEMATICS_TYPE_SQRT:
        return std::sqrt(a);
    case eKW_ZEL_MATHEMATICS_TYPE_LOG10:
        return std::log10(a);
    default:
        return std::log(a);
    }
}
} // namespace

double NMathematics::Compute(KW_ZEL_MATHEMATICS_TYPE type, double a, double b)
{
    const double value = Raw(type, a, b);
    return std::isfinite(value) ? value : std::numeric_limits<double>::quiet_NaN();
}

KW_UNIT NMathematics::UnitOf(const t_Program& program,
                             std::span<const KW_UNIT, eKW_MATH_CHANNELS> units)
{
    return Run(program, units, NUnits::OfOperation,
               [](const t_Constant& constant) { return constant.unit; });
}

double NMathematics::Evaluate(const t_Program& program,
                              std::span<const double, eKW_MATH_CHANNELS> values)
{
    return Run(program, values, Compute, [](const t_Constant& constant) { return constant.value; });
}

CKWMathExpression::CKWMathExpression() = default;
CKWMathExpression::CKWMathExpression(const CKWMathExpression& other) = default;
CKWMathExpression& CKWMathExpression::operator=(const CKWMathExpression& other) = default;
CKWMathExpression::~CKWMathExpression() = default;

KW_ACCEPTANCE CKWMathExpression::Read(const QString& text, KW_MathError& error)
{
    KW_MathElements elements;
    const KW_ACCEPTANCE code = KW_ReadMathElements(text, elements, error);
    if (!KW_IsAccepted(code))
    {
        return code;
    }
    std::optional<t_Program> program = Compile(elements, text, error);
    if (!program)
    {
        return eKW_ACC_BAD_TEXT;
    }
    m_program = std::make_shared<const t_Program>(*std::move(program));
    return code;
}

KW_MathElements CKWMathExpression::GetElements() const
{
    return m_program ? m_program->elements : KW_MathElements{};
}

std::vector<KW_ZEL_CHANNEL> CKWMathExpression::GetSources() const
{
    return m_program ? m_program->sources : std::vector<KW_ZEL_CHANNEL>{};
}

KW_UNIT CKWMathExpression::GetUnit(std::span<const KW_UNIT, eKW_MATH_CHANNELS> units) const
{
    return m_program ? UnitOf(*m_program, units) : eKW_UNIT_NOT_DEFINED;
}

double CKWMathExpression::Evaluate(std::span<const double, eKW_MATH_CHANNELS> values) const
{
    return m_program ? NMathematics::Evaluate(*m_program, values)
                     : std::numeric_limits<double>::quiet_NaN();
}
