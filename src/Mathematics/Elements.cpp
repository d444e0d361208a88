// SPDX-License-Identifier: MIT
#include "CommonDatabase/Values/NumberText.h"
#include "Mathematics/MathExpression.h"

#include <cmath>
#include <optional>

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

// Read by hand: a regular expression that finds no memory answers "no match", which an expression
// would take for a text that is none.

using t_Length = decltype(QString().size());

bool HasOneOf(QStringView text, t_Length at, const char* characters)
{
    return at < text.size() && QLatin1String(characters).contains(text[at]);
}

t_Length EndOfDigits(QStringView text, t_Length at)
{
    while (HasOneOf(text, at, "0123456789"))
    {
        ++at;
    }
    return at;
}

/** Length of the number that the text begins with; 0 where none does. */
t_Length LengthOfNumber(QStringView text)
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
    explicit CReader(const QString& text) : m_text(text) { SkipBlanks(); }

    bool IsAtEnd() const { return m_at == m_text.size(); }
    UINT32 Column() const { return static_cast<UINT32>(m_at) + 1; }

    /** Nothing where no element begins: `why` says so. */
    std::optional<KW_MathElement> Next(bool isOperandExpected, QString& why)
    {
        // After an operand a minus is an operator.
        const t_Length length = isOperandExpected || !HasOneOf(m_text, m_at, "-")
                                    ? LengthOfNumber(Rest())
                                    : t_Length{0};
        std::optional<KW_MathElement> element = length > 0 ? Constant(length, why) : Word(why);
        SkipBlanks();
        return element;
    }

private:
    QStringView Rest() const { return QStringView(m_text).mid(m_at); }

    std::optional<KW_MathElement> Constant(t_Length length, QString& why)
    {
        KW_MathElement element;
        element.type = eKW_ZEL_MATH_ELEMENT_TYPE_CONSTANT;
        element.column = Column();
        bool isNumber = false;
        element.constant = m_text.mid(m_at, length).toDouble(&isNumber);
        if (!isNumber || !std::isfinite(element.constant))
        {
            why = QStringLiteral("the number is too large: write one below 1.79e308");
            return std::nullopt;
        }
        m_at += length;
        // Of "sqr" the s is no second.
        element.unit = Rest().startsWith(QLatin1String("sqr")) ? eKW_UNIT_NONE : Unit();
        return element;
    }

    KW_UNIT Unit()
    {
        for (const t_UnitSymbol& row : kUnits)
        {
            const QLatin1String symbol(row.symbol);
            if (Rest().startsWith(symbol))
            {
                m_at += symbol.size();
                return row.unit;
            }
        }
        return eKW_UNIT_NONE;
    }

    std::optional<KW_MathElement> Word(QString& why)
    {
        for (const t_Word& word : kWords)
        {
            const QLatin1String text(word.text);
            if (Rest().startsWith(text))
            {
                const UINT32 column = Column();
                m_at += text.size();
                return KW_MathElement{word.type, word.source, 0.0, eKW_UNIT_NONE, text, column};
            }
        }
        why = QStringLiteral("no element begins with \"%1\": use C1 to C4, R1, numbers with V, A, "
                             "W, Ohm, s or Hz directly behind them, + - * /, brackets, abs() and "
                             "sqr()")
                  .arg(m_text[m_at]);
        return std::nullopt;
    }

    void SkipBlanks()
    {
        while (m_at < m_text.size() && m_text[m_at].isSpace())
        {
            ++m_at;
        }
    }

    const QString& m_text;
    t_Length m_at = 0;
};

bool IsOperandExpectedAfter(const KW_MathElement& element)
{
    return element.type == eKW_ZEL_MATH_ELEMENT_TYPE_OPERATOR ||
           element.type == eKW_ZEL_MATH_ELEMENT_TYPE_OPEN_BRACKET;
}

QString TextOf(const KW_MathElement& element)
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
} // namespace

KW_ACCEPTANCE KW_ReadMathElements(const QString& text, KW_MathElements& elements,
                                  KW_MathError& error)
{
    CReader reader(text);
    KW_MathElements read;
    while (!reader.IsAtEnd())
    {
        error.column = reader.Column();
        if (read.size() == eKW_MATH_ELEMENTS)
        {
            error.text = QStringLiteral("more than 64 elements: shorten the expression");
            return eKW_ACC_TOO_LONG;
        }
        const bool isOperandExpected = read.empty() || IsOperandExpectedAfter(read.back());
        const std::optional<KW_MathElement> element = reader.Next(isOperandExpected, error.text);
        if (!element)
        {
            return eKW_ACC_BAD_TEXT;
        }
        read.push_back(*element);
    }
    elements = std::move(read);
    error = {};
    return eKW_ACC_OK;
}

QString KW_WriteMathElements(const KW_MathElements& elements)
{
    QString text;
    // A constant behind a constant, or behind a minus that is no operator between two operands,
    // would become part of it.
    bool mustStandApart = false;
    bool isOperandExpected = true;
    for (const KW_MathElement& element : elements)
    {
        const bool isConstant = element.type == eKW_ZEL_MATH_ELEMENT_TYPE_CONSTANT;
        text += QLatin1String(mustStandApart && isConstant ? " " : "") + TextOf(element);
        mustStandApart = isConstant || (isOperandExpected && element.name == QLatin1String("-"));
        isOperandExpected = IsOperandExpectedAfter(element);
    }
    return text;
}
