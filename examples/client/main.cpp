// SPDX-License-Identifier: MIT
#include "IKWFunctionHorizontal.h"
#include "IKWFunctionZEL.h"
#include "KWAcceptance.h"

#include <cstdio>

int main()
{
    // The tree lives as long as somebody holds its root.
    const auto root = GetZELRoot();
    const auto horizontal = root->GetPgHorizontal();

    const KW_ACCEPTANCE code = horizontal->GetPrScale()->Set(2e-3);
    if (!KW_IsAccepted(code))
    {
        std::fprintf(stderr, "Refused: %s\n", qPrintable(KW_GetAcceptanceText(code)));
        return 1;
    }
    std::printf("Time scale        %g s/div\n", horizontal->GetPrScale()->Get());
    std::printf("Acquisition time  %g s\n", horizontal->GetPrAcquisitionTime()->Get());
    return 0;
}
