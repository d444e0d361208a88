// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "Interrupt.h"
#include "Snapshot.h"
#include "Socket.h"
#include "WebSocket.h"

#include <QJsonArray>
#include <optional>

namespace
{
constexpr char kWatchFooter[] =
    "Shows what changes at and below the nodes, as \"--trace\" does, until it is interrupted. Of\n"
    "what changes twice within a twentieth of a second the last value is shown. When the service "
    "is\n"
    "lost, it is awaited; what has changed meanwhile is shown when it answers again.\n"
    "\n"
    "Example:\n"
    "  zelctl --connect localhost watch Meter Trigger/State";

/** Watches some nodes of a living tree. The service tells that something has changed, the tree what
    it is: so a connection that was lost, and a service that was started again, are no other case
    than a change. */
class CWatch
{
public:
    /** Fails where no service answers. */
    CWatch(CSession& session, QStringList paths);
    /** Waits for changes and shows them; gives their number, which is 0 for what is none, and when
       it is interrupted. */
    int ShowNext();

private:
    void Resume();
    int Look();
    CSnapshot TakeStates();
    /** Something about the watching itself. */
    void Tell(const char* field, const QString& text);

    CSession& m_session;
    const QStringList m_paths;
    std::optional<CWebSocket> m_changes; ///< none while the service is lost
    CSnapshot m_known;
};

struct t_WatchOptions
{
    std::vector<std::string> paths;
    int count = 0;

    void Declare(CLI::App& command)
    {
        command.add_option("path", paths, "Properties, or groups with all that is below them")
            ->required();
        command.add_option("-n,--count", count,
                           "End when so many changes have come, or more at once; 0 for never");
    }

    t_Answer Run(CSession& session) const;
};

CWatch::CWatch(CSession& session, QStringList paths)
    : m_session(session), m_paths(std::move(paths)), m_changes(session.Follow(m_paths))
{
    m_session.Refresh();
    m_known = TakeStates();
}

CSnapshot CWatch::TakeStates()
{
    CSnapshot states;
    for (const QString& path : m_paths)
    {
        // An item may be gone, and come again.
        if (const auto node = m_session.GetTree().Find(path))
        {
            states.Add(TakeState(*node));
            if (auto* const group = dynamic_cast<IDbGroup*>(node.get()))
            {
                states.AddAllBelow(*group);
            }
        }
    }
    return states;
}

int CWatch::Look()
{
    m_session.Refresh();
    CSnapshot now = TakeStates();
    const std::vector<t_Change> changes = Compare(m_known, now);
    for (const t_Change& change : changes)
    {
        CReply reply(m_session, QStringLiteral("watch"));
        reply.Line(ShowChange(change, m_session.GetStyle().exact))
            .Field("changes", QJsonArray{ToJson(change)})
            .Send();
    }
    m_session.GetOutput().Finish();
    m_known = std::move(now);
    return static_cast<int>(changes.size());
}

void CWatch::Resume()
{
    m_changes.emplace(m_session.Follow(m_paths));
    Tell("resumed", QStringLiteral("the service answers again"));
}

void CWatch::Tell(const char* field, const QString& text)
{
    if (m_session.GetStyle().json)
    {
        CReply(m_session, QStringLiteral("watch")).Field(field, text).Send();
        m_session.GetOutput().Finish();
        return;
    }
    m_session.GetOutput().Problem(QStringLiteral("zelctl: ") + text);
}

int CWatch::ShowNext()
{
    constexpr int kPause = 500; // milliseconds
    try
    {
        if (m_changes)
        {
            m_changes->Take();
            return Look();
        }
        Resume();
        return Look();
    }
    catch (const CLostService& lost)
    {
        if (m_changes && !CInterruptGuard::IsInterrupted())
        {
            Tell("lost", lost.GetText() + QStringLiteral("; waiting for it"));
        }
        m_changes.reset();
        CInterruptGuard::WaitFor(-1, kPause);
        return 0;
    }
}

t_Answer t_WatchOptions::Run(CSession& session) const
{
    if (!session.IsConnected())
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("a private tree has nobody else to watch; "
                                                     "\"--connect HOST\" reaches a living one"));
    }
    QStringList wanted;
    for (const std::string& path : paths)
    {
        wanted.append(session.Find(ToText(path))->GetPath());
    }
    const CInterruptGuard guard;
    CWatch watch(session, wanted);
    for (int shown = 0; (count <= 0 || shown < count) && !session.GetOutput().IsClosed() &&
                        !CInterruptGuard::IsInterrupted();)
    {
        shown += watch.ShowNext();
    }
    return {};
}
} // namespace

void AddWatchCommand(CLI::App& app, t_Run& run)
{
    AddCommand<t_WatchOptions>(app, run, "watch", "Show changes as they come", kWatchFooter);
}
