// SPDX-License-Identifier: MIT
#include "Decimal.h"
#include "KWEnumerationsUnits.h"
#include "KWTexts.h"
#include "NumberText.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>

namespace
{
constexpr int kShownDigits = 9;

struct t_Prefix
{
    char16_t sign;
    int exponent;
};

constexpr std::array<t_Prefix, 11> kPrefixes{{{u'f', -15},
                                              {u'p', -12},
                                              {u'n', -9},
                                              {u'µ', -6},
                                              {u'u', -6},
                                              {u'm', -3},
                                              {u'\0', 0},
                                              {u'k', 3},
                                              {u'M', 6},
                                              {u'G', 9},
                                              {u'T', 12}}};

/** How numbers of a unit are written. */
struct t_Notation
{
    QString base;          ///< unit text behind the prefix
    int exponent = 0;      ///< power of ten from the unit to `base`
    bool prefixed = false; ///< whether large and small numbers are shown with a prefix
};

/** Units that are multiples of another: "20 mV" is read and shown the same in V and in mV. */
t_Notation GetMultiple(KW_UNIT unit)
{
    switch (unit)
    {
    case eKW_UNIT_LEVEL_MILLI_W:
        return {QStringLiteral("W"), -3, true};
    case eKW_UNIT_LEVEL_MILLI_V:
        return {QStringLiteral("V"), -3, true};
    case eKW_UNIT_LEVEL_MIKRO_V:
        return {QStringLiteral("V"), -6, true};
    case eKW_UNIT_FREQ_MEGA_SYMB_S:
        return {QStringLiteral("sym/s"), 6, true};
    case eKW_UNIT_FREQ_MBIT_S:
        return {QStringLiteral("bit/s"), 6, true};
    default:
        return {};
    }
}

bool TakesPrefix(KW_UNIT unit)
{
    static constexpr std::array kPrefixed{
        eKW_UNIT_LEVEL_W,
        eKW_UNIT_LEVEL_W_HZ,
        eKW_UNIT_LEVEL_JOULE,
        eKW_UNIT_LEVEL_V_PER_S,
        eKW_UNIT_LEVEL_A_PER_S,
        eKW_UNIT_LEVEL_V,
        eKW_UNIT_LEVEL_V_SQRT_HZ,
        eKW_UNIT_LEVEL_A,
        eKW_UNIT_LEVEL_A_SQRT_HZ,
        eKW_UNIT_FIELD_HENRY,
        eKW_UNIT_FIELD_FARAD,
        eKW_UNIT_IMPEDANCE_OHM,
        eKW_UNIT_IMPEDANCE_SIEMENS,
        eKW_UNIT_FREQ_SEC,
        eKW_UNIT_FREQ_HZ,
        eKW_UNIT_SIZE_M,
        eKW_UNIT_ANGLE_RAD,
        eKW_UNIT_FREQ_SYMB_S,
        eKW_UNIT_FREQ_BIT_S,
        eKW_UNIT_FREQ_S_DIV,
        eKW_UNIT_FREQ_HZ_DIV,
        eKW_UNIT_LEVEL_V_DIV,
        eKW_UNIT_LEVEL_A_DIV,
        eKW_UNIT_SAMPLES,
        eKW_UNIT_SAMPLES_S,
        eKW_UNIT_BAUD,
        eKW_UNIT_V_S,
        eKW_UNIT_A_S,
        eKW_UNIT_LEVEL_W_DIV,
        eKW_UNIT_LEVEL_A_V,
        eKW_UNIT_LEVEL_W_V,
        eKW_UNIT_BYTES,
        eKW_UNIT_LEVEL_V_A,
        eKW_UNIT_LEVEL_V_W,
        eKW_UNIT_LEVEL_VA,
        eKW_UNIT_FREQ_HZ_SAMPLE,
        eKW_UNIT_METER_V,
        eKW_UNIT_METER_A,
        eKW_UNIT_METER_OHM,
    };
    return std::find(kPrefixed.begin(), kPrefixed.end(), unit) != kPrefixed.end();
}

t_Notation GetNotation(KW_UNIT unit)
{
    const t_Notation multiple = GetMultiple(unit);
    return multiple.base.isEmpty() ? t_Notation{KW_GetUnitText(unit), 0, TakesPrefix(unit)}
                                   : multiple;
}

/** Signs that look the same or that keyboards lack. */
QString Unified(QString unit)
{
    unit.replace(QChar(0x03BC), QChar(0x00B5));
    unit.replace(QChar(0x2126), QChar(0x03A9));
    unit.replace(QLatin1String("ohm"), QStringLiteral("Ω"), Qt::CaseInsensitive);
    unit.replace(QLatin1String("deg"), QStringLiteral("°"));
    return unit;
}

/** Power of ten that a written unit stands for; nothing when it is another quantity's. */
std::optional<int> MatchUnit(const QString& written, KW_UNIT unit)
{
    if (written.isEmpty() || written == KW_GetUnitText(unit))
    {
        return 0;
    }
    const t_Notation notation = GetNotation(unit);
    for (const t_Prefix& prefix : kPrefixes)
    {
        const QString sign = prefix.exponent == 0 ? QString() : QString(QChar(prefix.sign));
        if (written == sign)
        {
            return prefix.exponent;
        }
        if (!notation.base.isEmpty() && written == sign + notation.base)
        {
            return prefix.exponent - notation.exponent;
        }
    }
    return std::nullopt;
}

/** The same; a scale is per division whether that is typed or not. */
std::optional<int> GetExponent(const QString& written, KW_UNIT unit)
{
    const auto exponent = MatchUnit(written, unit);
    return exponent ? exponent : MatchUnit(written + QLatin1String("/div"), unit);
}

QString Join(const QString& number, const QString& unit)
{
    return unit.isEmpty() ? number : number + QLatin1Char(' ') + unit;
}

QString FormatRounded(const QString& exactText, KW_UNIT unit)
{
    const t_Notation notation = GetNotation(unit);
    const auto exact = notation.base.isEmpty() ? std::nullopt : ReadDecimal(exactText);
    if (!exact)
    {
        return Join(exactText, notation.base);
    }
    t_Decimal number = exact->RoundedTo(kShownDigits);
    if (!notation.prefixed)
    {
        return Join(exact->IsWhole() ? exactText : number.ToText(), notation.base);
    }
    number.exponent += number.digits.isEmpty() ? 0 : notation.exponent;
    const int magnitude = number.GetMagnitude();
    for (auto prefix = kPrefixes.rbegin(); prefix != kPrefixes.rend(); ++prefix)
    {
        if (magnitude >= prefix->exponent && magnitude < prefix->exponent + 3)
        {
            number.exponent -= prefix->exponent;
            const QString sign = prefix->exponent == 0 ? QString() : QString(QChar(prefix->sign));
            const QString shown = sign == QLatin1String("u") ? QStringLiteral("µ") : sign;
            return Join(number.ToPlainText(), shown + notation.base);
        }
    }
    return Join(exactText, KW_GetUnitText(unit));
}

/** A number with its prefix and unit; nothing for any other text. */
std::optional<t_Decimal> ReadQuantity(QString text, KW_UNIT unit)
{
    static const QRegularExpression form(
        QStringLiteral("^([+-]?[0-9.]+(?:[eE][+-]?[0-9]+)?)\\s*(.*)$"));
    text.replace(QChar(0x2212), QLatin1Char('-'));
    const QRegularExpressionMatch match = form.match(text.trimmed());
    auto number = ReadDecimal(match.captured(1));
    const auto exponent = number ? GetExponent(Unified(match.captured(2)), unit) : std::nullopt;
    if (!exponent)
    {
        return std::nullopt;
    }
    number->exponent += number->digits.isEmpty() ? 0 : *exponent;
    return number;
}
} // namespace

QString KW_GetUnitText(KW_UNIT unit)
{
    return unit == eKW_UNIT_NOT_DEFINED ? QString()
                                        : GetStaticEnumNameInfo<KW_UNIT>().GetName(unit);
}

QString KW_FormatNumber(const QString& number, KW_UNIT unit, bool exact)
{
    return exact ? Join(number, KW_GetUnitText(unit)) : FormatRounded(number, unit);
}

QString KW_FormatNumber(double number, KW_UNIT unit, bool exact)
{
    return KW_FormatNumber(KW_NumberToText(number), unit, exact);
}

KW_ACCEPTANCE KW_ParseNumber(const QString& text, KW_UNIT unit, QString& number)
{
    const QString special = text.trimmed().toLower();
    if (special == QLatin1String("nan") || special == QLatin1String("inf") ||
        special == QLatin1String("-inf"))
    {
        number = special;
        return eKW_ACC_OK;
    }
    const auto read = ReadQuantity(text, unit);
    if (!read)
    {
        return eKW_ACC_BAD_TEXT;
    }
    number = read->ToText();
    return eKW_ACC_OK;
}

KW_ACCEPTANCE KW_ParseNumber(const QString& text, KW_UNIT unit, double& number)
{
    QString plain;
    const KW_ACCEPTANCE code = KW_ParseNumber(text, unit, plain);
    if (KW_IsAccepted(code))
    {
        number = plain.toDouble();
    }
    return code;
}
