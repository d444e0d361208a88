// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgLabelListSettingsBase.h"

/** Label list: counts its labels. */
class CPgLabelListSettings : public CPgLabelListSettingsBase
{
public:
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void OnItemInserted(CDbContainerBase* container, const QString& item) override;
    void OnItemRemoved(CDbContainerBase* container, const QString& item) override;
    void UpdateGroup() override;
};
