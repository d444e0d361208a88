// SPDX-License-Identifier: MIT
#include "Rules/MathExpression.h"

#include "CommonDatabase/Values/NumberText.h"
#include "Rules/UnitRules.h"

#include <cmath>

using namespace NMathExpression;

namespace
{
struct t_UnitSymbol
{
    const char* symbol;
    KW_UNIT unit;
};

constexpr t_UnitSymbol kUnits[] = {
    {"V", eKW_UNIT_LEVEL_V},         {"A", eKW_UNIT_LEVEL_A},  {"W", eKW_UNIT_LEVEL_W},
    {"Ohm", eKW_UNIT_IMPEDANCE_OHM}, {"s", eKW_UNIT_FREQ_SEC}, {"Hz", eKW_UNIT_FREQ_HZ},
};

// Read by hand: a regular expression that finds no memory answers "no match", which an expression
// would take for a text that is none.

using t_Length = decltype(QString().size());

bool HasOneOf(const QString& text, t_Length at, const char* characters)
{
    return at < text.size() && QLatin1String(characters).contains(text[at]);
}

t_Length EndOfDigits(const QString& text, t_Length at)
{
    while (HasOneOf(text, at, "0123456789"))
    {
        ++at;
    }
    return at;
}

/** Length of the number that the text begins with; 0 where none does. */
t_Length LengthOfNumber(const QString& text)
{
    const t_Length begin = HasOneOf(text, 0, "-") ? 1 : 0;
    t_Length end = EndOfDigits(text, begin);
    if (end == begin)
    {
        return 0;
    }
    end = HasOneOf(text, end, ".") ? EndOfDigits(text, end + 1) : end;
    const t_Length exponent = end + (HasOneOf(text, end + 1, "+-") ? 2 : 1);
    const t_Length exponentEnd = EndOfDigits(text, exponent);
    return HasOneOf(text, end, "eE") && exponentEnd > exponent ? exponentEnd : end;
}

/** Reads the elements of a text one by one. */
class CReader
{
public:
    explicit CReader(const QString& text) : m_rest(text.trimmed()) {}

    bool IsAtEnd() const { return m_rest.isEmpty(); }

    /** Nothing where no element begins. */
    std::optional<t_Element> Next(bool isOperandExpected)
    {
        // After an operand a minus is an operator.
        if (isOperandExpected || !m_rest.startsWith(QLatin1Char('-')))
        {
            const t_Length length = LengthOfNumber(m_rest);
            if (length > 0)
            {
                return Constant(length);
            }
        }
        return Word();
    }

private:
    std::optional<t_Element> Constant(t_Length length)
    {
        t_Element element;
        element.type = eKW_ZEL_MATH_ELEMENT_TYPE_CONSTANT;
        bool isNumber = false;
        element.constant = m_rest.left(length).toDouble(&isNumber);
        m_rest = m_rest.mid(length);
        // Of "sqr" the s is no second.
        if (!m_rest.startsWith(QLatin1String("sqr")))
        {
            element.unit = Unit();
        }
        Skip(0);
        return isNumber && std::isfinite(element.constant) ? std::optional(element) : std::nullopt;
    }

    KW_UNIT Unit()
    {
        for (const t_UnitSymbol& row : kUnits)
        {
            const QLatin1String symbol(row.symbol);
            if (m_rest.startsWith(symbol))
            {
                m_rest = m_rest.mid(symbol.size());
                return row.unit;
            }
        }
        return eKW_UNIT_NONE;
    }

    std::optional<t_Element> Word()
    {
        struct t_Word
        {
            const char* text;
            KW_ZEL_MATH_ELEMENT_TYPE type;
            KW_ZEL_CHANNEL source = eKW_ZEL_CHANNEL_C1;
        };
        constexpr t_Word kWords[] = {
            {"C1", eKW_ZEL_MATH_ELEMENT_TYPE_SOURCE, eKW_ZEL_CHANNEL_C1},
            {"C2", eKW_ZEL_MATH_ELEMENT_TYPE_SOURCE, eKW_ZEL_CHANNEL_C2},
            {"C3", eKW_ZEL_MATH_ELEMENT_TYPE_SOURCE, eKW_ZEL_CHANNEL_C3},
            {"C4", eKW_ZEL_MATH_ELEMENT_TYPE_SOURCE, eKW_ZEL_CHANNEL_C4},
            {"R1", eKW_ZEL_MATH_ELEMENT_TYPE_SOURCE, eKW_ZEL_CHANNEL_R1},
            {"+", eKW_ZEL_MATH_ELEMENT_TYPE_OPERATOR},
            {"-", eKW_ZEL_MATH_ELEMENT_TYPE_OPERATOR},
            {"*", eKW_ZEL_MATH_ELEMENT_TYPE_OPERATOR},
            {"/", eKW_ZEL_MATH_ELEMENT_TYPE_OPERATOR},
            {"abs", eKW_ZEL_MATH_ELEMENT_TYPE_FUNCTION},
            {"sqr", eKW_ZEL_MATH_ELEMENT_TYPE_FUNCTION},
            {"(", eKW_ZEL_MATH_ELEMENT_TYPE_OPEN_BRACKET},
            {")", eKW_ZEL_MATH_ELEMENT_TYPE_CLOSE_BRACKET},
        };
        for (const t_Word& word : kWords)
        {
            const QString text = QString::fromLatin1(word.text);
            if (m_rest.startsWith(text))
            {
                Skip(text.size());
                return t_Element{word.type, word.source, 0.0, eKW_UNIT_NONE, text};
            }
        }
        return std::nullopt;
    }

    template <typename TLength>
    void Skip(TLength length)
    {
        m_rest = m_rest.mid(length).trimmed();
    }

    QString m_rest;
};

bool IsOperandExpectedAfter(const t_Element& element)
{
    return element.type == eKW_ZEL_MATH_ELEMENT_TYPE_OPERATOR ||
           element.type == eKW_ZEL_MATH_ELEMENT_TYPE_OPEN_BRACKET;
}

QString TextOf(const t_Element& element)
{
    if (element.type != eKW_ZEL_MATH_ELEMENT_TYPE_CONSTANT)
    {
        return element.name;
    }
    QString text = KW_NumberToText(element.constant);
    for (const t_UnitSymbol& row : kUnits)
    {
        text += row.unit == element.unit ? QLatin1String(row.symbol) : QLatin1String();
    }
    return text;
}

/** Sum of products of factors, by recursive descent. */
class CUnits
{
public:
    CUnits(const t_Elements& elements, const std::function<KW_UNIT(KW_ZEL_CHANNEL)>& unitOfSource)
        : m_elements(elements), m_unitOfSource(unitOfSource)
    {
    }

    std::optional<KW_UNIT> Whole()
    {
        const std::optional<KW_UNIT> unit = Sum();
        return m_next == m_elements.size() ? unit : std::nullopt;
    }

private:
    std::optional<KW_UNIT> Sum()
    {
        std::optional<KW_UNIT> unit = Product();
        while (unit && (TakeOperator("+") || TakeOperator("-")))
        {
            const std::optional<KW_UNIT> other = Product();
            unit = other ? std::optional(*other == *unit ? *unit : eKW_UNIT_NOT_DEFINED)
                         : std::nullopt;
        }
        return unit;
    }

    std::optional<KW_UNIT> Product()
    {
        std::optional<KW_UNIT> unit = Factor();
        while (unit)
        {
            const bool multiplies = TakeOperator("*");
            if (!multiplies && !TakeOperator("/"))
            {
                break;
            }
            const std::optional<KW_UNIT> other = Factor();
            unit = !other ? std::nullopt
                          : std::optional(multiplies ? NRules::UnitProduct(*unit, *other)
                                                     : NRules::UnitQuotient(*unit, *other));
        }
        return unit;
    }

    std::optional<KW_UNIT> Factor()
    {
        if (TakeOperator("-"))
        {
            return Factor();
        }
        if (m_next == m_elements.size())
        {
            return std::nullopt;
        }
        const t_Element& element = m_elements[m_next];
        switch (element.type)
        {
        case eKW_ZEL_MATH_ELEMENT_TYPE_SOURCE:
            ++m_next;
            return m_unitOfSource(element.source);
        case eKW_ZEL_MATH_ELEMENT_TYPE_CONSTANT:
            ++m_next;
            return element.unit;
        case eKW_ZEL_MATH_ELEMENT_TYPE_FUNCTION:
            ++m_next;
            return FunctionOf(element.name, Bracket());
        default:
            return Bracket();
        }
    }

    std::optional<KW_UNIT> Bracket()
    {
        if (!Take(eKW_ZEL_MATH_ELEMENT_TYPE_OPEN_BRACKET))
        {
            return std::nullopt;
        }
        const std::optional<KW_UNIT> unit = Sum();
        return Take(eKW_ZEL_MATH_ELEMENT_TYPE_CLOSE_BRACKET) ? unit : std::nullopt;
    }

    static std::optional<KW_UNIT> FunctionOf(const QString& name, std::optional<KW_UNIT> argument)
    {
        return argument && name == QLatin1String("sqr")
                   ? std::optional(NRules::UnitProduct(*argument, *argument))
                   : argument;
    }

    bool Take(KW_ZEL_MATH_ELEMENT_TYPE type)
    {
        const bool isNext = m_next < m_elements.size() && m_elements[m_next].type == type;
        m_next += isNext ? 1 : 0;
        return isNext;
    }

    bool TakeOperator(const char* sign)
    {
        return m_next < m_elements.size() && m_elements[m_next].name == QLatin1String(sign) &&
               Take(eKW_ZEL_MATH_ELEMENT_TYPE_OPERATOR);
    }

    const t_Elements& m_elements;
    const std::function<KW_UNIT(KW_ZEL_CHANNEL)>& m_unitOfSource;
    std::size_t m_next = 0;
};
} // namespace

std::optional<t_Elements> NMathExpression::Read(const QString& text)
{
    CReader reader(text);
    t_Elements elements;
    while (!reader.IsAtEnd())
    {
        const bool isOperandExpected = elements.empty() || IsOperandExpectedAfter(elements.back());
        const std::optional<t_Element> element = reader.Next(isOperandExpected);
        if (!element || elements.size() == kMaxElements)
        {
            return std::nullopt;
        }
        elements.push_back(*element);
    }
    return elements;
}

QString NMathExpression::Write(const t_Elements& elements)
{
    QString text;
    // A constant behind a constant, or behind a minus that is no operator between two operands,
    // would become part of it.
    bool mustStandApart = false;
    bool isOperandExpected = true;
    for (const t_Element& element : elements)
    {
        const bool isConstant = element.type == eKW_ZEL_MATH_ELEMENT_TYPE_CONSTANT;
        text += QLatin1String(mustStandApart && isConstant ? " " : "") + TextOf(element);
        mustStandApart = isConstant || (isOperandExpected && element.name == QLatin1String("-"));
        isOperandExpected = IsOperandExpectedAfter(element);
    }
    return text;
}

std::vector<KW_ZEL_CHANNEL> NMathExpression::SourcesOf(const QString& text)
{
    std::vector<KW_ZEL_CHANNEL> sources;
    for (const t_Element& element : Read(text).value_or(t_Elements{}))
    {
        if (element.type == eKW_ZEL_MATH_ELEMENT_TYPE_SOURCE)
        {
            sources.push_back(element.source);
        }
    }
    return sources;
}

std::optional<KW_UNIT>
NMathExpression::UnitOf(const t_Elements& elements,
                        const std::function<KW_UNIT(KW_ZEL_CHANNEL)>& unitOfSource)
{
    return CUnits(elements, unitOfSource).Whole();
}
