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
    /** A client moved a number of a cursor: a coupled partner follows by the same difference, and
        where it meets its limit both stop. */
    KW_ACCEPTANCE MoveCoupled(const CDbPropBase* written);
    /** Reports the limit as a warning, as all that the spectrum bounds. */
    static KW_ACCEPTANCE Move(CDbPropNumDouble& moved, CDbPropNumDouble& partner,
                              double difference);
    void UpdateDifferences();
    void UpdateLines();
    void SetToScreen();
};
