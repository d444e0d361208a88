// SPDX-License-Identifier: MIT
// Runs operations of the budgets as often as is said, no more and no less, so that a count of
// instructions is the same in each run: kwi_count lists them, kwi_count NAME runs one.
// bench/instructions.py is who counts.

#include "../Operations.h"

#include <QSysInfo>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstring>

/** All that is counted runs below this function: valgrind finds it by its name. */
extern "C" [[gnu::noinline]] void KW_Counted(void (*loop)(void* operation, int runs),
                                             void* operation, int runs);
extern "C" void KW_Counted(void (*loop)(void* operation, int runs), void* operation, int runs)
{
    loop(operation, runs);
}

namespace
{
template <class TOperation>
void Loop(void* operation, int runs)
{
    for (int i = 0; i < runs; ++i)
    {
        benchmark::DoNotOptimize((*static_cast<TOperation*>(operation))());
    }
}

void List()
{
    // What a count depends on besides the project.
    std::printf("made with\t%s %s, Qt %s, glibc %d.%d, %s\n",
#ifdef __clang__
                "Clang",
#else
                "GCC",
#endif
                __VERSION__, qVersion(), __GLIBC__, __GLIBC_MINOR__,
                qPrintable(QSysInfo::buildAbi()));
    KW_VisitOperations([](const char* name, int runs, auto /*make*/)
                       { std::printf("%s\t%d\n", name, runs); });
}

bool Run(const char* wanted)
{
    bool found = false;
    KW_VisitOperations(
        [&](const char* name, int runs, auto make)
        {
            if (std::strcmp(name, wanted) == 0)
            {
                found = true;
                auto operation = make();
                Loop<decltype(operation)>(&operation, runs); // comes to rest
                KW_Counted(Loop<decltype(operation)>, &operation, runs);
            }
        });
    return found;
}
} // namespace

int main(int count, char** arguments)
{
    if (count < 2)
    {
        List();
        return 0;
    }
    if (std::strcmp(arguments[1], "--heap") == 0)
    {
        const t_HeapOfTree heap = KW_MeasureHeapOfTree();
        std::printf("%zu\t%d\n", heap.bytes, heap.properties);
        return 0;
    }
    if (!Run(arguments[1]))
    {
        std::fprintf(stderr, "kwi_count: knows no operation %s; kwi_count lists them\n",
                     arguments[1]);
        return 2;
    }
    return 0;
}
