// SPDX-License-Identifier: MIT
#include "LabelList/LabelFiles.h"
QByteArray NLabelFiles::WriteDbc(const KW_LabelList& /*list*/, CLabelReports& reports)
{
    reports.Error({}, QStringLiteral("this format is not written yet"));
    return {};
}
