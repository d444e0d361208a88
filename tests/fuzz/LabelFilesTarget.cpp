// SPDX-License-Identifier: MIT
#include "LabelList/LabelListFile.h"
#include "fuzz/Targets.h"

#include <algorithm>

namespace
{
using t_LabelReports = std::vector<KW_LabelReport>;

bool HasError(const t_LabelReports& reports)
{
    return std::any_of(reports.begin(), reports.end(),
                       [](const KW_LabelReport& report)
                       { return report.type == e_KW_MESSAGE_TYPE_ERROR; });
}

void TryReading(const QByteArray& text, KW_LABEL_FILE_FORMAT format, bool skips)
{
    KW_LabelList list;
    t_LabelReports reports;
    if (!KW_IsAccepted(KW_ReadLabelText(text, format, list, reports, {skips})))
    {
        KW_FuzzRequire(HasError(reports), "refused without a reason", text);
        return;
    }
    KW_FuzzRequire(skips || !HasError(reports), "taken with an error", text);
    QByteArray written;
    reports.clear();
    KW_FuzzRequire(KW_WriteLabelText(list, format, written, reports) == eKW_ACC_OK,
                   "not written whole", text);
    KW_LabelList again;
    KW_FuzzRequire(KW_IsAccepted(KW_ReadLabelText(written, format, again, reports)),
                   "own file refused", written);
    QByteArray twice;
    reports.clear();
    KW_WriteLabelText(again, format, twice, reports);
    KW_FuzzRequire(twice == written, "own file read back differently", written);
}

void TryLabelFile(const QByteArray& text, KW_LABEL_FILE_FORMAT format)
{
    TryReading(text, format, false);
    TryReading(text, format, true);
}
} // namespace

void KW_TryLabelXml(const QByteArray& text)
{
    TryLabelFile(text, eKW_LABEL_FILE_FORMAT_XML);
}

void KW_TryLabelCsv(const QByteArray& text)
{
    TryLabelFile(text, eKW_LABEL_FILE_FORMAT_CSV);
}
