// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgReferenceCurveBase.h"

/** The stored trace. Its own scales are the user's; how it was taken stands in its attributes. */
class CPgReferenceCurve : public CPgReferenceCurveBase
{
public:
    t_Couplings Rules() const override;

private:
    void InvalidateAttributes();
    bool IsEmpty() const;
    /** An empty curve is not on, and no source; it comes on again when there is one. */
    void OfferCurve();
    void OfferSources();
    void UpdateUnits();
    KW_ACCEPTANCE SetToOriginal();
    KW_ACCEPTANCE Clear();
};
