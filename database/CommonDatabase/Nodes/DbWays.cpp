// SPDX-License-Identifier: MIT
#include "DbWays.h"

#include "DbPropertyGroup.h"

using namespace NNames;

namespace
{
template <typename TList>
auto At(const TList& list, UINT8 place) -> decltype(list.front().get())
{
    return place < list.size() ? list[place].get() : nullptr;
}

CDbPropertyGroup* GroupAt(const CDbPropertyGroup& group, UINT8 step)
{
    return (step & t_Path::kItem) != 0 ? group.ItemAtPosition(step & ~t_Path::kItem)
                                       : At(group.Groups(), step);
}

CDbObject* MemberAt(const CDbPropertyGroup& group, eNODE kind, UINT8 place)
{
    if (kind == eNODE::Property)
    {
        return At(group.Properties(), place);
    }
    return At(group.Objects(), place);
}

/** Steps of a path that lead from group to group. */
UINT8 GroupSteps(const t_Path& path)
{
    return path.kind == eNODE::Group ? path.length : static_cast<UINT8>(path.length - 1);
}

/** The rest of a walk along a path. */
struct t_Walk
{
    const t_Path& path;
    const std::function<void(CDbObject&)>& visit;
    const std::function<void(CDbPropertyGroup&)>& visitContainer;

    void From(CDbPropertyGroup& group, UINT8 step) const
    {
        if (step == GroupSteps(path))
        {
            CDbObject* const node =
                path.kind == eNODE::Group ? &group : MemberAt(group, path.kind, path.steps[step]);
            if (node != nullptr)
            {
                visit(*node);
            }
        }
        else if (path.steps[step] == t_Path::kEach)
        {
            visitContainer(group);
            group.VisitItems([this, step](CDbPropertyGroup& item)
                             { From(item, static_cast<UINT8>(step + 1)); });
        }
        else if (CDbPropertyGroup* const next = GroupAt(group, path.steps[step]))
        {
            From(*next, static_cast<UINT8>(step + 1));
        }
    }
};
} // namespace

CDbObject* NWays::Resolve(const CDbPropertyGroup& from, const t_Path& path)
{
    const CDbPropertyGroup* group = &from;
    const UINT8 steps = GroupSteps(path);
    for (UINT8 i = 0; i < steps && group != nullptr; ++i)
    {
        group = GroupAt(*group, path.steps[i]);
    }
    if (group == nullptr || path.kind == eNODE::Group)
    {
        return const_cast<CDbPropertyGroup*>(group);
    }
    return MemberAt(*group, path.kind, path.steps[steps]);
}

void NWays::Visit(CDbPropertyGroup& from, const t_Path& path,
                  const std::function<void(CDbObject&)>& visit,
                  const std::function<void(CDbPropertyGroup&)>& visitContainer)
{
    t_Walk{path, visit, visitContainer}.From(from, 0);
}

QString NWays::TextOf(const CDbPropertyGroup& from, const t_Path& path)
{
    const CDbPropertyGroup* group = &from;
    QString text = from.GetPath();
    const auto append = [&text](const CDbObject& node)
    { text += (text.isEmpty() ? QString() : QStringLiteral("/")) + node.NodeName(); };
    std::shared_ptr<CDbPropertyGroup> sample; // stands in for the items of an empty container
    const UINT8 steps = GroupSteps(path);
    for (UINT8 i = 0; i < steps; ++i)
    {
        const UINT8 step = path.steps[i];
        if ((step & t_Path::kItem) == 0)
        {
            group = GroupAt(*group, step);
            append(*group);
            continue;
        }
        const INT32 position = step & ~t_Path::kItem;
        const bool isEach = step == t_Path::kEach;
        text += isEach ? QStringLiteral("[each]") : QStringLiteral("[%1]").arg(position);
        const CDbPropertyGroup& container = *group;
        group = container.ItemAtPosition(isEach ? 0 : position);
        if (group == nullptr)
        {
            sample = container.MakeSample();
            group = sample.get();
        }
    }
    if (path.kind != eNODE::Group)
    {
        append(*MemberAt(*group, path.kind, path.steps[steps]));
    }
    return text;
}
