// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/MathExpression.h"
#include "Analysis/PgMathematicsBase.h"

enum KW_UNIT : INT32;
enum KW_ZEL_CHANNEL : INT32;

/**
 * The mathematics channel. Its unit follows from operation and sources, or from the expression.
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
    void EndAutoScale();
    void OfferSources();
    void UpdateExpression();
    void UpdateUnit();
    KW_UNIT UnitOfSource(KW_ZEL_CHANNEL channel) const;
    KW_UNIT UnitOfOperation() const;
    KW_UNIT UnitOfExpression() const;

    NMathExpression::t_Element ShownElement() const;
    void ShowSelectedElement();
    KW_ACCEPTANCE InsertElement();
    KW_ACCEPTANCE RemoveElement();
    /** Writes the edited expression and selects the element that so many stand behind, itself
        included. */
    KW_ACCEPTANCE Rewrite(const NMathExpression::t_Elements& elements, UINT32 behind);
    void ClearExpression();
};
