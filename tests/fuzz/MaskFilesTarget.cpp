// SPDX-License-Identifier: MIT
#include "Masks/MaskFile.h"
#include "fuzz/Targets.h"

#include <algorithm>

void KW_TryMaskFiles(const QByteArray& text)
{
    KW_Mask mask;
    std::vector<KW_LabelReport> reports;
    if (!KW_IsAccepted(KW_ReadMaskText(text, mask, reports)))
    {
        const bool hasError = std::any_of(reports.begin(), reports.end(),
                                          [](const KW_LabelReport& report)
                                          { return report.type == e_KW_MESSAGE_TYPE_ERROR; });
        KW_FuzzRequire(hasError, "refused without a reason", text);
        KW_FuzzRequire(mask == KW_Mask(), "refused and taken", text);
        return;
    }
    KW_FuzzRequire(KW_CheckMask(mask) == eKW_ACC_OK, "taken against the rules", text);
    QByteArray written;
    reports.clear();
    KW_FuzzRequire(KW_WriteMaskText(mask, written, reports) == eKW_ACC_OK, "not written", text);
    KW_Mask again;
    KW_FuzzRequire(KW_ReadMaskText(written, again, reports) == eKW_ACC_OK, "own file refused",
                   written);
    KW_FuzzRequire(again == mask, "own file read back differently", written);
}
