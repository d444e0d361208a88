// SPDX-License-Identifier: MIT
#include "PropertyLengths.h"

#include "IKWProperties.h"

INT32 MostLengthOf(const IKWPropertyBase& handle)
{
    if (const auto* const string = dynamic_cast<const IKWStringProperty*>(&handle))
    {
        return string->GetMaxLength();
    }
    if (const auto* const pattern = dynamic_cast<const IKWBitPatternProperty*>(&handle))
    {
        return pattern->GetMaxLength();
    }
    const auto* const blob = dynamic_cast<const IKWBlobProperty*>(&handle);
    return blob != nullptr ? blob->GetMaxSize() : 0;
}
