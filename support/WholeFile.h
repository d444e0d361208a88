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
 * Writes a file whole or not at all: whatever goes wrong, a full disk included, an older file of
 * the name is kept and nothing is left beside it. False with `error` saying what is in the way.
 * After a power loss at any moment the name leads to the old or the new contents; what was being
 * written may lie beside them. True means that the new ones are on the disk.
 * A file for its owner alone is so before its first byte, and is not written where that can not be.
 * Callable from any thread.
 */
bool KW_WriteWholeFile(const QString& fileName, const QByteArray& contents, QString& error,
                       eREADERS readers = eREADERS::Any);
