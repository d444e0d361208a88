// SPDX-License-Identifier: MIT
#include "Rules/NumberRules.h"

#include "CommonDatabase/Containers/DbContainerBase.h"
#include "CommonDatabase/Values/DbStepping.h"

namespace NRules
{
double RoundStep(double step)
{
    return NStepping::FloorToLadder125(step);
}

INT32 IndexInArray(const CDbPropertyGroup& item)
{
    const auto* const container = dynamic_cast<const CDbContainerBase*>(item.GetParent());
    return container != nullptr ? container->PositionOf(item) : 0;
}

void UpdateSubtree(CDbPropertyGroup& group)
{
    group.VisitChildrenFirst([](CDbPropertyGroup& below) { below.UpdateGroup(); });
}

void WriteUserDefaults(CDbPropertyGroup& group)
{
    group.WriteDefaults(eSAVERECALL_SETTINGS);
}

KW_ACCEPTANCE MoveTogether(CDbPropNumDouble& moved, CDbPropNumDouble& partner, double difference)
{
    const double place = KWMath::DecimalSum(moved.Get(), difference);
    const KW_ACCEPTANCE code = MoveTo(partner, place);
    const bool isStopped = partner.Get() != place;
    MoveTo(moved, isStopped ? Distance(difference, partner.Get()) : moved.Get());
    return code;
}

void Rescale(CDbPropNumDouble& number, double ratio)
{
    const double wish = NStepping::ToDecimal(number.GetUserValue() * ratio);
    SetLimits(number, std::min(number.GetMin(), wish), std::max(number.GetMax(), wish));
    MoveTo(number, wish);
}

void WriteResult(CDbPropNumDouble& result, double value)
{
    const bool inRange = value >= result.GetDeclaredMin() && value <= result.GetDeclaredMax();
    KW_CHECKED(inRange ? result.DbSet(value) : result.SetValidity(eKW_VALIDITY_INVALID));
}

void InvalidateResults(CDbPropertyGroup& group)
{
    for (const auto& property : group.Properties())
    {
        if (property->GetObjectType() == eOBJECTTYPE_RESULT)
        {
            KW_CHECKED(property->SetValidity(eKW_VALIDITY_INVALID));
        }
    }
}
} // namespace NRules
