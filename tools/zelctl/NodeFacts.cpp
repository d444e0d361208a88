// SPDX-License-Identifier: MIT
#include "NodeFacts.h"

#include "IKWProperties.h"
#include "LivingNodes.h"
#include "PropertyLengths.h"

namespace
{
/** Null for a node of this process. */
const COrderedJson* FactsOf(const IDbObject& node)
{
    const auto* const living = dynamic_cast<const CLivingNode*>(&node);
    return living != nullptr ? &living->Facts() : nullptr;
}

std::shared_ptr<IKWPropertyBase> HandleOf(const IDbProperty& property)
{
    return const_cast<IDbProperty&>(property).GetHandle();
}
} // namespace

QString GetMeaning(const IDbObject& node)
{
    const COrderedJson* const facts = FactsOf(node);
    return facts != nullptr ? (*facts)["meaning"].GetText() : KW_GetMeaning(node);
}

bool IsSecret(const IDbObject& node)
{
    const COrderedJson* const facts = FactsOf(node);
    return facts != nullptr ? (*facts)["secret"].IsTrue() : KW_IsSecret(node);
}

KW_ValueText GetValueText(const IDbProperty& property)
{
    return {property.GetText(), property.GetTypeName(), property.GetUnitCode(), IsSecret(property)};
}

KW_ValueText GetUserValueText(const IDbProperty& property)
{
    const COrderedJson* const facts = FactsOf(property);
    return facts != nullptr ? KW_ValueText{(*facts)["userValue"].GetText(), property.GetTypeName(),
                                           property.GetUnitCode(), IsSecret(property)}
                            : KW_GetUserValueText(property);
}

QString GetFormText(const IDbProperty& property)
{
    const COrderedJson* const facts = FactsOf(property);
    return facts != nullptr ? (*facts)["form"].GetText() : KW_GetFormText(property);
}

bool IsAtDefault(const IDbProperty& property)
{
    const bool isHidden = FactsOf(property) != nullptr && IsSecret(property);
    return isHidden || property.GetText() == property.GetDefaultText();
}

INT32 GetMostLength(const IDbProperty& property)
{
    if (const COrderedJson* const facts = FactsOf(property))
    {
        return (*facts)["maximumLength"].GetInt();
    }
    return MostLengthOf(*HandleOf(property));
}

std::shared_ptr<IKWFilePathProperty> GetFileForm(const IDbProperty& property)
{
    const auto* const living = dynamic_cast<const CLivingNode*>(&property);
    const auto twin =
        living != nullptr ? std::dynamic_pointer_cast<IDbProperty>(living->Twin()) : nullptr;
    return living == nullptr ? std::dynamic_pointer_cast<IKWFilePathProperty>(HandleOf(property))
           : twin            ? std::dynamic_pointer_cast<IKWFilePathProperty>(twin->GetHandle())
                             : nullptr;
}
