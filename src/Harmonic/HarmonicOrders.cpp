// SPDX-License-Identifier: MIT
#include "Harmonic/HarmonicOrders.h"

#include "CommonDatabase/Nodes/DbPropertyGroup.h"
#include "CommonDatabase/Properties/DbPropEnum.h"
#include "KWEnumerationsHarmonics.h"
#include "KWMath.h"
#include "Names/Harmonic.h"
#include "Names/ZEL.h"

#include <optional>

using namespace NNames;

UINT32 NHarmonicOrders::Highest(const CDbPropertyGroup& group)
{
    const auto& selector = *group.At(ZEL::Harmonic / Harmonic::NumberOfHarmonics);
    const std::optional<double> number = selector.GetNameInfo().GetNumber(selector.GetAsInt());
    return KWMath::ToInteger<UINT32>(number.value_or(0.0));
}

bool NHarmonicOrders::IsShown(const CDbPropertyGroup& group, UINT32 order)
{
    const bool isAnalysed = order <= Highest(group);
    const bool isOdd = order % 2 == 1;
    switch (group.At(ZEL::Harmonic / Harmonic::HarmonicSelection)->Get())
    {
    case eKW_HMA_HARMONIC_SELECTION_ODD:
        return isAnalysed && isOdd;
    case eKW_HMA_HARMONIC_SELECTION_EVEN:
        return isAnalysed && !isOdd && order != 0;
    case eKW_HMA_HARMONIC_SELECTION_ODD_NON_TRIPLEN:
        return isAnalysed && isOdd && order % 3 != 0;
    default:
        return isAnalysed;
    }
}
