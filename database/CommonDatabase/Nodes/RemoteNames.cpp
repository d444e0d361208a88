// SPDX-License-Identifier: MIT
#include "CommonDatabase/Values/RemoteName.h"
#include "DbPgRoot.h"
#include "KWRemoteNames.h"
#include "LockManager.h"

namespace
{
bool IsContainer(const CDbPropertyGroup& group)
{
    return group.GetKind() == eKW_NODE_ARRAY || group.GetKind() == eKW_NODE_MAP;
}

/** The word that the model names in place of what the name makes: the name in other letters, behind
    the meaning of the group. Null where there is none. */
QString NamedByModel(const CDbPropertyGroup& group, const QString& name)
{
    const QStringList texts = QString::fromUtf8(group.GetMeanings()).split(QChar(1));
    for (int i = 1; i < texts.size(); ++i)
    {
        if (texts[i].compare(name, Qt::CaseInsensitive) == 0)
        {
            return texts[i];
        }
    }
    return QString();
}

QString MnemonicOf(const CDbObject& node)
{
    const CDbPropertyGroup* const group = node.GetParent();
    // What an array or map has of its own is not of the model, and the model's words there are
    // those of its items.
    const bool isDeclared = group != nullptr && !IsContainer(*group);
    const QString word = isDeclared ? NamedByModel(*group, node.NodeName()) : QString();
    return word.isNull() ? RemoteMnemonic(node.NodeName()) : word;
}

QString ShortForm(const QString& mnemonic)
{
    QString form;
    for (const QChar c : mnemonic)
    {
        if (!c.isLower())
        {
            form += c;
        }
    }
    return form;
}
} // namespace

KW_RemoteNames KW_GetRemoteNames(const IDbObject& node)
{
    const CLockGuard lock(eACCESS_READ);
    const auto* named = dynamic_cast<const CDbObject*>(&node);
    if (named == nullptr || named == named->GetDbRoot())
    {
        return {};
    }
    const CDbPropertyGroup* const group = named->GetParent();
    const bool isItem = group != nullptr && node.GetKind() == eKW_NODE_GROUP && IsContainer(*group);
    const QString mnemonic = MnemonicOf(isItem ? *group : *named);
    return {mnemonic.toUpper(), ShortForm(mnemonic), mnemonic};
}
