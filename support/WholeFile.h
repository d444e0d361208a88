// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/**
 * Writes a file whole or not at all: whatever goes wrong, a full disk included, an older file of
 * the name is kept and nothing is left beside it. False with `error` saying what is in the way.
 * After a power loss at any moment the name leads to the old or the new contents; what was being
 * written may lie beside them. True means that the new ones are on the disk.
 * Callable from any thread.
 */
bool KW_WriteWholeFile(const QString& fileName, const QByteArray& contents, QString& error);
