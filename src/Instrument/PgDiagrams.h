// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgDiagramWindow.h"
#include "Instrument/PgDiagramsBase.h"

#include <vector>

/**
 * Where diagrams stand on the screen of 1280 × 800 pixels. Visible diagrams take the places of the
 * layout in the order of the array; the first one's size splits a screen of two. A layout of one
 * shows the active diagram. With fewer diagrams than places, those that are there share the screen:
 * one has it alone, two stand one above the other, a third one gets a row of its own. At least one
 * diagram is visible: the last one can not be switched off (code 1).
 */
class CPgDiagrams : public CPgDiagramsBase
{
public:
    t_Couplings Rules() const override;

private:
    /** Whatever the layout shows of them. */
    bool HasVisibleWindow() const;
    /** `written` is the diagram's own switch: it goes back, and the write is answered with code 1.
     */
    void KeepOneVisible(const CDbPropBase* written);
    /** Diagrams that are shown, in their order. */
    std::vector<CPgDiagramWindow*> Shown() const;
    /** The active diagram is a visible one. A file may leave none visible: then the first one is.
     */
    void SelectVisibleWindow();
    /** Pixels; a diagram that is not shown has no extent. */
    void UpdatePlaces();
    /** The hardware draws the traces of the first time diagram that is shown. */
    void UpdateOverlay(const std::vector<CPgDiagramWindow*>& shown);
};
