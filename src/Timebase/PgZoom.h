// SPDX-License-Identifier: MIT
#pragma once

#include "Timebase/PgZoomBase.h"

/**
 * The zoom: a stretch of the record over the width of the screen. Its scale is never slower than
 * the main one nor more than 100 000 times finer; it stays within the record. Coupled to the
 * cursors it shows what lies between them, until the user writes its scale or position.
 *
 * Formulas: CZELDatabaseHelperHorizontal.
 */
class CPgZoom : public CPgZoomBase
{
public:
    t_Couplings Rules() const override;

private:
    /** The user's scale or position. */
    void EndCoupling();
    /** eKW_ACC_WARNING where the record does not reach so far. */
    KW_ACCEPTANCE CenterOnTrigger();
    /** The steps of the derivation, in this order: the cursors move the scale within its limits,
        and the position follows both. */
    void LimitScale();
    void FollowCursors();
    void LimitPosition();
    /** Edges, factor, points and their interpolation. */
    void UpdateResults();
};
