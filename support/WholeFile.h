// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/** Who may read a file that is written. */
enum class eREADERS
{
    Any,  ///< as the process's umask, or an older file of the name, has it
    Owner ///< nobody else, whatever these say
};

/**
 * Reads a file of at most `maxSize` bytes whole. False with `error` saying what is in the way; what
 * is no regular file, such as a pipe or a device, is refused at once and never waited for.
 * Callable from any thread; not under a lock that others need, as a disk may take its time.
 */
bool KW_ReadWholeFile(const QString& fileName, qint64 maxSize, QByteArray& contents,
                      QString& error);

/**
 * Writes a file whole or not at all: whatever goes wrong, a full disk included, an older file of
 * the name is kept and nothing is left beside it. False with `error` saying what is in the way.
 * After a power loss at any moment the name leads to the old or the new contents; what was being
 * written may lie beside them. True means that the new ones are on the disk.
 * A name that stands for something else than a regular file, or a link to one, is refused: a pipe
 * or a device would be replaced by a file. A file for its owner alone is so before its first byte,
 * and is not written where that can not be. Callable from any thread; not under a lock that others
 * need, as a disk may take its time.
 */
bool KW_WriteWholeFile(const QString& fileName, const QByteArray& contents, QString& error,
                       eREADERS readers = eREADERS::Any);
