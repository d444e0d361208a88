// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgChannelBase.h"

/**
 * One analog input. The probe's factor moves the limits of scale and offset; scale, position and
 * offset give the levels at the edges of the screen, which limit the channel's levels:
 *
 *     top = offset − (position − 4) × scale, bottom = top − 8 × scale.
 *
 * Formulas: CZELDatabaseHelperVertical, CZELDatabaseHelperCommon. Figures: VerticalHardware.h.
 */
class CPgChannel : public CPgChannelBase
{
public:
    using CPgChannelBase::CPgChannelBase;

    t_Couplings Rules() const override;

private:
    void UpdateType();
    void UpdateUse();
    void UpdateProbe();
    void UpdateUnits();
    void UpdateScreen();
    void LimitLevels();
    void ResetPosition();
};
