// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsChannels.h"
#include "KWEnumerationsMathematics.h"
#include "KWEnumerationsUnits.h"

#include <QString>
#include <functional>
#include <optional>
#include <vector>

/**
 * Expressions of the mathematics channel: C1 to C4 and R1, constants, + - * /, brackets, abs() and
 * sqr(). A constant may carry one of the units V, A, W, Ohm, s and Hz: "2.5V". A minus at the
 * begin, after an operator or after an open bracket is the sign of the constant that follows;
 * before anything else it is an operator that needs no left side. Blanks between elements mean
 * nothing. Stateless.
 */
namespace NMathExpression
{
constexpr std::size_t kMaxElements = 64;

/** One element; which fields count depends on the type. */
struct t_Element
{
    KW_ZEL_MATH_ELEMENT_TYPE type = eKW_ZEL_MATH_ELEMENT_TYPE_NONE;
    KW_ZEL_CHANNEL source = eKW_ZEL_CHANNEL_C1;
    double constant = 0.0; ///< with its sign
    KW_UNIT unit = eKW_UNIT_NONE;
    QString name; ///< sign of an operator, name of a function
};

using t_Elements = std::vector<t_Element>;

/** Nothing where the text holds anything but elements, or more than kMaxElements of them. Their
    order is not checked: an expression that is being edited can be incomplete. */
std::optional<t_Elements> Read(const QString& text);

/** A text that reads back to the elements; a negative constant behind an operand reads back as an
    operator and a constant. */
QString Write(const t_Elements& elements);

/** The channels that an expression names; none where the text can not be read. */
std::vector<KW_ZEL_CHANNEL> SourcesOf(const QString& text);

/** Unit of the value; "not defined" (64) where the catalogue has none, or where quantities of
    different units are added. Nothing where the expression can not be computed. */
std::optional<KW_UNIT> UnitOf(const t_Elements& elements,
                              const std::function<KW_UNIT(KW_ZEL_CHANNEL)>& unitOfSource);
} // namespace NMathExpression
