// SPDX-License-Identifier: MIT
// A client that knows the interfaces of a release: client FOLDER writes what every accessor
// answers, before and after writes, a save and a recall in FOLDER. scripts/check-abi.sh compares
// what it reads from the present library and from one that has grown.
#include "IKWFunctionZEL.h"
#include "Walk.h"

namespace
{
void Take(const char* what, KW_ACCEPTANCE code)
{
    std::printf("%s: %u\n", what, code);
}

/** What is not reached proves nothing. */
void TellMissed()
{
    for (const char* group : KeptGroups())
    {
        if (!CWalk::IsReached(group))
        {
            std::printf("IKWFunction%s: not reached\n", group);
        }
    }
}
} // namespace

int main(int argumentCount, char** arguments)
{
    if (argumentCount != 2)
    {
        return 2;
    }
    // A wrong place in a virtual table may end the program: what was answered last shows where.
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    const auto root = GetZELRoot();
    const auto pass = [&root](CWalk::ePASS kind)
    {
        CWalk walk(*root, kind);
        WalkValues(walk);
        Walk(walk, *root);
    };
    const QString file = QString::fromLocal8Bit(arguments[1]) + QStringLiteral("/settings.xml");
    pass(CWalk::ePASS::Fill);
    pass(CWalk::ePASS::Read);
    pass(CWalk::ePASS::Write);
    Take("Save", root->Save(file));
    pass(CWalk::ePASS::Read);
    Take("Preset", root->RunPresetSequence(true));
    pass(CWalk::ePASS::Read);
    Take("Recall", root->Recall(file));
    pass(CWalk::ePASS::Read);
    TellMissed();
    return 0;
}
