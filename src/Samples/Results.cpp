// SPDX-License-Identifier: MIT
#include "Samples/Results.h"

#include "CheckedAccess.h"
#include "KWMath.h"

namespace NSamples
{
void Tell(CDbPropNum<UINT32>& result, UINT32 value)
{
    KW_CHECKED(result.DbSet(value));
}

void Tell(CDbPropNum<UINT64>& result, UINT64 value)
{
    KW_CHECKED(result.DbSet(value));
}

void Tell(CDbPropNum<INT64>& result, INT64 value)
{
    KW_CHECKED(result.DbSet(value));
}

void Tell(CDbPropNum<double>& result, double value)
{
    KW_CHECKED(result.DbSet(value));
}

void Tell(CDbPropString& result, const QString& value)
{
    KW_CHECKED(result.DbSet(value));
}

void Tell(CDbPropEnumIntAccess& result, INT32 value)
{
    KW_CHECKED(result.DbSetAsInt(value));
}

void TellBounded(CDbPropNum<double>& result, double value)
{
    Tell(result, KWMath::Bound(result.GetMin(), value, result.GetMax()));
}
} // namespace NSamples
