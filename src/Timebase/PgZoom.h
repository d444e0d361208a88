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
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void UpdateGroup() override;
    void OnTreeCreated() override;

private:
    void LimitScale();
    void FollowCursors();
    void LimitPosition();
    void UpdateResults();
};
