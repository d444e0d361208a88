// SPDX-License-Identifier: MIT
#include "TreeWalk.h"

#include <algorithm>
#include <vector>

namespace
{
std::vector<std::shared_ptr<IDbObject>> GetMembers(IDbGroup& group)
{
    std::vector<std::shared_ptr<IDbObject>> members;
    for (INT32 i = 0; i < group.GetPropertyCount(); ++i)
    {
        members.push_back(group.GetProperty(i));
    }
    for (INT32 i = 0; i < group.GetGroupCount(); ++i)
    {
        members.push_back(group.GetGroup(i));
    }
    const IDbContainer* const container = group.AsContainer();
    for (INT32 i = 0; container != nullptr && i < container->GetCount(); ++i)
    {
        members.push_back(container->GetItemByPosition(i));
    }
    for (INT32 i = 0; i < group.GetActionCount(); ++i)
    {
        members.push_back(group.GetAction(i));
    }
    return members;
}

void Walk(IDbGroup& group, int level, int depth,
          const std::function<void(const std::shared_ptr<IDbObject>&, int)>& visit)
{
    for (const auto& member : GetMembers(group))
    {
        visit(member, level);
        auto* const child = dynamic_cast<IDbGroup*>(member.get());
        if (child != nullptr && level != depth)
        {
            Walk(*child, level + 1, depth, visit);
        }
    }
}
} // namespace

void WalkTree(IDbGroup& group, int depth,
              const std::function<void(const std::shared_ptr<IDbObject>&, int)>& visit)
{
    Walk(group, 1, depth, visit);
}

QStringList GetAllPaths(IDbGroup& group)
{
    QStringList paths;
    WalkTree(group, 0, [&paths](const auto& node, int) { paths.append(node->GetPath()); });
    return paths;
}

QString GetStep(const IDbObject& node)
{
    const QString path = node.GetPath();
    return path.endsWith(QLatin1Char(']')) ? path.mid(path.lastIndexOf(QLatin1Char('[')))
                                           : node.GetNodeName();
}

QString GetParentPath(const QString& path)
{
    const auto slash = path.lastIndexOf(QLatin1Char('/'));
    const auto bracket =
        path.endsWith(QLatin1Char(']')) ? path.lastIndexOf(QLatin1Char('[')) : decltype(slash){-1};
    return path.left(std::max({slash, bracket, decltype(slash){0}}));
}

QString GetKindText(KW_NODE_KIND kind)
{
    switch (kind)
    {
    case eKW_NODE_PROPERTY:
        return QStringLiteral("property");
    case eKW_NODE_GROUP:
        return QStringLiteral("group");
    case eKW_NODE_ARRAY:
        return QStringLiteral("array");
    case eKW_NODE_MAP:
        return QStringLiteral("map");
    case eKW_NODE_FUNCTION:
        return QStringLiteral("function");
    case eKW_NODE_OPERATION:
        return QStringLiteral("operation");
    }
    return QStringLiteral("node");
}
