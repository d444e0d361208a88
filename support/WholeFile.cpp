// SPDX-License-Identifier: MIT
#include "WholeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
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
    // Without support for it there is nothing to wait for.
    return fsync(file.handle()) == 0 || errno == EINVAL || errno == ENOTSUP;
}

bool Restrict(QSaveFile& file, eREADERS readers)
{
    return readers == eREADERS::Any ||
           file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}
const QString kIrregular = QStringLiteral("it is no regular file");

/** What stands at the end of links; a folder's writer and reader say so themselves. */
bool IsRegularOrFree(const QString& fileName)
{
    struct stat target
    {
    };
    return stat(QFile::encodeName(fileName).constData(), &target) != 0 || S_ISREG(target.st_mode) ||
           S_ISDIR(target.st_mode);
}

/** Without waiting for the other end of a pipe; −1 with `error` set. */
int OpenRegular(const QString& fileName, QString& error)
{
    const int handle =
        open(QFile::encodeName(fileName).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (handle < 0)
    {
        error = qt_error_string(errno);
        return -1;
    }
    struct stat opened
    {
    };
    if (fstat(handle, &opened) != 0 || !S_ISREG(opened.st_mode))
    {
        error = S_ISDIR(opened.st_mode) ? qt_error_string(EISDIR) : kIrregular;
        close(handle);
        return -1;
    }
    return handle;
}
} // namespace

bool KW_ReadWholeFile(const QString& fileName, qint64 maxSize, QByteArray& contents, QString& error)
{
    const int handle = OpenRegular(fileName, error);
    if (handle < 0)
    {
        return false;
    }
    QFile file;
    if (!file.open(handle, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
    {
        error = file.errorString();
        close(handle);
        return false;
    }
    // Some files tell no size: what is read is what counts.
    constexpr qint64 kPiece = 64 * 1024;
    QByteArray read;
    for (QByteArray piece(1, '\0'); !piece.isEmpty() && read.size() <= maxSize; read += piece)
    {
        piece = file.read(std::min(kPiece, maxSize + 1 - read.size()));
    }
    if (file.error() != QFileDevice::NoError)
    {
        error = file.errorString();
        return false;
    }
    if (read.size() > maxSize)
    {
        error = QStringLiteral("it is larger than %1 bytes").arg(maxSize);
        return false;
    }
    contents = std::move(read);
    return true;
}

bool KW_WriteWholeFile(const QString& fileName, const QByteArray& contents, QString& error,
                       eREADERS readers)
{
    if (!IsRegularOrFree(fileName))
    {
        error = kIrregular;
        return false;
    }
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
