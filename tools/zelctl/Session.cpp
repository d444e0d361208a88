// SPDX-License-Identifier: MIT
#include "Session.h"

#include "AcceptanceNames.h"
#include "CommandLine.h"
#include "IKWFunctionZEL.h"
#include "LivingTree.h"
#include "NearestNames.h"
#include "TreeWalk.h"
#include "TreeWatch.h"

#include <QFile>
#include <QJsonArray>
#include <algorithm>
#include <utility>

namespace
{
/** Longest beginning of a path that leads to a node; may be the root. */
std::shared_ptr<IDbObject> FindStart(IDbGroup& tree, const QString& path, QString& rest)
{
    auto end = path.size();
    std::shared_ptr<IDbObject> node;
    while (!node)
    {
        end = std::max({path.lastIndexOf(QLatin1Char('/'), end - 1),
                        path.lastIndexOf(QLatin1Char('['), end - 1), decltype(end){0}});
        node = tree.Find(path.left(end));
    }
    rest = path.mid(end);
    return node;
}

QByteArray ReadToken(const QString& fileName)
{
    if (fileName.isEmpty())
    {
        return {};
    }
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("can not read the token \"%1\": %2")
                                          .arg(file.fileName(), file.errorString()));
    }
    return file.readLine(4096).trimmed();
}

} // namespace

CSession::CSession(COutput& output)
    : m_output(output), m_lines(std::make_unique<CCommandLines>(*this))
{
}

CSession::~CSession()
{
    if (m_inTransaction)
    {
        End(false);
    }
}

IKWFunctionRootBase& CSession::GetRoot()
{
    if (!m_root)
    {
        Enter(GetZELRoot());
    }
    return *m_root;
}

void CSession::Enter(std::shared_ptr<IKWFunctionRootBase> root)
{
    m_root = std::move(root);
    m_tree = m_root->GetDbObject();
}

void CSession::Connect(const QString& place, const QString& tokenFile)
{
    m_living = std::make_shared<CLivingTree>(CHttpClient(place, ReadToken(tokenFile)));
    Enter(m_living);
}

CWebSocket CSession::Follow(const QStringList& paths) const
{
    return m_living->Follow(paths);
}

void CSession::Refresh()
{
    if (m_living)
    {
        m_living->Forget();
    }
}

CSession::CTrial::CTrial(CSession& session) : m_session(session), m_root(session.m_root)
{
    if (session.m_living)
    {
        session.Enter(session.m_living->MakeCopy());
    }
}

KW_ACCEPTANCE CSession::CTrial::Keep(const QString& path, const QString& text) const
{
    return m_session.m_living ? m_session.m_living->TakeFromCopy(path, text)
                              : static_cast<KW_ACCEPTANCE>(eKW_ACC_OK);
}

CSession::CTrial::~CTrial()
{
    if (m_session.m_living)
    {
        m_session.Enter(m_root);
    }
}

IDbGroup& CSession::GetTree()
{
    GetRoot();
    return *m_tree;
}

CTreeWatch& CSession::GetWatch()
{
    if (!m_watch)
    {
        GetRoot();
        m_watch = std::make_unique<CTreeWatch>(m_tree);
    }
    return *m_watch;
}

std::shared_ptr<IDbObject> CSession::Find(const QString& path)
{
    constexpr int kLongestPath = 4096;
    if (path.size() > kLongestPath)
    {
        throw CFailure(eSTATUS_USAGE,
                       QStringLiteral("no node \"%1…\": a path of %2 characters is too long")
                           .arg(path.left(40))
                           .arg(path.size()));
    }
    QString clean = path == QLatin1String(".") ? QString() : path;
    while (clean.endsWith(QLatin1Char('/')))
    {
        clean.chop(1);
    }
    auto node = GetTree().Find(clean);
    if (!node)
    {
        throw Missing(clean);
    }
    return node;
}

CFailure CSession::Missing(const QString& path)
{
    QString rest;
    const auto start = FindStart(GetTree(), path, rest);
    auto* const group = dynamic_cast<IDbGroup*>(start.get());
    const IDbContainer* const container = group != nullptr ? group->AsContainer() : nullptr;
    const QString what = QStringLiteral("no node \"%1\"").arg(path);
    if (container != nullptr && rest.startsWith(QLatin1Char('[')))
    {
        return {eSTATUS_USAGE, what + QStringLiteral("; ") + DescribeItems(*group, *container)};
    }
    const QStringList nearest = GetNearestNames(path, GetAllPaths(GetTree()));
    return {eSTATUS_USAGE,
            what +
                (nearest.isEmpty()
                     ? QStringLiteral("; \"zelctl tree --find TEXT\" searches by a part of a name")
                     : DidYouMean(nearest))};
}

template <typename TNode>
std::shared_ptr<TNode> CSession::FindKind(const QString& path, const char* wanted)
{
    const auto node = Find(path);
    auto found = std::dynamic_pointer_cast<TNode>(node);
    if (!found)
    {
        const QString name =
            node->GetPath().isEmpty() ? QStringLiteral("the root") : node->GetPath();
        const QString kind = GetKindText(node->GetKind());
        const bool vowel = QLatin1String("aeio").contains(kind.front());
        throw CFailure(eSTATUS_USAGE,
                       QStringLiteral("%1 is %2 %3, not %4")
                           .arg(name, vowel ? QLatin1String("an") : QLatin1String("a"), kind,
                                QLatin1String(wanted)));
    }
    return found;
}

std::shared_ptr<IDbProperty> CSession::FindProperty(const QString& path)
{
    return FindKind<IDbProperty>(path, "a property");
}

std::shared_ptr<IDbGroup> CSession::FindGroup(const QString& path)
{
    return FindKind<IDbGroup>(path, "a group");
}

std::shared_ptr<IDbContainer> CSession::FindContainer(const QString& path)
{
    return FindKind<IDbContainer>(path, "an array or map");
}

std::shared_ptr<IDbAction> CSession::FindAction(const QString& path)
{
    return FindKind<IDbAction>(path, "an action");
}

void CSession::SetStyle(const t_Style& style)
{
    m_style = style;
    m_output.KeepReports(style.json);
}

KW_History CSession::GetHistory()
{
    return m_living ? m_living->GetHistory() : KW_GetHistory(GetRoot());
}

KW_ACCEPTANCE CSession::Undo(int steps)
{
    return m_living ? m_living->UndoSteps(steps) : KW_UndoSteps(GetRoot(), steps);
}

KW_ACCEPTANCE CSession::Redo(int steps)
{
    return m_living ? m_living->RedoSteps(steps) : KW_RedoSteps(GetRoot(), steps);
}

void CSession::Begin(const QString& text)
{
    if (m_inTransaction)
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("\"begin\" stands inside another one; "
                                                     "close it with \"commit\" or \"rollback\""));
    }
    GetRoot().StartTransaction(text);
    m_inTransaction = true;
}

KW_ACCEPTANCE CSession::End(bool keep)
{
    if (!std::exchange(m_inTransaction, false))
    {
        throw CFailure(eSTATUS_USAGE,
                       QStringLiteral("\"%1\" needs a \"begin\" before it")
                           .arg(keep ? QLatin1String("commit") : QLatin1String("rollback")));
    }
    return GetRoot().EndTransaction(keep);
}

QString DescribeItems(const IDbGroup& group, const IDbContainer& container)
{
    const INT32 count = container.GetCount();
    if (count == 0)
    {
        return group.GetPath() + QStringLiteral(" has no items");
    }
    const auto key = [&container](INT32 position)
    { return GetStep(*container.GetItemByPosition(position)); };
    const QString last = count > 1 ? QStringLiteral(" … ") + key(count - 1) : QString();
    return QStringLiteral("%1 has %2 %3: %4%5")
        .arg(group.GetPath())
        .arg(count)
        .arg(count == 1 ? QLatin1String("item") : QLatin1String("items"), key(0), last);
}
CFailure Refuse(KW_ACCEPTANCE code, const QString& what, const QString& detail)
{
    return {code, QStringLiteral("refused: %1: %2%3")
                      .arg(what, DescribeAcceptance(code),
                           detail.isEmpty() ? QString() : QStringLiteral("; ") + detail)};
}

void Require(KW_ACCEPTANCE code, const QString& what, const QString& detail)
{
    if (!KW_IsAccepted(code))
    {
        throw Refuse(code, what, detail);
    }
}

CReply::CReply(CSession& session, const QString& command) : m_session(session)
{
    Field("command", command);
}

CReply& CReply::Line(const QString& text)
{
    m_lines.append(text);
    return *this;
}

CReply& CReply::Lines(const QStringList& texts)
{
    m_lines += texts;
    return *this;
}

t_Answer CReply::Send(KW_ACCEPTANCE code, eSTATUS status)
{
    if (IsDocument())
    {
        Field("code", static_cast<int>(code));
        if (code == eKW_ACC_WARNING)
        {
            Field("warning", KW_GetAcceptanceText(code));
        }
        const QStringList reports = m_session.GetOutput().TakeReports();
        if (!reports.isEmpty())
        {
            Field("reports", QJsonArray::fromStringList(reports));
        }
        m_session.GetOutput().Document(m_document);
        return {status, code};
    }
    for (const QString& line : m_lines)
    {
        m_session.GetOutput().Line(line);
    }
    return {status, code};
}
