// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/Record.h"

#include <QString>
#include <QStringList>

/**
 * Records in files of any kind that commands read and write: record files (".rec"), sounds (".wav")
 * and tables (".csv", ".tsv", ".txt"). docs/record-files.md says what travels in each.
 *
 * What is refused ends in a CFailure with the place; nothing is read or written in part.
 */

/** What a file may leave open. */
struct t_WaveOptions
{
    double interval = 0.0; ///< s between the points of a table, whose times then do not count;
                           ///< 0: by its times
};

/** The record of a file. What it is, its first bytes decide; `notes` gets a line for each thing
    that is not as the file has it. */
CKWRecord ReadWave(const QString& fileName, QStringList& notes, const t_WaveOptions& options = {});

/** Writes a record as the end of the name says. `notes` gets a line for each thing that the format
    does not hold. */
void WriteWave(const QString& fileName, const CKWRecord& record, QStringList& notes);

/** Fails when no format has a name that ends so: before a long calculation. */
void RequireWaveName(const QString& fileName);

/** Place of the trace of a channel ("C1"), or of a number from 1 ("2"); fails with what there is.
    An empty text is the first trace with points. */
UINT32 FindTrace(const CKWRecord& record, const QString& wanted, const QString& fileName);

/** "C1"; "trace 2" of one whose channel is not known. */
QString GetTraceName(const CKWRecord& record, UINT32 trace);
