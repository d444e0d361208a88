// SPDX-License-Identifier: MIT
#include "WholeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace
{
/** Makes a new name last. A folder that can not be synchronised, as those of some file systems,
    leaves the old or the new file after a power loss, and both are whole. */
void SyncFolderOf(const QString& fileName)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(fileName).absolutePath());
    const int handle = open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle >= 0)
    {
        fsync(handle);
        close(handle);
    }
}

/** False with errno set when the contents did not reach the disk. */
bool Sync(QSaveFile& file)
{
    // Without support for it there is nothing to wait for, as on a pipe.
    return fsync(file.handle()) == 0 || errno == EINVAL || errno == ENOTSUP;
}

bool Restrict(QSaveFile& file, eREADERS readers)
{
    return readers == eREADERS::Any ||
           file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}
} // namespace

bool KW_WriteWholeFile(const QString& fileName, const QByteArray& contents, QString& error,
                       eREADERS readers)
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
    {
        error = file.errorString();
        return false;
    }
    // Flushed and synchronised here: what still fails when the file is committed fails unseen, and
    // the old file would be replaced by half a new one.
    errno = 0;
    if (!Restrict(file, readers) || file.write(contents) != contents.size() || !file.flush() ||
        !Sync(file) || !file.commit())
    {
        // Most of these leave their reason nowhere else.
        error = errno != 0 ? qt_error_string(errno) : file.errorString();
        file.cancelWriting();
        return false;
    }
    SyncFolderOf(fileName);
    error = QString();
    return true;
}
