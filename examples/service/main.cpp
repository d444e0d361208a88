// SPDX-License-Identifier: MIT
#include "IKWFunctionHorizontal.h"
#include "IKWFunctionZEL.h"
#include "KWService.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv)
{
    const auto root = GetZELRoot();
    KW_ServiceOptions options;
    options.port = static_cast<UINT16>(argc > 1 ? std::atoi(argv[1]) : 5025);

    // Two lines: clients get at the tree until the service goes.
    const CKWService service(root, options);
    if (service.GetPort() == 0)
    {
        std::fprintf(stderr, "Not served: %s\n", qPrintable(service.GetError()));
        return 1;
    }

    // Whatever else the application does: here it waits until its input ends.
    std::printf("Port %d\n", service.GetPort());
    std::fflush(stdout);
    while (std::getchar() != EOF)
    {
    }
    std::printf("Time scale %g s/div\n", root->GetPgHorizontal()->GetPrScale()->Get());
    return 0;
}
