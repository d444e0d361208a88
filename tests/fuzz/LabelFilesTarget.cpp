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
    const KW_ACCEPTANCE code = KW_WriteLabelText(list, format, written, reports);
    // A CAN database may hold twice what it can say only once.
    const bool mayWarn = format == eKW_LABEL_FILE_FORMAT_DBC && code == eKW_ACC_WARNING;
    KW_FuzzRequire(code == eKW_ACC_OK || mayWarn, "not written whole", text);
    KW_LabelList again;
    KW_FuzzRequire(KW_IsAccepted(KW_ReadLabelText(written, format, again, reports)),
                   "own file refused", written);
    KW_FuzzRequire(again.messages.size() == list.messages.size(), "a message is lost", written);
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

void KW_TryLabelDbc(const QByteArray& text)
{
    TryLabelFile(text, eKW_LABEL_FILE_FORMAT_DBC);
}

void KW_TryLabelXml(const QByteArray& text)
{
    TryLabelFile(text, eKW_LABEL_FILE_FORMAT_XML);
}

void KW_TryLabelCsv(const QByteArray& text)
{
    TryLabelFile(text, eKW_LABEL_FILE_FORMAT_CSV);
}
