// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

/** A decimal number as it is written: shifting its point and rounding it are exact, where a double
    would take "0.1" and "m" apart into two roundings. Value: ± digits × 10^exponent. */
struct t_Decimal
{
    bool negative = false;
    QByteArray digits; ///< without zeros at either end; empty for zero
    int exponent = 0;  ///< −9999 … 9999

    bool IsWhole() const { return exponent >= 0; }
    /** Power of ten of the first digit; 0 for zero. */
    int GetMagnitude() const;
    /** At most `count` digits; halves away from zero. */
    t_Decimal RoundedTo(int count) const;
    /** "-1500", "0.0015": never an exponent. */
    QString ToPlainText() const;
    /** As plain text where that is short and exact, else with an exponent ("15e-9"): reads back to
        the same number. */
    QString ToText() const;
};

/** Digits with an optional sign, point and exponent; nothing for any other text. */
std::optional<t_Decimal> ReadDecimal(const QString& text);
