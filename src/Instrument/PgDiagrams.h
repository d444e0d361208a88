// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgDiagramWindow.h"
#include "Instrument/PgDiagramsBase.h"

#include <vector>

enum KW_ZEL_DIAGRAMWINDOW_TYPE : INT32;

/**
 * Where diagrams stand on the screen of 1280 × 800 pixels. Visible diagrams take the places of the
 * layout in the order of the array; the first one's size splits a screen of two. A layout of one
 * shows the active diagram. With fewer diagrams than places, those that are there share the screen:
 * one has it alone, two stand one above the other, a third one gets a row of its own. At least one
 * diagram is visible: the last one can not be switched off (code 1).
 *
 * The diagram of a function that is off has no place, and is not the active one; both come back
 * with the function. Where no diagram is there for XY or spectrum, one without contents is theirs
 * while they are on, and becomes the active one.
 */
class CPgDiagrams : public CPgDiagramsBase
{
public:
    t_Couplings Rules() const override;

private:
    std::vector<CPgDiagramWindow*> Windows() const;
    /** Whether what the diagram shows is on. One without contents has nothing that could be off. */
    bool HasContents(const CPgDiagramWindow& window) const;
    bool CanBeShown(const CPgDiagramWindow& window) const;
    /** Whatever the layout shows of them. */
    bool HasVisibleWindow() const;
    /** `written` is the diagram's own switch: it goes back, and the write is answered with code 1.
     */
    void KeepOneVisible(const CDbPropBase* written);
    /** A layout makes as many diagrams visible as it has places, until the next one is chosen. */
    void FillPlaces();
    /** Whether it shows for now what the user has not given it. */
    static bool IsLent(const CPgDiagramWindow& window);
    /** XY diagram and spectrum have a diagram while they are on. */
    void LendWindows();
    /** Those that were lent to what is off now. */
    void TakeBackWindows();
    /** A diagram without contents, where none is of the one type or the other; nothing where all
        have others. */
    void Lend(KW_ZEL_DIAGRAMWINDOW_TYPE type, KW_ZEL_DIAGRAMWINDOW_TYPE orAlso);
    /** Diagrams that are shown, in their order. */
    std::vector<CPgDiagramWindow*> Shown() const;
    /** The first that can be shown, else the first visible one: there is one. */
    UINT32 FirstUsable() const;
    /** What was never active is no wish. */
    void TakeBackActive();
    /** The active diagram is one that can be shown: the one that is lent, the user's, the present
        one, or the first. A file may leave none visible: then the first one is. */
    void SelectWindow();
    /** For now: the user's choice stands. */
    void Activate(UINT32 window);
    /** Pixels; a diagram that is not shown has no extent. */
    void UpdatePlaces();
    /** The hardware draws the traces of the first time diagram that is shown. */
    void UpdateOverlay(const std::vector<CPgDiagramWindow*>& shown);
};
