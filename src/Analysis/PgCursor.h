// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgCursorBase.h"

#include <array>

enum KW_ZEL_CHANNEL : INT32;

/**
 * The cursors of the time and XY diagrams. Lines stay on the screen: times within the main one,
 * levels within that of their trace. Coupled lines move together, as far as the screen lets the
 * partner (code 1 otherwise). Readouts in percent or decibel are offered while there is a
 * reference.
 */
class CPgCursor : public CPgCursorBase
{
public:
    t_Couplings Rules() const override;

private:
    /** A pair of lines, and second minus first. */
    struct t_Pair
    {
        CDbPropNumDouble* first;
        CDbPropNumDouble* second;
        CDbPropNumDouble* delta;
    };
    std::array<t_Pair, 3> Pairs() const;

    KW_ZEL_CHANNEL SecondTrace() const;
    /** While the lines are coupled. */
    KW_ACCEPTANCE MovePartnerOf(const CDbPropBase* line);
    void LimitLevel(CDbPropNumDouble& line, KW_ZEL_CHANNEL trace);
    void UpdateSources();
    void LimitLines();
    void UpdateReadout();
    void UpdateDeltas();
    void UpdateUnits();
    void SetToScreen();
    void SetAsReference();
};
