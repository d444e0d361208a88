// SPDX-License-Identifier: MIT
#pragma once

#include "Spectrum/PgSpectrumMarkersBase.h"

/** The markers and their reference. The relative values of a marker are valid while the reference
    marker is shown. Searching lines needs a trace: whoever has it carries those actions out. */
class CPgSpectrumMarkers : public CPgSpectrumMarkersBase
{
public:
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void UpdateGroup() override;
    void OnTreeCreated() override;
    void OnItemInserted(CDbContainerBase* container, const QString& item) override;

private:
    /** eKW_ACC_NOTHING_TO_ACT_ON when no marker is selected. */
    KW_ACCEPTANCE SetReference();
};
