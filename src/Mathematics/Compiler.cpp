// SPDX-License-Identifier: MIT
#include "Mathematics/Program.h"

#include <algorithm>

namespace
{
using namespace NMathematics;
using t_Found = std::optional<t_Operand>;

/** Sum of products of factors, by recursive descent; nothing where it can not go on. */
class CCompiler
{
public:
    CCompiler(const KW_MathElements& elements, const QString& text, KW_MathError& error)
        : m_elements(elements), m_text(text), m_error(error)
    {
    }

    std::optional<t_Program> Whole()
    {
        const t_Found result = Sum();
        if (result && m_next < m_elements.size())
        {
            Complain(Is(eKW_ZEL_MATH_ELEMENT_TYPE_CLOSE_BRACKET)
                         ? QStringLiteral("no bracket is open here: remove the ) or add a (")
                         : QStringLiteral("an operator is missing: put + - * or / in front"));
            return std::nullopt;
        }
        if (!result)
        {
            return std::nullopt;
        }
        m_program.result = *result;
        m_program.elements = m_elements;
        return std::move(m_program);
    }

private:
    t_Found Sum()
    {
        t_Found sum = Product();
        while (sum && (IsOperator("+") || IsOperator("-")))
        {
            const auto type =
                IsOperator("+") ? eKW_ZEL_MATHEMATICS_TYPE_ADD : eKW_ZEL_MATHEMATICS_TYPE_SUBTRACT;
            ++m_next;
            const t_Found other = Product();
            sum = other ? t_Found(Emit(type, *sum, *other)) : other;
        }
        return sum;
    }

    t_Found Product()
    {
        t_Found product = Factor();
        while (product && (IsOperator("*") || IsOperator("/")))
        {
            const auto type = IsOperator("*") ? eKW_ZEL_MATHEMATICS_TYPE_MULTIPLY
                                              : eKW_ZEL_MATHEMATICS_TYPE_DIVIDE;
            ++m_next;
            const t_Found other = Factor();
            product = other ? t_Found(Emit(type, *product, *other)) : other;
        }
        return product;
    }

    t_Found Factor()
    {
        if (IsOperator("-"))
        {
            ++m_next;
            const t_Found operand = Factor();
            return operand ? t_Found(Emit(eKW_ZEL_MATHEMATICS_TYPE_INVERT, *operand)) : operand;
        }
        if (Is(eKW_ZEL_MATH_ELEMENT_TYPE_SOURCE))
        {
            return Source(m_elements[m_next++].source);
        }
        if (Is(eKW_ZEL_MATH_ELEMENT_TYPE_CONSTANT))
        {
            const KW_MathElement& element = m_elements[m_next++];
            m_program.constants.push_back({element.constant, element.unit});
            return t_Operand{t_Operand::eKind::Constant,
                             static_cast<UINT8>(m_program.constants.size() - 1)};
        }
        return Is(eKW_ZEL_MATH_ELEMENT_TYPE_FUNCTION) ? Function() : Bracket();
    }

    t_Found Function()
    {
        const QString name = m_elements[m_next++].name;
        if (!Is(eKW_ZEL_MATH_ELEMENT_TYPE_OPEN_BRACKET))
        {
            return Complain(
                QStringLiteral("a bracket is missing: write %1(C1), for instance").arg(name));
        }
        const t_Found operand = Bracket();
        const auto type = name == QLatin1String("sqr") ? eKW_ZEL_MATHEMATICS_TYPE_SQUARE
                                                       : eKW_ZEL_MATHEMATICS_TYPE_ABS;
        return operand ? t_Found(Emit(type, *operand)) : operand;
    }

    t_Found Bracket()
    {
        if (!Is(eKW_ZEL_MATH_ELEMENT_TYPE_OPEN_BRACKET))
        {
            return Complain(
                m_elements.empty()
                    ? QStringLiteral("nothing is written: enter an expression such as C1+C2")
                    : QStringLiteral("an operand is missing: add a channel, a number or a "
                                     "bracket"));
        }
        const UINT32 opened = m_elements[m_next++].column;
        const t_Found operand = Sum();
        if (operand && !Is(eKW_ZEL_MATH_ELEMENT_TYPE_CLOSE_BRACKET))
        {
            return Complain(
                m_next == m_elements.size()
                    ? QStringLiteral("the bracket of column %1 is not closed: add )").arg(opened)
                    : QStringLiteral("an operator is missing: put + - * or / in front"));
        }
        m_next += operand ? 1 : 0;
        return operand;
    }

    t_Operand Source(KW_ZEL_CHANNEL channel)
    {
        auto& sources = m_program.sources;
        if (std::find(sources.begin(), sources.end(), channel) == sources.end())
        {
            sources.push_back(channel);
        }
        return {t_Operand::eKind::Source, static_cast<UINT8>(channel)};
    }

    t_Operand Emit(KW_ZEL_MATHEMATICS_TYPE type, t_Operand a)
    {
        return EmitStep(type, a, a, CountOf(a));
    }
    t_Operand Emit(KW_ZEL_MATHEMATICS_TYPE type, t_Operand a, t_Operand b)
    {
        return EmitStep(type, a, b, CountOf(a) + CountOf(b));
    }

    /** Registers are a stack: a step's operands are its uppermost, and its result the next. */
    t_Operand EmitStep(KW_ZEL_MATHEMATICS_TYPE type, t_Operand a, t_Operand b, UINT32 freed)
    {
        const t_Operand target{t_Operand::eKind::Register, static_cast<UINT8>(m_depth - freed)};
        m_program.steps.push_back({type, a, b, target.number});
        m_depth = target.number + 1U;
        m_program.registers = std::max(m_program.registers, m_depth);
        return target;
    }

    static UINT32 CountOf(t_Operand operand)
    {
        return operand.kind == t_Operand::eKind::Register ? 1 : 0;
    }

    bool Is(KW_ZEL_MATH_ELEMENT_TYPE type) const
    {
        return m_next < m_elements.size() && m_elements[m_next].type == type;
    }

    bool IsOperator(const char* sign) const
    {
        return Is(eKW_ZEL_MATH_ELEMENT_TYPE_OPERATOR) &&
               m_elements[m_next].name == QLatin1String(sign);
    }

    t_Found Complain(const QString& what)
    {
        m_error.column = m_next < m_elements.size() ? m_elements[m_next].column
                                                    : static_cast<UINT32>(m_text.size()) + 1;
        m_error.text = what;
        return std::nullopt;
    }

    const KW_MathElements& m_elements;
    const QString& m_text;
    KW_MathError& m_error;
    t_Program m_program;
    std::size_t m_next = 0;
    UINT32 m_depth = 0; ///< registers that are in use
};
} // namespace

std::optional<t_Program> NMathematics::Compile(const KW_MathElements& elements, const QString& text,
                                               KW_MathError& error)
{
    return CCompiler(elements, text, error).Whole();
}

t_Program NMathematics::CompileOperation(KW_ZEL_MATHEMATICS_TYPE type, KW_ZEL_CHANNEL a,
                                         KW_ZEL_CHANNEL b)
{
    const t_Operand first{t_Operand::eKind::Source, static_cast<UINT8>(a)};
    const t_Operand second{t_Operand::eKind::Source, static_cast<UINT8>(b)};
    t_Program program;
    program.sources = {a};
    if (HasTwoSources(type) && b != a)
    {
        program.sources.push_back(b);
    }
    program.steps = {{type, first, HasTwoSources(type) ? second : first, 0}};
    program.result = {t_Operand::eKind::Register, 0};
    program.registers = 1;
    return program;
}
