// SPDX-License-Identifier: MIT
// Everything that clients do, all at once, for as long as one likes: soak [SECONDS [SEED]].
#include "IKWFunctionCANBusFrame.h"
#include "IKWFunctionCANBusResults.h"
#include "IKWFunctionSerialBus.h"
#include "KWErrorReport.h"
#include "soak/Workers.h"

#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>

namespace
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kHeapIsMeasured = false; // the sanitizer's own
#else
constexpr bool kHeapIsMeasured = true;
#endif

/** History and names differ a little from time to time; what is lost in every round adds up to
    more. */
constexpr long long kHeapTolerance = 256 * 1024;

/** Heap in use with the tree at its defaults and nothing to undo. */
long long HeapAtRest(const t_Root& root)
{
    const auto frames = root->GetPgSerialBus()->GetPgCANBusResults()->GetPgCANBusFrame();
    root->RunPresetSequence(true);
    frames->Remove(0, frames->GetCount());
    root->EnableHistory(false);
    root->EnableHistory(true);
    malloc_trim(0);
    return static_cast<long long>(mallinfo2().uordblks);
}

/** All that the soak left in the history, there and back. */
void CheckHistory(const t_Root& root, const QString& folder, CVerdict& verdict)
{
    const QString fileName = folder + QStringLiteral("/history.xml");
    while (root->Redo() == eKW_ACC_OK)
    {
    }
    const QByteArray last = SavedText(root, fileName, verdict);
    int steps = 0;
    while (root->Undo() == eKW_ACC_OK)
    {
        ++steps;
        CheckLimits(Properties(root->GetDbObject()), verdict);
    }
    for (int i = 0; i < steps; ++i)
    {
        root->Redo();
    }
    if (SavedText(root, fileName, verdict) != last)
    {
        verdict.Violated(QStringLiteral("%1 steps undone and redone lead elsewhere").arg(steps));
    }
    std::printf("%9d  steps undone and redone at the end\n", steps);
}

void CheckRecalculation(const t_Root& root, CVerdict& verdict)
{
    root->UpdateAllMeasSettings();
    long long counter = -1;
    root->HasChanged(counter);
    root->UpdateAllMeasSettings();
    if (root->HasChanged(counter))
    {
        verdict.Violated(QStringLiteral("a second calculation changes something"));
    }
}

void Soak(double seconds, unsigned seed, CVerdict& verdict)
{
    const QTemporaryDir folder;
    const t_Root root = GetZELRoot();
    auto workers = MakeWorkers(root, folder.path(), verdict);
    RunWorkers(workers, seconds * 0.2, seed);
    const long long before = HeapAtRest(root);
    RunWorkers(workers, seconds * 0.8, seed + 100);
    for (const t_Worker& worker : workers)
    {
        std::printf("%9llu  %s\n", static_cast<unsigned long long>(worker.rounds), worker.name);
    }
    CheckLimits(Properties(root->GetDbObject()), verdict);
    CheckRecalculation(root, verdict);
    CheckHistory(root, folder.path(), verdict);
    const long long growth = HeapAtRest(root) - before;
    if (kHeapIsMeasured)
    {
        std::printf("%9lld  bytes of heap more than after the warm-up\n", growth);
    }
    if (kHeapIsMeasured && growth > kHeapTolerance)
    {
        verdict.Violated(QStringLiteral("the heap grew by %1 bytes").arg(growth));
    }
}
} // namespace

int main(int count, char** arguments)
{
    const double seconds = count > 1 ? std::atof(arguments[1]) : 60.0;
    const auto seed = static_cast<unsigned>(count > 2 ? std::atoi(arguments[2]) : 1);
    CVerdict verdict;
    // Refusals are part of the game; a rule that the library itself broke is not.
    KW_SetErrorHandler(
        [&verdict](const KW_ErrorReport& report)
        {
            if (report.message.startsWith(QLatin1String("Error (")) ||
                report.message.startsWith(QLatin1String("Dependency cycle")))
            {
                verdict.Violated(report.message);
            }
        });
    std::printf("soak: %g s, seed %u\n", seconds, seed);
    Soak(seconds, seed, verdict);
    KW_SetErrorHandler({});
    verdict.Print();
    return verdict.IsGood() ? 0 : 1;
}
