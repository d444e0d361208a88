// SPDX-License-Identifier: MIT
#pragma once

#include "KWAcceptance.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsMathematics.h"
#include "KWEnumerationsUnits.h"

#include <QString>
#include <memory>
#include <span>
#include <vector>

/**
 * Expressions of the mathematics channel: C1 to C4 and R1, constants, + - * /, brackets, abs() and
 * sqr(). A constant may carry one of the units V, A, W, Ohm, s and Hz: "2.5V". A minus at the
 * begin, after an operator or after an open bracket is the sign of the constant that follows;
 * before anything else it is an operator that needs no left side. Blanks between elements mean
 * nothing. Nothing here needs a tree; all may be called from any thread.
 */

/** Bounds of expressions. */
enum KW_MATH_BOUND : UINT32
{
    eKW_MATH_ELEMENTS = 64, ///< elements of an expression
    eKW_MATH_CHANNELS = 6,  ///< numbers of channels from C1 to R1; that of M1 counts for nothing
};

/** One element; which fields count depends on the type. */
struct KW_MathElement
{
    KW_ZEL_MATH_ELEMENT_TYPE type = eKW_ZEL_MATH_ELEMENT_TYPE_NONE; ///< what it is
    KW_ZEL_CHANNEL source = eKW_ZEL_CHANNEL_C1;                     ///< of a source
    double constant = 0.0;        ///< of a constant, with its sign
    KW_UNIT unit = eKW_UNIT_NONE; ///< of a constant
    QString name;                 ///< as it is written; constants have none
    UINT32 column = 0;            ///< where it begins, from 1; 0: not read from a text
};

using KW_MathElements = std::vector<KW_MathElement>;

/** Why an expression can not be computed. */
struct KW_MathError
{
    UINT32 column = 0; ///< from 1, in characters; one behind the text where something is missing
    QString text;      ///< what is wrong there, and what to do
};

/**
 * Reads the elements of a text. Their order is not looked at: an expression that is being edited
 * can be incomplete. A refusal leaves `elements` as they were.
 *
 * @return eKW_ACC_BAD_TEXT where no element begins or for a number that a double does not hold,
 *         eKW_ACC_TOO_LONG for more than 64 elements; `error` says where
 */
KW_EXPORT KW_ACCEPTANCE KW_ReadMathElements(const QString& text, KW_MathElements& elements,
                                            KW_MathError& error);

/** A text that reads back to the elements; a negative constant behind an operand reads back as an
    operator and a constant. */
KW_EXPORT QString KW_WriteMathElements(const KW_MathElements& elements);

namespace NMathematics
{
struct t_Program;
}

/** An expression that can be computed, or none. A value: copies share what the text was read to. */
class KW_EXPORT CKWMathExpression
{
public:
    /** None. */
    CKWMathExpression();
    /** Copies share what was read. */
    ///@{
    CKWMathExpression(const CKWMathExpression& other);
    CKWMathExpression& operator=(const CKWMathExpression& other);
    ///@}
    ~CKWMathExpression();

    /** Becomes the expression of a text, or stays as it is. The codes of KW_ReadMathElements, and
        eKW_ACC_BAD_TEXT for elements in an order that can not be computed, or none. */
    KW_ACCEPTANCE Read(const QString& text, KW_MathError& error);

    /** False: no expression. */
    explicit operator bool() const { return m_program != nullptr; }

    /** In the order of the text; empty without an expression. */
    KW_MathElements GetElements() const;
    /** Channels that it names, each once, in the order of the text. */
    std::vector<KW_ZEL_CHANNEL> GetSources() const;

    /** Unit of the result. "Not defined" where the catalogue of units has none, where quantities of
        different units are added, and without an expression.
        @param units of the channels, by their number */
    KW_UNIT GetUnit(std::span<const KW_UNIT, eKW_MATH_CHANNELS> units) const;

    /** The result; NaN where a step has none: dividing by 0, a number beyond what a double holds,
        a channel that is NaN.
        @param values of the channels, by their number */
    double Evaluate(std::span<const double, eKW_MATH_CHANNELS> values) const;

    struct t_Access; ///< of the library's own

private:
    std::shared_ptr<const NMathematics::t_Program> m_program;
};
