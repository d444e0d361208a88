// SPDX-License-Identifier: MIT
#include "WholeFile.h"

#include <QSaveFile>

bool KW_WriteWholeFile(const QString& fileName, const QByteArray& contents, QString& error)
{
    QSaveFile file(fileName);
    // Flushed here: what is still buffered when the file is committed fails unseen, and the old
    // file would be replaced by half a new one.
    const bool written = file.open(QIODevice::WriteOnly) &&
                         file.write(contents) == contents.size() && file.flush() && file.commit();
    error = written ? QString() : file.errorString();
    return written;
}
