// SPDX-License-Identifier: MIT
#pragma once

#include "KWAcceptance.h"
#include "KWErrorReport.h"
#include "LabelList/LabelList.h"

#include <QByteArray>
#include <QString>
#include <vector>

/**
 * Label lists as files: CAN databases (".dbc"), and XML and CSV for every bus. Nothing here needs a
 * tree; all may be called from any thread, and none reports through the error handler: what is to
 * be said is returned.
 */

/** Format of a file, by the end of its name, in any case. */
enum KW_LABEL_FILE_FORMAT : INT32
{
    eKW_LABEL_FILE_FORMAT_DBC,     ///< CAN database; of the protocol CAN only
    eKW_LABEL_FILE_FORMAT_XML,     ///< holds everything but other statements of CAN databases
    eKW_LABEL_FILE_FORMAT_CSV,     ///< a line for each signal: what spreadsheets are good for
    eKW_LABEL_FILE_FORMAT_UNKNOWN, ///< none of these
};

KW_EXPORT KW_LABEL_FILE_FORMAT KW_GetLabelFileFormat(const QString& fileName);

/** Something to be said of a file. */
struct KW_LabelReport
{
    /** Error: what is wrong made the file refused, or was left out on demand (skipsBadMessages).
        Warning: the file was taken, what stands there is against the rules or was not kept. */
    e_KW_MESSAGE_TYPE type = e_KW_MESSAGE_TYPE_ERROR;
    UINT32 line = 0;   ///< from 1; 0 where it stands nowhere, as of what is written
    UINT32 column = 0; ///< from 1, in bytes; 0 where it stands nowhere
    QString text;      ///< what is wrong, and what was done or is to be done
};

/** "file:line:column: text", the place only as far as there is one. */
KW_EXPORT QString KW_FormatLabelReport(const QString& fileName, const KW_LabelReport& report);

/** How a file is read. */
struct KW_LabelReadOptions
{
    /** Leaves out messages that can not be read, each with an error, instead of refusing the file.
        What can not be parted into messages is refused all the same. */
    bool skipsBadMessages = false;
};

/**
 * Reads a file whole. Refused ones leave `list` as it was.
 *
 * @param reports gets what is to be said, at most 100 of it and then how much more there was
 * @return eKW_ACC_OK; eKW_ACC_WARNING when something is to be said; refused with at least one
 *         error: eKW_ACC_FILE_NOT_READABLE (missing, above 64 MiB, no regular file),
 *         eKW_ACC_FILE_NOT_UNDERSTOOD (of no format, damaged, or against what a label list can
 *         hold: 65,536 messages, 16,384 signals in one and 262,144 in all)
 */
KW_EXPORT KW_ACCEPTANCE KW_ReadLabelFile(const QString& fileName, KW_LabelList& list,
                                         std::vector<KW_LabelReport>& reports,
                                         const KW_LabelReadOptions& options = {});

/** The same of the contents of a file. */
KW_EXPORT KW_ACCEPTANCE KW_ReadLabelText(const QByteArray& text, KW_LABEL_FILE_FORMAT format,
                                         KW_LabelList& list, std::vector<KW_LabelReport>& reports,
                                         const KW_LabelReadOptions& options = {});

/**
 * Writes a list as the format of the file's name has it, whole or not at all; an older file stays
 * until the new one is on the disk. Equal lists give equal bytes.
 *
 * @param reports gets what the format does not hold, as warnings without a place
 * @return eKW_ACC_OK; eKW_ACC_WARNING when something was left out; refused with an error:
 *         eKW_ACC_FILE_NOT_WRITABLE, eKW_ACC_FILE_NOT_UNDERSTOOD (of no format, or a message that
 *         a reader would refuse, such as one with a signal outside of the payload),
 *         eKW_ACC_WRONG_KIND (a list of another bus than CAN as a CAN database)
 */
KW_EXPORT KW_ACCEPTANCE KW_WriteLabelFile(const QString& fileName, const KW_LabelList& list,
                                          std::vector<KW_LabelReport>& reports);

/** The same into `text`, which a refusal leaves as it was. */
KW_EXPORT KW_ACCEPTANCE KW_WriteLabelText(const KW_LabelList& list, KW_LABEL_FILE_FORMAT format,
                                          QByteArray& text, std::vector<KW_LabelReport>& reports);
