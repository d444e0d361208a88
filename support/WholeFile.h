// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/**
 * Writes a file whole or not at all: whatever goes wrong, a full disk included, an older file of
 * the name is kept and nothing is left beside it. False with `error` saying what is in the way.
 * Callable from any thread.
 */
bool KW_WriteWholeFile(const QString& fileName, const QByteArray& contents, QString& error);
