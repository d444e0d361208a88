// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelList.h"
#include "LabelList/LabelReports.h"

#include <QByteArray>

/**
 * The formats of label lists, each a reader and a writer. A reader gets an empty list and the whole
 * text, within the bounds of a file's size, and keeps those of LabelBounds.h itself; one that
 * answers false has reported at least one error. What it takes has passed NLabelChecks. A writer
 * warns of what its format does not hold.
 */
namespace NLabelFiles
{
bool ReadDbc(const QByteArray& text, KW_LabelList& list, CLabelReports& reports,
             const KW_LabelReadOptions& options);
bool ReadXml(const QByteArray& text, KW_LabelList& list, CLabelReports& reports,
             const KW_LabelReadOptions& options);
bool ReadCsv(const QByteArray& text, KW_LabelList& list, CLabelReports& reports,
             const KW_LabelReadOptions& options);

QByteArray WriteDbc(const KW_LabelList& list, CLabelReports& reports);
QByteArray WriteXml(const KW_LabelList& list, CLabelReports& reports);
QByteArray WriteCsv(const KW_LabelList& list, CLabelReports& reports);
} // namespace NLabelFiles
