// SPDX-License-Identifier: MIT
#include "Secrets.h"

#include "NearestNames.h"
#include "NodeFacts.h"
#include "TreeWalk.h"

#include <QRegularExpression>
#include <functional>

namespace
{
QStringList GetSecretPaths(IDbGroup& tree)
{
    QStringList paths;
    WalkTree(tree, 0,
             [&paths](const std::shared_ptr<IDbObject>& node, int)
             {
                 if (IsSecret(*node))
                 {
                     paths.append(node->GetPath());
                 }
             });
    return paths;
}

/** Where the first of the words that fit ends; −1 without one, or when nothing follows it. Quotes
    are left out of the words, closed or not. */
int GetEndOf(const QString& line, const std::function<bool(const QString&)>& fits)
{
    static const QRegularExpression form(QStringLiteral("\\S+"));
    auto words = form.globalMatch(line);
    while (words.hasNext())
    {
        const QRegularExpressionMatch word = words.next();
        QString text = word.captured();
        text.remove(QLatin1Char('"')).remove(QLatin1Char('\''));
        if (words.hasNext() && fits(text))
        {
            return static_cast<int>(word.capturedEnd());
        }
    }
    return -1;
}
} // namespace

QString WithoutSecrets(CSession& session, const QString& line)
{
    const int end = GetEndOf(line,
                             [&session](QString word)
                             {
                                 while (word.endsWith(QLatin1Char('/')))
                                 {
                                     word.chop(1);
                                 }
                                 const auto node = session.GetTree().Find(word);
                                 return node && IsSecret(*node);
                             });
    return end < 0 ? line : line.left(end) + QLatin1Char(' ') + KW_GetSecretText();
}

bool CKeepable::MayBeKept(const QString& line)
{
    try
    {
        m_secrets = m_secrets.isEmpty() ? GetSecretPaths(m_session.GetTree()) : m_secrets;
    }
    catch (const CFailure&)
    {
        return false;
    }
    return GetEndOf(line, [this](const QString& word)
                    { return !GetNearestNames(word, m_secrets).isEmpty(); }) < 0;
}
