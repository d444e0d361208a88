// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Properties/DbPropEnum.h"
#include "CommonDatabase/Properties/DbPropNum.h"
#include "CommonDatabase/Properties/DbPropText.h"

/** Results on their way into the tree, under its lock; what it does not take is reported. One
    function for each type of a number, not one for each place: samples tell the tree much. */
namespace NSamples
{
void Tell(CDbPropNum<UINT32>& result, UINT32 value);
void Tell(CDbPropNum<UINT64>& result, UINT64 value);
void Tell(CDbPropNum<INT64>& result, INT64 value);
void Tell(CDbPropNum<double>& result, double value);
void Tell(CDbPropString& result, const QString& value);
void Tell(CDbPropEnumIntAccess& result, INT32 value);
/** As far as its limits let it. */
void TellBounded(CDbPropNum<double>& result, double value);
} // namespace NSamples
