// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgChannelBase.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"

/**
 * One analog input. The input path keeps its range when the probe changes: scale, offset and levels
 * follow the probe's factor, as their limits do, and the picture stays. Scale, position and offset
 * give the levels at the edges of the screen, which limit the channel's levels:
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
    /** As the probe settings have it; the factor in use is that of the probe before until
        UpdateProbe. */
    CZELDatabaseHelperCommon::ProbeSettings Probe() const;
    /** Before the steps below: what the user asked for is the same at the connector. */
    void KeepPicture();
    /** The steps of a write, in this order: each rests on those before it. */
    void UpdateType();
    void UpdateUse();
    /** Limits of scale and offset are those at the connector times the factor. A file may name a
        probe alone: the values then follow the limits, and come back when they may. */
    void UpdateProbe();
    void UpdateUnits();
    /** Range, top and bottom, and the step of the offset. */
    void UpdateScreen();
    /** Leads the levels below, which do not look up. */
    void LimitLevels();
    /** Position and offset. */
    void ResetPosition();
};
