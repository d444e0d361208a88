// SPDX-License-Identifier: MIT
#include "RemoteSession.h"
#include "ServiceTargets.h"

#include <algorithm>
#include <thread>

namespace
{
/** Small, so that every bound is met; turns do not end, as a try must not depend on the time. */
t_RemoteOptions SmallOptions()
{
    t_RemoteOptions options;
    options.bounds.message = 500;
    options.bounds.answers = 2000;
    options.bounds.queued = 400;
    options.bounds.errors = 4;
    options.bounds.depth = 6;
    options.bounds.parameters = 4;
    options.bounds.operations = 2;
    options.bounds.turn = 60000;
    return options;
}

QList<QByteArray> Messages(CRemoteReader& reader)
{
    QList<QByteArray> messages;
    while (reader.HasMessage())
    {
        const CRemoteReader::t_Message message = reader.Take();
        messages.append((message.isWhole ? "+" : "-") + message.bytes);
    }
    return messages;
}

void TryReader(const QByteArray& bytes, const t_RemoteBounds& bounds)
{
    CRemoteReader whole(bounds);
    whole.Add(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    CRemoteReader pieces(bounds);
    for (int i = 0, length = 1; i < bytes.size(); i += length, length = 1 + i % 7)
    {
        pieces.Add(bytes.constData() + i, static_cast<std::size_t>(std::min<int>(
                                              length, static_cast<int>(bytes.size()) - i)));
    }
    const bool isSame = whole.Waiting() == pieces.Waiting() &&
                        whole.IsInMessage() == pieces.IsInMessage() &&
                        whole.EndedMessages() == pieces.EndedMessages();
    const QList<QByteArray> messages = Messages(whole);
    KW_Require(isSame && messages == Messages(pieces), "pieces read differently", bytes);
    KW_Require(whole.Waiting() == 0, "messages that were taken wait", bytes);
    for (const QByteArray& message : messages)
    {
        CRemoteParser parser(message.mid(1), bounds);
        for (int i = 0; !parser.IsAtEnd(); ++i)
        {
            t_RemoteUnit unit;
            const t_RemoteError error = parser.Next(unit);
            KW_Require(i <= message.size(), "a command without bytes", bytes);
            KW_Require(error || !unit.words.empty(), "a command without words", bytes);
            KW_Require(!error || parser.IsAtEnd(), "something behind a mistake", bytes);
        }
    }
}

/** All that is answered until nothing is under way. */
QByteArray Settle(CRemoteSession& session, const QByteArray& bytes)
{
    QByteArray all;
    for (int waits = 0; session.IsWaiting() || session.HasMore(); ++waits)
    {
        session.Continue();
        const QByteArray answers = session.TakeAnswers();
        KW_Require(answers.size() < 1000000, "an answer beyond its bound", bytes);
        all += answers;
        if (session.IsWaiting())
        {
            KW_Require(waits < 100000, "waits for ever", bytes);
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        }
    }
    return all;
}

QByteArray Ask(CRemoteSession& session, const QByteArray& bytes)
{
    session.Receive(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return session.TakeAnswers() + Settle(session, bytes);
}
} // namespace

void KW_TryRemoteMessages(const QByteArray& bytes)
{
    constexpr int kMost = 4096; // more find no more, and cost the time of other tries
    const QByteArray sent = bytes.left(kMost);
    const t_RemoteOptions options = SmallOptions();
    TryReader(sent, options.bounds);
    const auto root = KW_MakeServedTree();
    const auto tasks = std::make_shared<CRemoteTasks>(4);
    {
        CRemoteSession session(root, tasks, options, [] {});
        Ask(session, sent);
    }
    KW_Require(root->GetControlMode() != eCONTROL_LOCAL_LOCKOUT, "keys stay locked", sent);
    CRemoteSession other(root, tasks, options, [] {});
    KW_Require(Ask(other, "*CLS;SYST:ERR?;:*OPC?\n*OPC?\n") == "0,\"No error\"\n1\n",
               "another client is not answered", sent);
}
