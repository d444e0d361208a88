// SPDX-License-Identifier: MIT
#include "Rules/FileRules.h"

#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "CommonDatabase/Properties/DbPropText.h"

#include <QDir>
#include <QFileInfo>

QString NRules::PathOf(const CDbPropFilePath& file)
{
    const QString name = file.GetFullPath();
    return name.isEmpty() ? name : QDir(file.GetDbRoot()->GetSettingsFolder()).filePath(name);
}

void NRules::MakeFolderOf(const QString& path)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
}
