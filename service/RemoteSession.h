// SPDX-License-Identifier: MIT
#pragma once

#include "IKWFunctionRootBase.h"
#include "RemoteConditions.h"
#include "RemoteMessage.h"
#include "RemoteStatus.h"
#include "RemoteTasks.h"
#include "RemoteTree.h"

#include <functional>
#include <memory>
#include <optional>
#include <span>

/** What a server decides for all connections. */
struct t_RemoteOptions
{
    t_RemoteBounds bounds;
    QString manufacturer = QStringLiteral("KWI"); ///< first field of *IDN?
    bool readOnly = false;                        ///< nothing is written and no action runs
};

/**
 * One connection of remote control: takes the bytes that a client sends, gives those to send back.
 * It knows no network, so that any transport can carry it.
 *
 * Messages are those of IEEE 488.2 and SCPI-1999. Each command is a write of its own: no bracket
 * outlives it, so that a client that stops in the middle holds nobody up. A command that takes its
 * time runs on a thread of its own (CRemoteTasks); what follows it waits, for a function until it
 * has ended, for an operation where *WAI or *OPC? says so.
 *
 * To be used by one thread at a time. `wake` is called from other threads when something that the
 * session waits for has ended: the transport then calls Continue. It may come after the session.
 */
class CRemoteSession
{
public:
    CRemoteSession(std::shared_ptr<IKWFunctionRootBase> root, std::shared_ptr<CRemoteTasks> tasks,
                   t_RemoteOptions options, std::function<void()> wake);
    /** Gives the keys back if this connection took them. */
    ~CRemoteSession();
    CRemoteSession(const CRemoteSession&) = delete;
    CRemoteSession& operator=(const CRemoteSession&) = delete;

    /** Takes bytes in pieces of any size and does what it can. */
    void Receive(const char* bytes, std::size_t count);
    /** The bytes to send, each once; goes on where it had stopped because they were too many. */
    QByteArray TakeAnswers();
    /** False while so much is waiting that the transport should read no more. */
    bool WantsInput() const;
    /** Whether it waits for something that was started. */
    bool IsWaiting() const { return m_held != nullptr || m_waitsForAll || !m_running.empty(); }
    /** Whether it stopped only to let others have their turn, or has answers again: the transport
        calls Continue soon. */
    bool HasMore() const { return m_hasMore || !m_answers.isEmpty(); }
    /** Goes on after `wake`, and after its turn was over. */
    void Continue();
    /** Whether a message has begun whose end has not come. */
    bool IsInMessage() const { return m_reader.IsInMessage(); }
    /** Messages that have ended so far, carried out or not. */
    std::size_t EndedMessages() const { return m_reader.EndedMessages(); }
    /** Whether something has asked for conditions, so that they are to be observed. */
    bool WantsConditions() const { return m_conditions.has_value(); }
    /** Notes the conditions of the tree, so that none that has gone again is missed. */
    void Observe(const t_RemoteConditions& conditions);

private:
    using t_Work = std::function<t_RemoteError()>;
    using t_After = std::function<void(const t_RemoteError&)>;
    using t_Step = t_RemoteError (CRemoteSession::*)(const t_RemoteUnit&);
    struct t_Command
    {
        const char* header; ///< its short form in capitals
        bool isQuery;
        int least; ///< parameters
        int most;
        bool writes;
        t_Step step;
    };
    static std::span<const t_Command> CommonCommands();
    static std::span<const t_Command> SystemCommands();
    static std::span<const t_Command> StatusCommands();

    void Process();
    void BeginMessage();
    void EndMessage();
    void ExecuteNext();
    bool IsHeld() const { return m_held != nullptr || m_waitsForAll; }
    void Report(const t_RemoteError& error);
    void Answer(const QByteArray& text);
    /** Ends what has ended. */
    void Reap();

    t_RemoteError Execute(const t_RemoteUnit& unit);
    t_RemoteError ExecuteCommand(std::span<const t_Command> commands,
                                 const std::vector<QByteArray>& words, const t_RemoteUnit& unit);
    t_RemoteError ExecuteNode(const std::vector<QByteArray>& words, const t_RemoteUnit& unit);
    t_RemoteError ExecuteProperty(IDbProperty& property, const t_RemoteUnit& unit);
    t_RemoteError ExecuteAction(const std::shared_ptr<IDbAction>& action, const t_RemoteUnit& unit);

    /** Runs `work` while all that follows waits, then `after` with its error. */
    t_RemoteError Hold(t_Work work, t_After after);
    std::shared_ptr<const CRemoteTasks::t_Task> Start(t_Work work);
    std::shared_ptr<IDbGroup> Top() const { return m_root->GetDbObject(); }
    QString TextAt(const char* path) const;
    void SetControl(KW_CONTROL_MODE mode);

    t_RemoteError ClearStatus(const t_RemoteUnit& unit);
    t_RemoteError SetEventMask(const t_RemoteUnit& unit);
    t_RemoteError GetEventMask(const t_RemoteUnit& unit);
    t_RemoteError TakeEvents(const t_RemoteUnit& unit);
    t_RemoteError Identify(const t_RemoteUnit& unit);
    t_RemoteError MarkCompletion(const t_RemoteUnit& unit);
    t_RemoteError AskCompletion(const t_RemoteUnit& unit);
    t_RemoteError Reset(const t_RemoteUnit& unit);
    t_RemoteError SetServiceMask(const t_RemoteUnit& unit);
    t_RemoteError GetServiceMask(const t_RemoteUnit& unit);
    t_RemoteError GetStatusByte(const t_RemoteUnit& unit);
    t_RemoteError Test(const t_RemoteUnit& unit);
    t_RemoteError Wait(const t_RemoteUnit& unit);
    t_RemoteError Save(const t_RemoteUnit& unit);
    t_RemoteError Recall(const t_RemoteUnit& unit);
    t_RemoteError UseSlot(const t_RemoteUnit& unit, const char* action);
    t_RemoteError Learn(const t_RemoteUnit& unit);

    template <t_RemoteRegister CRemoteStatus::*Register>
    t_RemoteError TakeEvent(const t_RemoteUnit& unit);
    template <t_RemoteRegister CRemoteStatus::*Register>
    t_RemoteError GetCondition(const t_RemoteUnit& unit);
    template <t_RemoteRegister CRemoteStatus::*Register>
    t_RemoteError SetEnable(const t_RemoteUnit& unit);
    template <t_RemoteRegister CRemoteStatus::*Register>
    t_RemoteError GetEnable(const t_RemoteUnit& unit);
    t_RemoteError PresetStatus(const t_RemoteUnit& unit);
    t_RemoteError TakeWarning(const t_RemoteUnit& unit);
    void ObserveNow();

    t_RemoteError NextError(const t_RemoteUnit& unit);
    t_RemoteError AllErrors(const t_RemoteUnit& unit);
    t_RemoteError CountErrors(const t_RemoteUnit& unit);
    t_RemoteError GetVersion(const t_RemoteUnit& unit);
    t_RemoteError TakeControl(const t_RemoteUnit& unit);
    t_RemoteError GiveControl(const t_RemoteUnit& unit);
    t_RemoteError LockOut(const t_RemoteUnit& unit);
    t_RemoteError ListHeaders(const t_RemoteUnit& unit);
    t_RemoteError SetAll(const t_RemoteUnit& unit);

    const std::shared_ptr<IKWFunctionRootBase> m_root;
    const std::shared_ptr<CRemoteTasks> m_tasks;
    const t_RemoteOptions m_options;
    const std::function<void()> m_wake;
    CRemoteReader m_reader;
    CRemoteStatus m_status;
    CRemoteTree m_tree;
    std::optional<CRemoteConditions> m_conditions; ///< once something asked for them
    std::optional<CRemoteParser> m_parser;         ///< of the message that is being carried out
    std::vector<QByteArray> m_path;                ///< where a header without ":" begins
    QByteArray m_answers;
    bool m_hasAnswer = false; ///< of the present message
    std::shared_ptr<const CRemoteTasks::t_Task> m_held;
    t_After m_after;
    std::vector<std::shared_ptr<const CRemoteTasks::t_Task>> m_running; ///< operations
    bool m_waitsForAll = false;
    bool m_answersCompletion = false; ///< what waits is *OPC?
    bool m_marksCompletion = false;   ///< *OPC came and waits for the operations
    bool m_lockedOut = false;         ///< this connection took the keys
    bool m_hasMore = false;
};
