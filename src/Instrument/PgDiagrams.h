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
    bool HasVisibleWindow() const;
    void KeepOneVisible(const CDbPropBase* written);
    /** Diagrams that are shown, in their order. */
    std::vector<CPgDiagramWindow*> Shown() const;
    void SelectVisibleWindow();
    void UpdatePlaces();
    void UpdateOverlay(const std::vector<CPgDiagramWindow*>& shown);
};
