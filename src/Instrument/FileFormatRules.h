// SPDX-License-Identifier: MIT
#pragma once

#include "CheckedAccess.h"
#include "CommonDatabase/Properties/DbPropEnum.h"
#include "CommonDatabase/Properties/DbPropText.h"

#include <QFileInfo>

namespace NRules
{
/** Keeps a file's name and its format together: a format gives the name its extension, a name that
    is `written` gives the format. The extensions of the file stand in the order of the formats. No
    name is a name for every format. */
inline void FollowFileFormat(CDbPropEnumIntAccess& format, CDbPropFilePath& file,
                             const CDbPropBase* written)
{
    const QString name = file.Get();
    const QStringList extensions = file.GetSaveExtensions();
    const QString present = QFileInfo(name).suffix();
    const auto index = static_cast<INT32>(extensions.indexOf(present.toLower()));
    if (name.isEmpty() || index == format.GetAsInt())
    {
        return;
    }
    if (written == &file && index >= 0)
    {
        KW_CHECKED(format.DbSetAsInt(index));
        return;
    }
    KW_CHECKED(file.DbSet(name.chopped(present.size()) + extensions.value(format.GetAsInt())));
}
} // namespace NRules
