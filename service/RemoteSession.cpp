// SPDX-License-Identifier: MIT
#include "RemoteSession.h"

#include "IKWProperties.h"
#include "KWBrackets.h"
#include "KWTexts.h"
#include "RemoteContainers.h"
#include "RemoteHeaders.h"
#include "RemoteValues.h"

#include <algorithm>
#include <chrono>
#include <new>

namespace
{
using t_Clock = std::chrono::steady_clock;

t_RemoteError Refuse(eREMOTE_ERROR number, const char* detail)
{
    return {number, QString::fromLatin1(detail)};
}

t_RemoteError CheckCount(const std::vector<t_RemoteData>& data, int least, int most)
{
    const int count = static_cast<int>(data.size());
    return count < least  ? t_RemoteError{eREMOTE_MISSING_PARAMETER, QString()}
           : count > most ? t_RemoteError{eREMOTE_PARAMETER_NOT_ALLOWED, QString()}
                          : t_RemoteError{};
}

/** What follows a mistake of this kind in its message may mean something else than it says. */
bool EndsMessage(eREMOTE_ERROR number)
{
    return number <= -100 && number > -200;
}
} // namespace

CRemoteSession::CRemoteSession(std::shared_ptr<IKWFunctionRootBase> root,
                               std::shared_ptr<CRemoteTasks> tasks, t_RemoteOptions options,
                               std::function<void()> wake)
    : m_root(std::move(root)), m_tasks(std::move(tasks)), m_options(std::move(options)),
      m_wake(std::move(wake)), m_reader(m_options.bounds), m_status(m_options.bounds.errors)
{
}

CRemoteSession::~CRemoteSession()
{
    if (m_lockedOut && m_root->GetControlMode() == eCONTROL_LOCAL_LOCKOUT)
    {
        SetControl(eCONTROL_LOCAL);
    }
}

void CRemoteSession::Receive(const char* bytes, std::size_t count)
{
    m_reader.Add(bytes, count);
    Process();
}

QByteArray CRemoteSession::TakeAnswers()
{
    const QByteArray answers = std::exchange(m_answers, QByteArray());
    Process();
    return answers;
}

bool CRemoteSession::WantsInput() const
{
    return !m_hasMore && static_cast<std::size_t>(m_answers.size()) < m_options.bounds.answers &&
           m_reader.Waiting() < m_options.bounds.queued;
}

void CRemoteSession::Continue()
{
    Reap();
    Process();
}

void CRemoteSession::Process()
{
    const CKWClientOrigin remote(eCLIENT_REMOTE);
    const auto end = t_Clock::now() + std::chrono::milliseconds(m_options.bounds.turn);
    m_hasMore = false;
    while (!IsHeld() && static_cast<std::size_t>(m_answers.size()) < m_options.bounds.answers)
    {
        if (t_Clock::now() > end)
        {
            m_hasMore = true;
            return;
        }
        if (m_parser && !m_parser->IsAtEnd())
        {
            ExecuteNext();
            continue;
        }
        EndMessage();
        if (!m_reader.HasMessage())
        {
            return;
        }
        BeginMessage();
    }
}

void CRemoteSession::BeginMessage()
{
    CRemoteReader::t_Message message = m_reader.Take();
    if (!message.isWhole)
    {
        Report({eREMOTE_INPUT_OVERRUN, QString()});
        return;
    }
    m_path.clear();
    m_parser.emplace(std::move(message.bytes), m_options.bounds);
}

void CRemoteSession::EndMessage()
{
    m_parser.reset();
    if (std::exchange(m_hasAnswer, false))
    {
        m_answers += '\n';
    }
}

void CRemoteSession::ExecuteNext()
{
    t_RemoteUnit unit;
    t_RemoteError error;
    try
    {
        error = m_parser->Next(unit);
        error = error ? error : Execute(unit);
    }
    catch (const std::bad_alloc&)
    {
        error = {eREMOTE_OUT_OF_MEMORY, QString()};
    }
    Report(error);
    if (EndsMessage(error.number))
    {
        EndMessage();
    }
}

void CRemoteSession::Report(const t_RemoteError& error)
{
    if (!error)
    {
        if (!error.detail.isEmpty())
        {
            m_status.Warn(error.detail);
        }
        return;
    }
    m_status.Report(error);
    const auto newest = Top()->Find(QStringLiteral("Setup/RemoteControl/LastError"));
    const auto property = std::dynamic_pointer_cast<IDbProperty>(newest);
    const auto handle =
        property ? std::dynamic_pointer_cast<IKWStringProperty>(property->GetHandle()) : nullptr;
    if (handle)
    {
        handle->SetResult(QString::fromLatin1(NRemote::Format(error)).left(handle->GetMaxLength()));
    }
}

void CRemoteSession::Answer(const QByteArray& text)
{
    m_answers += std::exchange(m_hasAnswer, true) ? ";" + text : text;
}

void CRemoteSession::Reap()
{
    const auto ended = std::stable_partition(m_running.begin(), m_running.end(),
                                             [](const auto& task) { return !task->isDone; });
    for (auto task = ended; task != m_running.end(); ++task)
    {
        Report((*task)->error);
    }
    m_running.erase(ended, m_running.end());
    if (m_running.empty() && std::exchange(m_marksCompletion, false))
    {
        m_status.Complete();
    }
    if (m_running.empty() && std::exchange(m_waitsForAll, false) &&
        std::exchange(m_answersCompletion, false))
    {
        Answer("1");
    }
    if (m_held && m_held->isDone)
    {
        const auto held = std::exchange(m_held, nullptr);
        std::exchange(m_after, nullptr)(held->error);
    }
}

t_RemoteError CRemoteSession::Execute(const t_RemoteUnit& unit)
{
    if (unit.isCommon)
    {
        return ExecuteCommand(CommonCommands(), unit.words, unit);
    }
    std::vector<QByteArray> words = unit.isAbsolute ? std::vector<QByteArray>() : m_path;
    words.insert(words.end(), unit.words.begin(), unit.words.end());
    if (static_cast<int>(words.size()) > m_options.bounds.depth)
    {
        return Refuse(eREMOTE_UNDEFINED_HEADER, "too many words");
    }
    m_path.assign(words.begin(), words.end() - 1);
    if (words[0] == "SYST" || words[0] == "SYSTEM")
    {
        return ExecuteCommand(SystemCommands(), words, unit);
    }
    return words[0] == "STAT" || words[0] == "STATUS"
               ? ExecuteCommand(StatusCommands(), words, unit)
               : ExecuteNode(words, unit);
}

t_RemoteError CRemoteSession::ExecuteCommand(std::span<const t_Command> commands,
                                             const std::vector<QByteArray>& words,
                                             const t_RemoteUnit& unit)
{
    const auto found = std::find_if(commands.begin(), commands.end(),
                                    [&](const t_Command& command) {
                                        return command.isQuery == unit.isQuery &&
                                               NRemote::IsHeader(command.header, words);
                                    });
    if (found == commands.end())
    {
        return {eREMOTE_UNDEFINED_HEADER, QString::fromLatin1(words.back())};
    }
    if (const t_RemoteError error = CheckCount(unit.data, found->least, found->most))
    {
        return error;
    }
    return found->writes && m_options.readOnly
               ? Refuse(eREMOTE_NO_WRITE_ACCESS, "the service only reads")
               : (this->*found->step)(unit);
}

t_RemoteError CRemoteSession::ExecuteNode(const std::vector<QByteArray>& words,
                                          const t_RemoteUnit& unit)
{
    t_RemoteTarget target;
    if (const t_RemoteError error = m_tree.Find(Top(), words, target))
    {
        return error;
    }
    if (m_options.readOnly && !unit.isQuery)
    {
        return Refuse(eREMOTE_NO_WRITE_ACCESS, "the service only reads");
    }
    if (!target.command.isEmpty())
    {
        QByteArray answer;
        const t_RemoteError error = NRemote::ExecuteContainer(static_cast<IDbGroup&>(*target.node),
                                                              target.command, unit, answer);
        if (!error && unit.isQuery)
        {
            Answer(answer);
        }
        return error;
    }
    return target.node->GetKind() == eKW_NODE_PROPERTY
               ? ExecuteProperty(static_cast<IDbProperty&>(*target.node), unit)
               : ExecuteAction(std::static_pointer_cast<IDbAction>(target.node), unit);
}

t_RemoteError CRemoteSession::ExecuteProperty(IDbProperty& property, const t_RemoteUnit& unit)
{
    if (!unit.isQuery)
    {
        if (const t_RemoteError error = CheckCount(unit.data, 1, 1))
        {
            return error;
        }
        t_RemoteError error =
            NRemote::Write(property, unit.data[0], CFilesFolder(m_root->GetSettingsFolder()));
        if (!error && !error.detail.isEmpty())
        {
            error.detail = property.GetPath() + QStringLiteral(": ") + error.detail +
                           QStringLiteral("; it stands at ") +
                           KW_FormatValue(KW_GetValueText(property));
        }
        return error;
    }
    QByteArray answer;
    const t_RemoteError error = NRemote::Read(property, unit.data, answer);
    if (!error)
    {
        Answer(answer);
    }
    return error;
}

t_RemoteError CRemoteSession::ExecuteAction(const std::shared_ptr<IDbAction>& action,
                                            const t_RemoteUnit& unit)
{
    if (unit.isQuery)
    {
        return Refuse(eREMOTE_UNDEFINED_HEADER, "an action has no query");
    }
    if (const t_RemoteError error = CheckCount(unit.data, 0, 0))
    {
        return error;
    }
    t_Work work = [action] { return NRemote::ErrorOf(action->Execute()); };
    if (action->GetKind() != eKW_NODE_OPERATION)
    {
        return Hold(std::move(work), {});
    }
    const bool isRoom = static_cast<int>(m_running.size()) < m_options.bounds.operations;
    const auto task = isRoom ? Start(std::move(work)) : nullptr;
    if (!task)
    {
        return Refuse(eREMOTE_EXECUTION, "too many operations run");
    }
    m_running.push_back(task);
    return {};
}

std::shared_ptr<const CRemoteTasks::t_Task> CRemoteSession::Start(t_Work work)
{
    return m_tasks->Start(
        [work = std::move(work)]
        {
            const CKWClientOrigin remote(eCLIENT_REMOTE);
            return work();
        },
        m_wake);
}

t_RemoteError CRemoteSession::Hold(t_Work work, t_After after)
{
    m_after = after ? std::move(after) : [this](const t_RemoteError& error) { Report(error); };
    m_held = Start(std::move(work));
    return m_held ? t_RemoteError{} : Refuse(eREMOTE_EXECUTION, "too many operations run");
}
