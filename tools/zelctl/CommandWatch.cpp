// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "NodeText.h"
#include "Snapshot.h"

#include <QJsonArray>
#include <chrono>
#include <thread>

namespace
{
constexpr char kWatchFooter[] =
    "Shows what changes at and below the nodes, as \"--trace\" does, until it is ended. Of a "
    "setting\n"
    "that changes twice between two looks the last value is shown.\n"
    "\n"
    "Example:\n"
    "  zelctl --connect localhost watch Meter Trigger/State";

struct t_WatchOptions
{
    std::vector<std::string> paths;
    int count = 0;
    int milliseconds = 100;

    void Declare(CLI::App& command)
    {
        command.add_option("path", paths, "Properties, or groups with all that is below them")
            ->required();
        command.add_option("-n,--count", count, "End after this many changes; 0 for none");
        command.add_option("--every", milliseconds, "Milliseconds between two looks")
            ->check(CLI::Range(10, 60000))
            ->capture_default_str();
    }

    t_Answer Run(CSession& session) const;

private:
    static int Look(CSession& session, const std::vector<QString>& wanted, CSnapshot& known);
    static CSnapshot TakeStates(CSession& session, const std::vector<QString>& wanted);
};

CSnapshot t_WatchOptions::TakeStates(CSession& session, const std::vector<QString>& wanted)
{
    CSnapshot states;
    for (const QString& path : wanted)
    {
        const auto node = session.Find(path);
        auto* const group = dynamic_cast<IDbGroup*>(node.get());
        states.Add(TakeState(*node));
        if (group != nullptr)
        {
            states.AddAllBelow(*group);
        }
    }
    return states;
}

/** How many changes there were since the last look. */
int t_WatchOptions::Look(CSession& session, const std::vector<QString>& wanted, CSnapshot& known)
{
    session.Refresh();
    CSnapshot now = TakeStates(session, wanted);
    const std::vector<t_Change> changes = Compare(known, now);
    for (const t_Change& change : changes)
    {
        CReply reply(session, QStringLiteral("watch"));
        reply.Line(ShowChange(change, session.GetStyle().exact))
            .Field("changes", QJsonArray{ToJson(change)})
            .Send();
    }
    session.GetOutput().Finish();
    known = std::move(now);
    return static_cast<int>(changes.size());
}

t_Answer t_WatchOptions::Run(CSession& session) const
{
    if (!session.IsConnected())
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("a private tree has nobody else to watch; "
                                                     "\"--connect HOST\" reaches a living one"));
    }
    std::vector<QString> wanted;
    for (const std::string& path : paths)
    {
        wanted.push_back(session.Find(ToText(path))->GetPath());
    }
    CSnapshot known = TakeStates(session, wanted);
    for (int shown = 0; (count <= 0 || shown < count) && !session.GetOutput().IsClosed();)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
        shown += Look(session, wanted, known);
    }
    return {};
}
} // namespace

void AddWatchCommand(CLI::App& app, t_Run& run)
{
    AddCommand<t_WatchOptions>(app, run, "watch", "Show changes as they come", kWatchFooter);
}
