// SPDX-License-Identifier: MIT
#include "FilesFolder.h"

#include "ServiceLimits.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <sys/stat.h>

namespace
{
/** What stands at a path, of a link the link itself; 0 for nothing. */
mode_t KindOf(const QString& path)
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & S_IFMT : 0;
}
} // namespace

bool CFilesFolder::IsPlainName(const QString& name)
{
    const int bytes = static_cast<int>(QFile::encodeName(name).size());
    return bytes >= 1 && bytes <= NServiceLimits::kLongestFileName &&
           !name.startsWith(QLatin1Char('.')) && !name.contains(QLatin1String("..")) &&
           std::none_of(name.begin(), name.end(),
                        [](QChar c)
                        { return c == u'/' || c == u'\\' || c < u' ' || c == u'\x7f'; });
}

QString CFilesFolder::PathOf(const QString& name, const QString& below, QString& error) const
{
    if (!IsPlainName(name) || !(below.isEmpty() || IsPlainName(below)))
    {
        error = QStringLiteral("a file name without a path is wanted");
        return QString();
    }
    const QDir folder(below.isEmpty() ? m_folder : QDir(m_folder).filePath(below));
    const QString path = folder.filePath(name);
    // The settings folder itself is the administrator's, who may have put it anywhere.
    const mode_t kind = KindOf(path);
    if ((!below.isEmpty() && KindOf(folder.path()) == S_IFLNK) || (kind != 0 && kind != S_IFREG))
    {
        error = QStringLiteral("the file name leads elsewhere");
        return QString();
    }
    return path;
}

QStringList CFilesFolder::List(const QString& below, const QStringList& extensions) const
{
    QStringList names;
    QString problem;
    QDirIterator entries(below.isEmpty() ? m_folder : QDir(m_folder).filePath(below), QDir::Files);
    for (int i = 0; i < NServiceLimits::kEntriesLookedAt && entries.hasNext(); ++i)
    {
        entries.next();
        const QString name = entries.fileName();
        const bool isOfKind = extensions.isEmpty() ||
                              extensions.contains(QFileInfo(name).suffix(), Qt::CaseInsensitive);
        if (isOfKind && !PathOf(name, below, problem).isEmpty())
        {
            names.append(name);
        }
    }
    names.sort();
    return names.mid(0, NServiceLimits::kFilesListed);
}
