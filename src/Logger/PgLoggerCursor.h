// SPDX-License-Identifier: MIT
#pragma once

#include "Logger/PgLoggerCursorBase.h"

/** Cursor lines of the logger. The difference that is shown is also what a coupled pair keeps; a
    line that its limit holds back makes the move a warning. */
class CPgLoggerCursor : public CPgLoggerCursorBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void UpdateGroup() override;

private:
    KW_ACCEPTANCE MoveCoupled(const CDbPropBase* property);
    KW_ACCEPTANCE SetToScreen();
    void UpdateZoom();
};
