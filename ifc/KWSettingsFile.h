// SPDX-License-Identifier: MIT
#pragma once

#include "KWAcceptance.h"

/**
 * Seals a settings file, XML or CSV by its name: gives it the digest of what it holds now, in place
 * of an older one. A file that was saved and then changed on purpose can be recalled again after
 * that; one without a digest is guarded by it from then on. Nothing else in the file changes.
 *
 * eKW_ACC_FILE_NOT_READABLE, eKW_ACC_FILE_NOT_UNDERSTOOD (no settings file, or a damaged one) and
 * eKW_ACC_FILE_NOT_WRITABLE leave the file as it was; each is reported. Needs no tree. Callable
 * from any thread.
 */
KW_EXPORT KW_ACCEPTANCE KW_SealSettingsFile(const QString& fileName);
