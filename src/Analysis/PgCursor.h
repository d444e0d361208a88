// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgCursorBase.h"

#include <array>

enum KW_ZEL_CHANNEL : INT32;

/**
 * The cursors of the time and XY diagrams. Lines stay on the screen: times within the main one,
 * levels within that of their trace. Coupled lines move together, and where one meets the edge both
 * stop (code 1); a screen that moves holds each back by itself, until it lets them return. Readouts
 * in percent or decibel are offered while there is a reference.
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
    /** Times, levels of the traces, levels of the XY diagram's horizontal axis. */
    std::array<t_Pair, 3> Pairs() const;

    /** Trace that the second line reads; that of the first one without a source of its own. */
    KW_ZEL_CHANNEL SecondTrace() const;
    /** While the lines are coupled. */
    KW_ACCEPTANCE MoveCoupled(const CDbPropBase* line);
    /** Leaves the line where it is, without a unit, where the trace has no levels. */
    void LimitLevel(CDbPropNumDouble& line, KW_ZEL_CHANNEL trace);
    void UpdateSources();
    /** After the timebase, which gives times their limits and their step, and the screens of the
        traces. */
    void LimitLines();
    /** Falls back to plain values where there is no reference any more. */
    void UpdateReadout();
    /** Slope and 1/ΔX are invalid while both lines stand at one time, slope and ΔY while the traces
        have no levels, or levels of different units: then these units are not defined. */
    void UpdateDeltas();
    void UpdateUnits(bool hasDifference);
    bool HasLevelDifference() const;
    /** Two divisions from the middle, where the screen lets them. */
    void SetToScreen();
    /** The absolute differences; zero is no reference. */
    void SetAsReference();
};
