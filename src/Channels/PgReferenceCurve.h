// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgReferenceCurveBase.h"

/** The stored trace. Its own scales are the user's; how it was taken stands in its attributes. */
class CPgReferenceCurve : public CPgReferenceCurveBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void UpdateGroup() override;
    void OnTreeCreated() override;

private:
    KW_ACCEPTANCE SetToOriginal();
    KW_ACCEPTANCE Clear();
};
