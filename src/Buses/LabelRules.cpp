// SPDX-License-Identifier: MIT
#include "Buses/LabelRules.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Nodes/DbPropertyGroup.h"
#include "LabelList/SignalBits.h"
#include "LabelList/SignalValues.h"

#include <algorithm>
#include <vector>

void NRules::DeclareLengths(CDbPropNum<UINT32>& length, const ILabelledBus& bus)
{
    const auto lengths = NLabelBuses::Of(bus.Protocol()).identifierLengths;
    std::vector<UINT32> ordered(lengths.begin(), lengths.end());
    std::sort(ordered.begin(), ordered.end());
    length.DeclareValueList(QVariantList(ordered.begin(), ordered.end()));
    length.DbSetDefault(lengths.front());
}

INT32 NRules::LongestPayload(const ILabelledBus& bus)
{
    return static_cast<INT32>(NSignalBits::kByte * NLabelBuses::Of(bus.Protocol()).longestPayload);
}

std::optional<NRules::t_FrameKey> NRules::KeyOf(UINT32 length, const CDbPropNum<UINT32>& identifier)
{
    return identifier.GetValidity() == eKW_VALIDITY_VALID
               ? std::optional(t_FrameKey{length, identifier.Get()})
               : std::nullopt;
}

std::optional<NRules::t_FrameKey> NRules::KeyOf(const CDbPropEnumIntAccess& type,
                                                const CDbPropNum<UINT32>& identifier)
{
    const double length = type.GetNameInfo().GetNumber(type.GetAsInt()).value_or(0.0);
    return KeyOf(static_cast<UINT32>(length), identifier);
}

NRules::ILabelList& NRules::LabelListAbove(const CDbPropertyGroup& part)
{
    CDbPropertyGroup* group = part.GetParent();
    auto* list = dynamic_cast<ILabelList*>(group);
    while (list == nullptr)
    {
        group = group->GetParent();
        list = dynamic_cast<ILabelList*>(group);
    }
    return *list;
}

void NRules::NameFrame(ILabelList& list, const std::optional<t_FrameKey>& key,
                       const CDbPropBitPattern& data, const t_FrameTexts& texts)
{
    const auto* const label = key ? list.FindLabel(*key) : nullptr;
    const auto text = label != nullptr
                          ? NSignalValues::TextOf(*label, data.Get(), texts.signals.GetMaxLength())
                          : std::nullopt;
    KW_CHECKED(texts.label.DbSet(label != nullptr
                                     ? QString::fromStdString(CLabelListDecoder::NameOf(*label))
                                     : QStringLiteral("")));
    if (text || texts.signals.GetValidity() == eKW_VALIDITY_VALID)
    {
        KW_CHECKED(texts.signals.DbSet(text.value_or(QStringLiteral(""))));
        KW_CHECKED(texts.signals.SetValidity(text ? eKW_VALIDITY_VALID : eKW_VALIDITY_INVALID));
    }
}
