// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

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
    /** Names of regular files that PathOf takes, with one of the extensions, or any where there is
        none. At most 256 of them, sorted; of a folder with more than 4,096 entries some. */
    QStringList List(const QString& below, const QStringList& extensions) const;

private:
    const QString m_folder;
};
