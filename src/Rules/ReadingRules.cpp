// SPDX-License-Identifier: MIT
#include "Rules/ReadingRules.h"

#include "Rules/NumberRules.h"

namespace NRules
{
void Invalidate(std::initializer_list<CDbPropBase*> results)
{
    for (CDbPropBase* const result : results)
    {
        KW_CHECKED(result->SetValidity(eKW_VALIDITY_INVALID));
    }
}

void WriteDifference(CDbPropNumDouble& result, const CDbPropNumDouble& reading, double reference)
{
    if (reading.GetValidity() == eKW_VALIDITY_VALID)
    {
        WriteResult(result, reading.Get() - reference);
    }
    else
    {
        Invalidate({&result});
    }
}

KW_ACCEPTANCE TakeReading(CDbPropNumDouble& setting, const CDbPropNumDouble& reading)
{
    return reading.GetValidity() == eKW_VALIDITY_VALID
               ? MoveTo(setting, reading.Get())
               : static_cast<KW_ACCEPTANCE>(eKW_ACC_NOTHING_TO_ACT_ON);
}
} // namespace NRules
