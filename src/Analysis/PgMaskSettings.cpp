// SPDX-License-Identifier: MIT
#include "Analysis/PgMaskSettings.h"

#include "Analysis/MaskExchange.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "LockManager.h"
#include "Names/MaskSettings.h"
#include "Rules/ChannelRules.h"

using namespace NNames;

t_Couplings CPgMaskSettings::Rules() const
{
    static constexpr auto sources = Derive<&CPgMaskSettings::OfferSources>;
    static constexpr auto rows =
        Table<Names>(NRules::kSwitched >> sources, NRules::kMathematicsScreen >> sources);
    return rows;
}

std::optional<KW_ACCEPTANCE> CPgMaskSettings::OnFileFunction(const CDbFunction* function)
{
    if (function == m_pLoad)
    {
        return NMaskExchange::Load(*this);
    }
    if (function == m_pSave)
    {
        return NMaskExchange::Save(*this);
    }
    if (function == m_pCreateMask)
    {
        return NMaskExchange::Create(*this, GetSource().get());
    }
    return CPgMaskSettingsBase::OnFileFunction(function);
}

std::shared_ptr<IMaskSource> CPgMaskSettings::GetSource() const
{
    const CLockGuard lock(eACCESS_READ);
    return m_source.lock();
}

void CPgMaskSettings::SetSource(const std::weak_ptr<IMaskSource>& source)
{
    const CLockGuard lock;
    m_source = source;
}

void CPgMaskSettings::OfferSources()
{
    NRules::OfferSources(*m_pSource, NRules::eSOURCES_LEVELS);
}
