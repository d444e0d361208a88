// SPDX-License-Identifier: MIT
#pragma once

#include "Spectrum/PgSpectrumCursorsBase.h"

/** The pair of cursors, in the steps and the unit of the screen. The differences that it shows are
 * also what a coupled pair keeps. */
class CPgSpectrumCursors : public CPgSpectrumCursorsBase
{
public:
    t_Couplings Rules() const override;

private:
    /** A client moved a number of a cursor: a coupled partner follows by the same difference, as
        far as its limits let it, which is reported as a warning. */
    void MovePartner(const CDbPropBase* written);
    void UpdateDifferences();
    void UpdateLines();
    void SetToScreen();
};
