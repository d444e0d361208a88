// SPDX-License-Identifier: MIT
#include "LabelList/LabelListFile.h"
#include "fuzz/Targets.h"

#include <algorithm>

namespace
{
constexpr auto kDbc = eKW_LABEL_FILE_FORMAT_DBC;
using t_LabelReports = std::vector<KW_LabelReport>;

bool HasError(const t_LabelReports& reports)
{
    return std::any_of(reports.begin(), reports.end(),
                       [](const KW_LabelReport& report)
                       { return report.type == e_KW_MESSAGE_TYPE_ERROR; });
}

void TryDatabase(const QByteArray& text, bool skipsBadMessages)
{
    KW_LabelList list;
    t_LabelReports reports;
    if (!KW_IsAccepted(KW_ReadLabelText(text, kDbc, list, reports, {skipsBadMessages})))
    {
        KW_FuzzRequire(HasError(reports), "refused without a reason", text);
        return;
    }
    KW_FuzzRequire(skipsBadMessages || !HasError(reports), "taken with an error", text);
    QByteArray written;
    KW_FuzzRequire(KW_IsAccepted(KW_WriteLabelText(list, kDbc, written, reports)), "not written",
                   text);
    KW_LabelList again;
    KW_FuzzRequire(KW_IsAccepted(KW_ReadLabelText(written, kDbc, again, reports)),
                   "own file refused", written);
    KW_FuzzRequire(again.messages.size() == list.messages.size(), "a message is lost", written);
    QByteArray twice;
    KW_WriteLabelText(again, kDbc, twice, reports);
    KW_FuzzRequire(twice == written, "own file read back differently", written);
}
} // namespace

void KW_TryLabelDbc(const QByteArray& text)
{
    TryDatabase(text, false);
    TryDatabase(text, true);
}
