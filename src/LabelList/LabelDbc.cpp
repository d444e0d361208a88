// SPDX-License-Identifier: MIT
#include "LabelList/LabelFiles.h"

bool NLabelFiles::ReadDbc(const QByteArray& /*text*/, KW_LabelList& /*list*/,
                          CLabelReports& reports, const KW_LabelReadOptions& /*options*/)
{
    reports.Error({}, QStringLiteral("this format is not read yet"));
    return false;
}

QByteArray NLabelFiles::WriteDbc(const KW_LabelList& /*list*/, CLabelReports& reports)
{
    reports.Error({}, QStringLiteral("this format is not written yet"));
    return {};
}
