// SPDX-License-Identifier: MIT
#include "Decimal.h"

#include <QRegularExpression>
#include <algorithm>

namespace
{
constexpr int kLargestExponent = 9999;
constexpr int kLongestPlainText = 40;

void Normalise(t_Decimal& number)
{
    while (number.digits.startsWith('0'))
    {
        number.digits.remove(0, 1);
    }
    while (number.digits.endsWith('0'))
    {
        number.digits.chop(1);
        ++number.exponent;
    }
    if (number.digits.isEmpty())
    {
        number.negative = false;
        number.exponent = 0;
    }
    number.exponent = std::clamp(number.exponent, -kLargestExponent, kLargestExponent);
}

int SizeOf(const QByteArray& digits)
{
    return static_cast<int>(digits.size());
}
} // namespace

int t_Decimal::GetMagnitude() const
{
    return digits.isEmpty() ? 0 : SizeOf(digits) + exponent - 1;
}

t_Decimal t_Decimal::RoundedTo(int count) const
{
    t_Decimal rounded = *this;
    if (SizeOf(digits) <= count)
    {
        return rounded;
    }
    rounded.exponent += SizeOf(digits) - count;
    rounded.digits = '0' + digits.left(count);
    int carry = digits[count] >= '5' ? 1 : 0;
    for (int i = count; carry > 0; --i)
    {
        const bool overflow = rounded.digits[i] == '9';
        rounded.digits[i] = overflow ? '0' : static_cast<char>(rounded.digits[i] + 1);
        carry = overflow ? 1 : 0;
    }
    Normalise(rounded);
    return rounded;
}

QString t_Decimal::ToPlainText() const
{
    QByteArray text = digits.isEmpty() ? QByteArray("0") : digits;
    if (exponent >= 0)
    {
        text += QByteArray(exponent, '0');
    }
    else
    {
        const int missing = std::max(0, 1 - exponent - SizeOf(text));
        text.prepend(QByteArray(missing, '0'));
        text.insert(text.size() + exponent, '.');
    }
    return QString::fromLatin1(negative ? '-' + text : text);
}

QString t_Decimal::ToText() const
{
    if (std::max(GetMagnitude(), -exponent) < kLongestPlainText)
    {
        return ToPlainText();
    }
    return QString::fromLatin1((negative ? "-" : "") + digits + 'e' + QByteArray::number(exponent));
}

std::optional<t_Decimal> ReadDecimal(const QString& text)
{
    static const QRegularExpression form(
        QStringLiteral("^([+-]?)(?=[0-9.]*[0-9])([0-9]*)(?:[.]([0-9]*))?(?:[eE]([+-]?[0-9]+))?$"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
    {
        return std::nullopt;
    }
    t_Decimal number;
    number.negative = match.captured(1) == QLatin1String("-");
    number.digits = (match.captured(2) + match.captured(3)).toLatin1();
    const QString exponent = match.captured(4);
    bool fits = true;
    const int written = exponent.isEmpty() ? 0 : exponent.toInt(&fits);
    const int limit = exponent.startsWith(QLatin1Char('-')) ? -kLargestExponent : kLargestExponent;
    number.exponent = (fits ? std::clamp(written, -kLargestExponent, kLargestExponent) : limit) -
                      static_cast<int>(match.captured(3).size());
    Normalise(number);
    return number;
}
