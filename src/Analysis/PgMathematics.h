// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgMathematicsBase.h"
#include "Mathematics/MathExpression.h"

enum KW_UNIT : INT32;
enum KW_ZEL_CHANNEL : INT32;

/**
 * The mathematics channel. Its unit follows from operation and sources, or from the expression; it
 * is invalid, and the channel is no source, while one of the sources is off.
 * The element properties show the selected element, until they are written: then they are what
 * InsertElement inserts. Editing is refused with eKW_ACC_BAD_TEXT while the expression's text holds
 * anything but elements, with eKW_ACC_CONTAINER_FULL or eKW_ACC_TOO_LONG when it grows too long. A
 * scale or position of the user's own ends the automatic one.
 */
class CPgMathematics : public CPgMathematicsBase
{
public:
    t_Couplings Rules() const override;

private:
    /** The user's scale or position, also where it is the one that was found. */
    void EndAutoScale();
    void OfferSources();
    /** Valid is what can be computed; the selection may stand one place behind the last element. */
    void UpdateExpression();
    void UpdateUnit();
    /** "None" where a channel has no levels. */
    KW_UNIT UnitOfSource(KW_ZEL_CHANNEL channel) const;
    /** "Not defined" where the catalogue has no unit, as for the expression. */
    KW_UNIT UnitOfOperation() const;
    KW_UNIT UnitOfExpression() const;

    /** What the element properties say, selected or not. */
    KW_MathElement ShownElement() const;
    /** Type "none" behind the last element; properties of other types keep their values. */
    void ShowSelectedElement();
    /** In front of the selected element; eKW_ACC_NOTHING_TO_ACT_ON for type "none". */
    KW_ACCEPTANCE InsertElement();
    /** eKW_ACC_NOTHING_TO_ACT_ON behind the last element. */
    KW_ACCEPTANCE RemoveElement();
    /** Writes the edited expression and selects the element that so many stand behind, itself
        included. */
    KW_ACCEPTANCE Rewrite(const KW_MathElements& elements, UINT32 behind);
    void ClearExpression();
};
