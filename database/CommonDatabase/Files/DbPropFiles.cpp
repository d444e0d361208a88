// SPDX-License-Identifier: MIT
#include "CommonDatabase/Containers/DbPropReference.h"
#include "DbSettings.h"

void CDbPropReference::DeSerialize(const CDbSettingsElement& element, CDbRecall& recall)
{
    recall.Defer([this, element](CDbRecall& later) { CDbPropBase::DeSerialize(element, later); });
}
