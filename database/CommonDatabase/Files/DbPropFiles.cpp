// SPDX-License-Identifier: MIT
#include "CommonDatabase/Containers/DbPropReference.h"
#include "CommonDatabase/Properties/DbPropNum.h"
#include "DbSettings.h"

bool CDbPropNumBase::SerializeProp(CDbSettingsWriter& writer) const
{
    CDbPropBase::SerializeProp(writer);
    const QString wish = GetWishText();
    if (!wish.isNull())
    {
        writer.Attribute(KW_SETTINGS_USER_VALUE, wish);
    }
    return writer.IsGood();
}

void CDbPropNumBase::DeSerialize(const CDbSettingsElement& element, CDbRecall& recall)
{
    CDbPropBase::DeSerialize(element, recall);
    const QStringView wish = element.Attribute(KW_SETTINGS_USER_VALUE);
    if (!wish.isNull())
    {
        RestoreWish(wish);
    }
}

void CDbPropReference::DeSerialize(const CDbSettingsElement& element, CDbRecall& recall)
{
    recall.Defer([this, element](CDbRecall& later) { CDbPropBase::DeSerialize(element, later); });
}
