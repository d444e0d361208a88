// SPDX-License-Identifier: MIT
#pragma once

class CDbPropFilePath;
class QString;

/** What the rules of several groups share about files. */
namespace NRules
{
/** The whole path of a file that a user named: relative ones live in the settings folder. Empty
    without a name. In a tree only; takes its lock. */
QString PathOf(const CDbPropFilePath& file);

/** Makes the folder of a path, as far as that is possible. */
void MakeFolderOf(const QString& path);
} // namespace NRules
