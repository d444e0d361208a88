// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/**
 * Reads bytes as a settings file and applies it to a fresh tree. Whatever the bytes are: a refusal
 * says why, and a tree that a file brought about is saved and read back the same. Ends the program
 * when that does not hold, as a fuzzer wants it.
 */
void KW_TrySettingsFile(const QByteArray& text, bool csv);
