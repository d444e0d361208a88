// SPDX-License-Identifier: MIT
#include "Buses/PgLabelListSettings.h"

#include "Buses/LabelExchange.h"
#include "Buses/PgmSerialBusLabelItem.h"
#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsOnOff.h"
#include "LabelList/LabelList.h"
#include "Names/LabelListSettings.h"
#include "Rules/NumberRules.h"

#include <unordered_map>

using namespace NNames;

namespace
{
UINT64 Packed(const NRules::t_FrameKey& key)
{
    return UINT64{key.length} << 32U | key.identifier;
}

template <typename TVisit>
void VisitLabels(const CDbPropertyGroup& labels, TVisit visit)
{
    labels.VisitItems([&visit](CDbPropertyGroup& item)
                      { visit(static_cast<CPgSerialBusLabelItem&>(item)); });
}
} // namespace

t_Couplings CPgLabelListSettings::Rules() const
{
    using L = CPgLabelListSettings;
    static constexpr auto rows =
        Table<Names>(On(Names::Clear) >> Do<&L::Clear>, On(Names::Enabled) >> Do<&L::CountChange>,
                     Items(Names::SerialBusLabelItem) >> Derive<&L::CountLabels>,
                     Items(Names::SerialBusLabelItem) >> Do<&L::CountChange>,
                     Changed(Names::NumberOfLabels) >> Derive<&L::KeepAllApart>);
    return rows;
}

std::optional<KW_ACCEPTANCE> CPgLabelListSettings::OnFileFunction(const CDbFunction* function)
{
    if (function == m_pLoad)
    {
        return NLabelExchange::Load(*this);
    }
    if (function == m_pSave)
    {
        return NLabelExchange::Save(*this);
    }
    return CPgLabelListSettingsBase::OnFileFunction(function);
}

void CPgLabelListSettings::Clear()
{
    for (const QString& name : m_pSerialBusLabelItem->GetNames())
    {
        KW_CHECKED(m_pSerialBusLabelItem->ProcessRemove(name));
    }
}

void CPgLabelListSettings::CountLabels()
{
    KW_CHECKED(m_pNumberOfLabels->DbSet(static_cast<UINT32>(m_pSerialBusLabelItem->GetCount())));
}

void CPgLabelListSettings::CountChange()
{
    KW_CHECKED(m_pRevision->DbSet(m_pRevision->Get() + 1U));
}

void CPgLabelListSettings::KeepApart(const CDbPropertyGroup* written)
{
    std::unordered_map<UINT64, const CPgSerialBusLabelItem*> owners;
    const auto own = [&owners](const CPgSerialBusLabelItem& label, bool isOwner)
    {
        if (isOwner)
        {
            owners.emplace(Packed(label.Key()), &label);
        }
    };
    VisitLabels(*m_pSerialBusLabelItem, [&own, written](const auto& label)
                { own(label, label.IsOn() && &label != written); });
    VisitLabels(*m_pSerialBusLabelItem,
                [&own](const auto& label) { own(label, label.IsWanted()); });
    VisitLabels(*m_pSerialBusLabelItem,
                [&owners](CPgSerialBusLabelItem& label)
                {
                    const auto owner = owners.find(Packed(label.Key()));
                    label.LetMatch(owner == owners.end() || owner->second == &label);
                });
}

void CPgLabelListSettings::FitToBus()
{
    // Labels fit their signals themselves.
    VisitLabels(*m_pSerialBusLabelItem, [](CPgSerialBusLabelItem& label) { label.UpdateGroup(); });
    CountChange();
}

const NRules::ILabelledBus& CPgLabelListSettings::Bus() const
{
    return dynamic_cast<const NRules::ILabelledBus&>(*GetParent());
}

const CLabelListDecoder::t_Message* CPgLabelListSettings::FindLabel(const NRules::t_FrameKey& key)
{
    if (m_pEnabled->Get() == eKW_ONOFF_OFF)
    {
        return nullptr;
    }
    long long change = m_compiledChange;
    if (HasChanged(change))
    {
        Compile();
        m_compiledChange = change;
    }
    return m_decoder->Find(key.length, key.identifier);
}

void CPgLabelListSettings::Compile()
{
    KW_LabelList list;
    list.protocol = Bus().Protocol();
    VisitLabels(*m_pSerialBusLabelItem,
                [&list](const CPgSerialBusLabelItem& label)
                {
                    if (label.IsOn())
                    {
                        list.messages.push_back(label.Message());
                        // Results have signals by their start bits, wherever they stand in the
                        // list.
                        list.messages.back().details.signalsInOrder.clear();
                    }
                });
    m_decoder.emplace(list);
}
