// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelListFile.h"
#include "Masks/Mask.h"

/**
 * Masks as XML files. Nothing here needs a tree; all may be called from any thread, and none
 * reports through the error handler: what is to be said is returned, as with files of label lists
 * (KW_FormatLabelReport gives "file:line:column: text").
 *
 * A file has a digest of all that stands before it, which tells damage. One without it was written
 * by hand, and is taken.
 */

/**
 * Reads a file whole. Refused ones leave `mask` as it was.
 *
 * @param reports gets what is to be said, at most 100 of it and then how much more there was
 * @return eKW_ACC_OK; eKW_ACC_WARNING when something was left out that is not known here; refused
 *         with at least one error: eKW_ACC_FILE_NOT_READABLE (missing, above 4 MiB, no regular
 *         file), eKW_ACC_FILE_NOT_UNDERSTOOD (no mask, damaged, too new, or a point against the
 *         rules of KW_CheckMask)
 */
KW_EXPORT KW_ACCEPTANCE KW_ReadMaskFile(const QString& fileName, KW_Mask& mask,
                                        std::vector<KW_LabelReport>& reports);

/** The same of the contents of a file. */
KW_EXPORT KW_ACCEPTANCE KW_ReadMaskText(const QByteArray& text, KW_Mask& mask,
                                        std::vector<KW_LabelReport>& reports);

/** Writes a mask, whole or not at all; an older file stays until the new one is on the disk. Equal
    masks give equal bytes, and read back they are equal.
    @return eKW_ACC_OK; refused with an error: eKW_ACC_FILE_NOT_WRITABLE, or a code of KW_CheckMask
 */
KW_EXPORT KW_ACCEPTANCE KW_WriteMaskFile(const QString& fileName, const KW_Mask& mask,
                                         std::vector<KW_LabelReport>& reports);

/** The same into `text`, which a refusal leaves as it was. */
KW_EXPORT KW_ACCEPTANCE KW_WriteMaskText(const KW_Mask& mask, QByteArray& text,
                                         std::vector<KW_LabelReport>& reports);
