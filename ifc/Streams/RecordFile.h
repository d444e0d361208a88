// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/Record.h"

#include <QByteArray>
#include <QString>

/**
 * Records as files, bit for bit: all traces of all formats and what is said of them, with a digest.
 * docs/record-files.md describes the bytes. The same on every machine. Nothing here needs a tree;
 * all may be called from any thread, and none reports through the error handler: what is to be
 * said is returned.
 */

/** What keeps a file from being read or written. */
struct KW_RecordReport
{
    bool hasPlace = false; ///< whether it stands somewhere in the file
    UINT64 place = 0;      ///< byte of the file, from 0
    QString text;          ///< what is wrong, and what is to be done
};

/** "file: byte 24: text", the place only if there is one. */
KW_EXPORT QString KW_FormatRecordReport(const QString& fileName, const KW_RecordReport& report);

/** Whether a file that begins with these bytes, 8 of them are enough, is meant to be one. */
KW_EXPORT bool KW_IsRecordFile(const QByteArray& beginning);

/**
 * Reads a file whole. A refused one leaves `record` as it was; `report` then says why. Memory is
 * taken for bytes that are there, never for what a damaged file promises.
 *
 * @return eKW_ACC_OK; eKW_ACC_FILE_NOT_READABLE (missing, no regular file, more samples than a
 *         stream may have or the system has memory for), eKW_ACC_FILE_NOT_UNDERSTOOD (of another
 *         kind or a newer major version, cut off, damaged, or with values that no record has)
 */
KW_EXPORT KW_ACCEPTANCE KW_ReadRecordFile(const QString& fileName, CKWRecord& record,
                                          KW_RecordReport& report);

/** The same of the contents of a file. */
KW_EXPORT KW_ACCEPTANCE KW_ReadRecordBytes(const QByteArray& bytes, CKWRecord& record,
                                           KW_RecordReport& report);

/**
 * Writes a record, whole or not at all; an older file stays until the new one is on the disk. Equal
 * records give equal bytes. A growing record is written as this value shows it.
 *
 * @return eKW_ACC_OK; eKW_ACC_NOTHING_TO_ACT_ON without a record, eKW_ACC_FILE_NOT_WRITABLE
 */
KW_EXPORT KW_ACCEPTANCE KW_WriteRecordFile(const QString& fileName, const CKWRecord& record,
                                           KW_RecordReport& report);

/** The same into `bytes`, which a refusal leaves as they were. */
KW_EXPORT KW_ACCEPTANCE KW_WriteRecordBytes(const CKWRecord& record, QByteArray& bytes,
                                            KW_RecordReport& report);
