// SPDX-License-Identifier: MIT
#include "JsonChanges.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QUuid>
#include <algorithm>
#include <utility>

namespace
{
constexpr std::size_t kEntryBytes = 128; // beside its texts

bool IsBelow(const QString& path, const QString& top)
{
    return top.isEmpty() || (path.startsWith(top) &&
                             (path.size() == top.size() || path[top.size()] == QLatin1Char('/') ||
                              path[top.size()] == QLatin1Char('[')));
}

bool IsWanted(const QString& path, const QStringList& paths)
{
    return std::any_of(paths.begin(), paths.end(),
                       [&path](const QString& top) { return IsBelow(path, top); });
}

QByteArray Refusal(const QString& detail)
{
    CJsonWriter json;
    json.BeginObject();
    NJson::AddCode(json, eKW_ACC_BAD_TEXT, detail);
    json.EndObject();
    return json.GetText();
}

/** The number of a change; one that never comes for what is none. */
UINT64 NumberOf(const QJsonValue& value)
{
    constexpr double kLargest = 9007199254740991.0;
    const double number = value.toDouble(-1);
    return number >= 0 && number <= kLargest ? static_cast<UINT64>(number) : ~UINT64{0};
}

QByteArray ElementOf(const t_TreeChange& change)
{
    CJsonWriter json;
    json.BeginObject();
    json.Key("path").Text(change.path);
    if (change.now.isEmpty())
    {
        json.Key("removed").Bool(true);
    }
    else
    {
        json.Key("now").Raw(change.now);
    }
    json.EndObject();
    return json.GetText();
}
} // namespace

CJsonChanges::CJsonChanges(std::shared_ptr<IKWFunctionRootBase> root, std::size_t backlog)
    : m_root(std::move(root)), m_most(backlog)
{
}

CJsonChanges::~CJsonChanges() = default;

void CJsonChanges::Rest()
{
    m_differ.reset();
    m_entries.clear();
    m_bytes = 0;
    m_forgotten = m_number;
    m_made = {};
}

bool CJsonChanges::Look()
{
    if (!m_differ)
    {
        m_differ = std::make_unique<CTreeDiffer>(m_root);
        m_control = m_root->GetControlMode();
        m_stream = QUuid::createUuid().toString(QUuid::WithoutBraces);
        return false;
    }
    const std::vector<t_TreeChange> changes = m_differ->Look();
    const KW_CONTROL_MODE control = m_root->GetControlMode();
    const bool hasMoved = std::exchange(m_control, control) != control;
    m_number += changes.empty() && !hasMoved ? 0 : 1;
    m_controlMoved = hasMoved ? m_number : m_controlMoved;
    for (const t_TreeChange& change : changes)
    {
        Keep(change);
    }
    return hasMoved || !changes.empty();
}

void CJsonChanges::Keep(const t_TreeChange& change)
{
    m_entries.push_back({m_number, change.path, ElementOf(change)});
    const auto bytesOf = [](const t_Entry& entry)
    { return static_cast<std::size_t>(entry.json.size() + 2 * entry.path.size()) + kEntryBytes; };
    m_bytes += bytesOf(m_entries.back());
    // Those of one look go together: half of them would be worth nothing.
    while (m_bytes > m_most)
    {
        m_forgotten = m_entries.front().number;
        while (!m_entries.empty() && m_entries.front().number == m_forgotten)
        {
            m_bytes -= bytesOf(m_entries.front());
            m_entries.pop_front();
        }
    }
}

bool CJsonChanges::IsKept(UINT64 number) const
{
    return number >= m_forgotten && number <= m_number;
}

QByteArray CJsonChanges::Standing(const t_Subscription& subscription, bool isTooLate) const
{
    CJsonWriter json;
    json.BeginObject();
    json.Key("stream").Text(m_stream);
    json.Key("number").Whole(static_cast<INT64>(subscription.number));
    json.Key("subscribed").Texts(subscription.paths);
    json.Key("resync").Bool(isTooLate);
    json.Key("control").Text(QLatin1String(NJson::NameOf(m_control)));
    json.EndObject();
    return json.GetText();
}

QByteArray CJsonChanges::Subscribe(t_Subscription& subscription, const QByteArray& message,
                                   int mostPaths) const
{
    const QJsonObject wish = QJsonDocument::fromJson(message).object();
    const QJsonValue wanted = wish[QStringLiteral("subscribe")];
    const QJsonArray paths = wanted.toArray();
    if (!wanted.isArray() || paths.size() > mostPaths)
    {
        return Refusal(
            QStringLiteral("a list \"subscribe\" of at most %1 paths is wanted").arg(mostPaths));
    }
    QStringList list;
    for (const QJsonValue& path : paths)
    {
        if (!path.isString() || !m_root->GetDbObject()->Find(path.toString()))
        {
            return Refusal(QStringLiteral("a path leads to no node"));
        }
        list.append(path.toString());
    }
    const QString stream = wish[QStringLiteral("stream")].toString();
    const UINT64 number = NumberOf(wish[QStringLiteral("number")]);
    const bool goesOn = !stream.isEmpty() && stream == m_stream && IsKept(number);
    subscription = {list, goesOn ? number : m_number};
    return Standing(subscription, !stream.isEmpty() && !goesOn);
}

std::shared_ptr<const QByteArray> CJsonChanges::Make(const t_Subscription& subscription) const
{
    QSet<QString> seen;
    std::vector<const t_Entry*> wanted;
    for (auto entry = m_entries.rbegin();
         entry != m_entries.rend() && entry->number > subscription.number; ++entry)
    {
        if (!seen.contains(entry->path) && IsWanted(entry->path, subscription.paths))
        {
            seen.insert(entry->path);
            wanted.push_back(&*entry);
        }
    }
    const bool hasMoved = m_controlMoved > subscription.number;
    if (wanted.empty() && !hasMoved)
    {
        return nullptr;
    }
    CJsonWriter json;
    json.BeginObject();
    json.Key("number").Whole(static_cast<INT64>(m_number));
    if (hasMoved)
    {
        json.Key("control").Text(QLatin1String(NJson::NameOf(m_control)));
    }
    json.Key("changes").BeginArray();
    std::for_each(wanted.rbegin(), wanted.rend(),
                  [&json](const t_Entry* entry) { json.Raw(entry->json); });
    json.EndArray();
    json.EndObject();
    return std::make_shared<const QByteArray>(json.GetText());
}

std::shared_ptr<const QByteArray> CJsonChanges::Take(t_Subscription& subscription)
{
    if (subscription.paths.isEmpty() || subscription.number == m_number)
    {
        return nullptr;
    }
    if (!IsKept(subscription.number))
    {
        subscription.number = m_number;
        return std::make_shared<const QByteArray>(Standing(subscription, true));
    }
    const bool isMade = m_made.paths == subscription.paths && m_made.from == subscription.number &&
                        m_made.to == m_number;
    if (!isMade)
    {
        m_made = {subscription.paths, subscription.number, m_number, Make(subscription)};
    }
    subscription.number = m_number;
    return m_made.message;
}
