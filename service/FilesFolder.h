// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/**
 * The one folder of which clients name files: a name leads to a file there or in a folder directly
 * below it, never elsewhere.
 */
class CFilesFolder
{
public:
    explicit CFilesFolder(QString folder) : m_folder(std::move(folder)) {}

    /** A name of 1 to 255 bytes without separators, "..", a point at its beginning and control
        characters. */
    static bool IsPlainName(const QString& name);
    /** The path of a file. Empty, and why, where the name is not plain, or where the name or
        `below` is a link or no regular file; there need be no such file yet. */
    QString PathOf(const QString& name, const QString& below, QString& error) const;

private:
    const QString m_folder;
};
