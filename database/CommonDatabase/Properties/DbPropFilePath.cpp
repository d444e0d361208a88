// SPDX-License-Identifier: MIT
#include "CommonDatabase/Values/DbBounds.h"
#include "DbPropText.h"
#include "LockManager.h"
#include "WholeFile.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace
{
/** The list's own constructor does not look whether it got memory. */
QStringList ToList(std::initializer_list<QString> texts)
{
    QStringList list;
    for (const QString& text : texts)
    {
        list.append(text);
    }
    return list;
}
} // namespace

void CDbPropFilePath::DeclareOpenExtensions(std::initializer_list<QString> list)
{
    m_openExtensions = ToList(list);
}

void CDbPropFilePath::DeclareSaveExtensions(std::initializer_list<QString> list)
{
    m_saveExtensions = ToList(list);
}

QString CDbPropFilePath::GetFolder() const
{
    const CLockGuard lock(eACCESS_READ);
    return m_folder;
}

KW_ACCEPTANCE CDbPropFilePath::ValidateText(const QString& text) const
{
    if (text.isEmpty())
    {
        return eKW_ACC_OK;
    }
    if (text.size() > NDbBounds::kMaxPathLength)
    {
        return eKW_ACC_TOO_LONG;
    }
    const QString clean = QDir::cleanPath(text);
    const bool leavesFolder =
        clean == QLatin1String("..") || clean.startsWith(QLatin1String("../"));
    const bool hasControl =
        std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x20; });
    if (leavesFolder || hasControl || !IsSavable(text) || text.endsWith(QLatin1Char('/')))
    {
        return eKW_ACC_BAD_NAME;
    }
    const QString extension = QFileInfo(text).suffix();
    const bool known = (m_openExtensions.isEmpty() && m_saveExtensions.isEmpty()) ||
                       m_openExtensions.contains(extension, Qt::CaseInsensitive) ||
                       m_saveExtensions.contains(extension, Qt::CaseInsensitive);
    return known ? eKW_ACC_OK : eKW_ACC_BAD_NAME;
}

QString CDbPropFilePath::GetFullPath() const
{
    const CLockGuard lock(eACCESS_READ);
    const QString name = Get();
    return name.isEmpty() || QDir::isAbsolutePath(name) ? name : QDir(m_folder).filePath(name);
}

bool CDbPropFilePath::CreateFullPath() const
{
    return QDir().mkpath(QFileInfo(GetFullPath()).absolutePath());
}

QString CDbPropFilePath::CreateNewFileName() const
{
    constexpr int kHighestNumber = 999;
    const CLockGuard lock(eACCESS_READ);
    const QDir folder(m_folder);
    for (int number = 1; number <= kHighestNumber && !m_saveExtensions.isEmpty(); ++number)
    {
        const QString name = QStringLiteral("%1%2.%3")
                                 .arg(m_stem)
                                 .arg(number, 3, 10, QLatin1Char('0'))
                                 .arg(m_saveExtensions.first());
        if (!folder.exists(name))
        {
            return name;
        }
    }
    return QStringLiteral("");
}

KW_ACCEPTANCE CDbPropFilePath::Load(QByteArray& contents) const
{
    QString error;
    return KW_ReadWholeFile(GetFullPath(), kMaxFileSize, contents, error)
               ? eKW_ACC_OK
               : eKW_ACC_FILE_NOT_READABLE;
}

KW_ACCEPTANCE CDbPropFilePath::Write(const QByteArray& contents) const
{
    if (GetFullPath().isEmpty() || !CreateFullPath())
    {
        return eKW_ACC_FILE_NOT_WRITABLE;
    }
    QString error;
    return KW_WriteWholeFile(GetFullPath(), contents, error) ? eKW_ACC_OK
                                                             : eKW_ACC_FILE_NOT_WRITABLE;
}

std::shared_ptr<IKWFilePathProperty> CDbPropFilePath::GetFIMPointer()
{
    return {shared_from_this(), static_cast<IKWFilePathProperty*>(EnsureFIM())};
}
