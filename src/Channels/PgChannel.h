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
    /** The steps of a write, in this order: each rests on those before it. */
    void UpdateType();
    void UpdateUse();
    /** Limits of scale and offset are those at the connector times the factor; the values follow,
        and come back when they may. */
    void UpdateProbe();
    void UpdateUnits();
    /** Range, top and bottom, and the step of the offset. */
    void UpdateScreen();
    /** Leads the levels below, which do not look up. */
    void LimitLevels();
    /** Position and offset. */
    void ResetPosition();
};
