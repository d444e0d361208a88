// SPDX-License-Identifier: MIT
#include "soak/Workers.h"

#include "IKWFunctionCANBusFrame.h"
#include "IKWFunctionCANBusResults.h"
#include "IKWFunctionCANBusSettings.h"
#include "IKWFunctionHistoryViewer.h"
#include "IKWFunctionLabelListSettings.h"
#include "IKWFunctionSerialBus.h"
#include "IKWFunctionSerialBusLabelItem.h"
#include "KWBrackets.h"
#include "Streams/Acquisition.h"

#include <QFile>
#include <algorithm>
#include <chrono>
#include <thread>

namespace
{
using t_Random = std::mt19937;

constexpr INT32 kMostItems = 12;

INT32 Below(t_Random& random, std::size_t count)
{
    return static_cast<INT32>(random() % count);
}

/** A value that may well be legal: at an end of the limits, out of the list, beside the present
    one. */
void WriteSomething(IDbProperty& property, t_Random& random)
{
    const QStringList values = property.GetValueTexts();
    switch (random() % 6)
    {
    case 0:
        property.SetText(property.GetMinText());
        break;
    case 1:
        property.SetText(property.GetMaxText());
        break;
    case 2:
        property.SetToDefault();
        break;
    case 3:
        property.IncDec(Below(random, 7) - 3);
        break;
    default:
        property.SetText(values.isEmpty() ? QString::number(Below(random, 1000))
                                          : values.at(Below(random, values.size())));
        break;
    }
}

/** Writes to every second function, from `first` on. */
t_Worker Writer(const char* name, const t_Root& root, std::size_t first)
{
    std::vector<t_Property> properties;
    const auto functions = Functions(root);
    for (std::size_t i = first; i < functions.size(); i += 2)
    {
        const auto some = Properties(functions[i]);
        properties.insert(properties.end(), some.begin(), some.end());
    }
    return {name, [root, properties](t_Random& random)
            {
                if (random() % 8 != 0)
                {
                    WriteSomething(*properties[Below(random, properties.size())], random);
                    return;
                }
                CKWTransaction transaction(root, QStringLiteral("several"));
                for (int i = 0; i < 4; ++i)
                {
                    WriteSomething(*properties[Below(random, properties.size())], random);
                }
                if (random() % 4 != 0)
                {
                    transaction.Commit();
                }
            }};
}

t_Worker Reader(const char* name, const t_Root& root, CVerdict& verdict)
{
    return {name, [root, functions = Functions(root), &verdict](t_Random& random)
            {
                const t_Group group = functions[Below(random, functions.size())];
                const CKWReadBracket together(root);
                CheckLimits(Properties(group), verdict);
            }};
}

void ChangeMap(IKWMapBase& map, t_Random& random)
{
    const QStringList names = map.GetNames();
    const QString name = names.isEmpty() ? QString() : names.at(Below(random, names.size()));
    const QString other = QStringLiteral("n%1").arg(Below(random, 30));
    switch (names.size() > kMostItems ? 0U : random() % 5)
    {
    case 0:
        map.Remove(name);
        break;
    case 1:
        map.Rename(name, other);
        break;
    case 2:
        map.Copy(name, map.IsNameValid(other) && !names.contains(other) ? other : QString());
        break;
    case 3:
        map.SetActive(name);
        break;
    default:
        map.Insert(QString());
        break;
    }
}

void ChangeArray(IKWArrayBase& array, t_Random& random)
{
    const INT32 count = array.GetCount();
    if (count > kMostItems)
    {
        array.Remove(0, count / 2);
        return;
    }
    random() % 3 == 0 && count > 0 ? array.Remove(Below(random, count), 1)
                                   : array.Insert(Below(random, count + 1));
}

t_Worker Containers(const t_Root& root)
{
    const auto bus = root->GetPgSerialBus();
    return {
        "containers",
        [labels = bus->GetPgCANBusSettings()->GetPgLabelListSettings()->GetPgSerialBusLabelItem(),
         frames = bus->GetPgCANBusResults()->GetPgCANBusFrame()](t_Random& random)
        { random() % 2 == 0 ? ChangeMap(*labels, random) : ChangeArray(*frames, random); }};
}

t_Worker Undo(const t_Root& root)
{
    return {"undo and redo",
            [root](t_Random& random) { random() % 2 == 0 ? root->Undo() : root->Redo(); }};
}

/** What was saved is what a recall brings back. */
t_Worker Files(const t_Root& root, const QString& folder, CVerdict& verdict)
{
    return {"save and recall", [root, folder, &verdict](t_Random& random)
            {
                const QString end = QLatin1String(random() % 2 == 0 ? ".xml" : ".csv");
                const QString first = folder + QStringLiteral("/first") + end;
                const CKWWriteBracket alone(root, eCLIENT_LOCAL);
                const QByteArray saved = SavedText(root, first, verdict);
                if (root->Recall(first) != eKW_ACC_OK)
                {
                    verdict.Violated(QStringLiteral("own file not recalled whole"));
                }
                if (SavedText(root, folder + QStringLiteral("/second") + end, verdict) != saved)
                {
                    QFile::copy(first, first + QStringLiteral(".kept"));
                    verdict.Violated(QStringLiteral("a recalled file saves differently: ") + first);
                }
            }};
}

/** Counters never run backwards, and what happened below a group happened below the root. */
t_Worker Poller(const t_Root& root, CVerdict& verdict)
{
    const auto groups = Functions(root);
    return {"polls", [root, groups, counters = std::vector<long long>(groups.size() + 1, -1),
                      &verdict](t_Random& random) mutable
            {
                const auto place = static_cast<std::size_t>(Below(random, counters.size()));
                long long& counter = counters[place];
                const long long before = counter;
                const bool changed = place < groups.size() ? groups[place]->HasChanged(counter)
                                                           : root->HasChanged(counter);
                if (counter < before || changed != (counter != before))
                {
                    verdict.Violated(QStringLiteral("a counter went from %1 to %2, changed: %3")
                                         .arg(before)
                                         .arg(counter)
                                         .arg(changed));
                }
                std::this_thread::yield();
            }};
}
/** Acquires whatever the settings ask for by now, not all of long records. */
t_Worker Acquirer(const std::shared_ptr<IKWAcquisition>& acquisition)
{
    return {"acquires", [acquisition](t_Random& random)
            {
                constexpr std::size_t kMostPoints = 20000;
                if (!KW_IsAccepted(acquisition->Arm()))
                {
                    return;
                }
                for (UINT32 place = 0; place < eKW_PLACE_COUNT; ++place)
                {
                    const auto room = acquisition->Reserve(place);
                    const UINT32 size =
                        KW_GetPointSize(acquisition->GetArmed().traces[place].format);
                    const std::size_t points = std::min(room.size() / size, kMostPoints);
                    std::fill_n(room.begin(), points * size, static_cast<std::byte>(random()));
                    acquisition->Advance(place, static_cast<UINT32>(points));
                }
                KW_AcquiredInfo info;
                info.triggerTime = static_cast<INT64>(random());
                acquisition->Publish(info);
            }};
}

/** Delivers and draws; what it sees is whole, and clears the history now and then. */
t_Worker Display(const t_Root& root, const std::shared_ptr<IKWAcquisition>& acquisition,
                 CVerdict& verdict)
{
    return {"delivers and draws",
            [root, acquisition, &verdict, columns = std::vector<KW_MinMax>(200),
             reader = std::shared_ptr<IKWStreamReader>(acquisition->GetStream()->MakeReader())](
                t_Random& random) mutable
            {
                acquisition->Deliver();
                const CKWRecord shown = acquisition->GetShown(*reader);
                for (UINT32 place = 0; place < eKW_PLACE_LINES && shown; ++place)
                {
                    const KW_TraceInfo trace = shown.GetTrace(place);
                    const KW_ACCEPTANCE code = shown.GetColumns(place, 0, 1000, columns);
                    if (!KW_IsAccepted(code) && trace.count > 0)
                    {
                        verdict.Violated(
                            QStringLiteral("a trace that can not be drawn: code %1").arg(code));
                    }
                }
                if (random() % 100 == 0)
                {
                    root->GetPgHistoryViewer()->GetPrClear()->Set();
                }
            }};
}
} // namespace

std::vector<t_Worker> MakeWorkers(const t_Root& root, const QString& folder, CVerdict& verdict)
{
    const auto acquisition = KW_MakeAcquisition(root, 64U << 20U);
    return {Acquirer(acquisition),
            Display(root, acquisition, verdict),
            Writer("writes to even functions", root, 0),
            Writer("writes to odd functions", root, 1),
            Reader("reads of a function", root, verdict),
            Reader("reads of another function", root, verdict),
            Containers(root),
            Undo(root),
            Files(root, folder, verdict),
            Poller(root, verdict)};
}

void RunWorkers(std::vector<t_Worker>& workers, double seconds, unsigned seed)
{
    std::atomic<bool> isOver{false};
    std::vector<std::thread> threads;
    for (t_Worker& worker : workers)
    {
        threads.emplace_back(
            [&worker, &isOver, own = seed++]
            {
                t_Random random(own);
                for (; !isOver; ++worker.rounds)
                {
                    worker.work(random);
                    // The lock is not fair: who never rests keeps it from the others.
                    std::this_thread::sleep_for(std::chrono::microseconds(random() % 50));
                }
            });
    }
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
    isOver = true;
    for (std::thread& thread : threads)
    {
        thread.join();
    }
}
