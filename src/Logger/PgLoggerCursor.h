// SPDX-License-Identifier: MIT
#pragma once

#include "Logger/PgLoggerCursorBase.h"

/** Cursor lines of the logger. The difference that is shown is also what a coupled pair keeps:
    where one line meets its limit both stop, and the move is a warning. */
class CPgLoggerCursor : public CPgLoggerCursorBase
{
public:
    t_Couplings Rules() const override;

private:
    KW_ACCEPTANCE MoveCoupled(const CDbPropBase* written);
    KW_ACCEPTANCE SetToScreen();
    void ShowDifference();
};
