// SPDX-License-Identifier: MIT
#include "Analysis/PgMaskSettings.h"

#include "Analysis/PgMask.h"
#include "Rules/ChannelRules.h"

KW_ACCEPTANCE CPgMaskSettings::OnFunction(const CDbFunction* function)
{
    auto* const mask = NRules::Above<CPgMask>(*this);
    if (function == m_pClearMask && mask != nullptr)
    {
        mask->ClearMask();
    }
    return CPgMaskSettingsBase::OnFunction(function);
}

void CPgMaskSettings::UpdateGroup()
{
    NRules::OfferSources(*m_pSource, NRules::eSOURCES_LEVELS);
}

void CPgMaskSettings::OnTreeCreated()
{
    CPgMaskSettingsBase::OnTreeCreated();
    NRules::AddSourceDependency(
        *this, [this] { UpdateGroup(); }, QStringLiteral("MaskSettings/Source"));
}
