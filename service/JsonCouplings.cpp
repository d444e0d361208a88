// SPDX-License-Identifier: MIT
// Why a setting is as it is: the rows of rules that it starts, and those of its group.

#include "JsonNodes.h"
#include "JsonService.h"
#include "KWCouplings.h"

#include <algorithm>
#include <functional>

namespace
{
using t_Visit = std::function<void(const KW_CouplingRow&)>;

void WriteRow(CJsonWriter& json, const KW_CouplingRow& row)
{
    json.BeginObject();
    json.Key("group").Text(row.group);
    json.Key("row").Whole(row.number);
    json.Key("when").Text(KW_FormatCouplingWhen(row));
    json.Key("word").Text(row.word);
    json.Key("sources").Texts(row.sources);
    json.Key("what").Text(row.what);
    json.Key("steps").Texts(row.steps);
    json.EndObject();
}

/** Rows of a group and of all below it. */
void VisitRows(IDbGroup& group, const t_Visit& visit)
{
    for (const KW_CouplingRow& row : KW_GetCouplingRows(group))
    {
        visit(row);
    }
    for (INT32 i = 0; i < group.GetGroupCount(); ++i)
    {
        VisitRows(*group.GetGroup(i), visit);
    }
    if (const IDbContainer* const container = group.AsContainer())
    {
        for (INT32 i = 0; const auto item = container->GetItemByPosition(i); ++i)
        {
            VisitRows(*item, visit);
        }
    }
}

/** A path with "[each]" for every item, as rows name their sources. */
QString WithEach(const QString& path)
{
    QString each;
    bool isKey = false;
    for (const QChar c : path)
    {
        if (!isKey || c == QLatin1Char(']'))
        {
            each += c;
        }
        if (c == QLatin1Char('['))
        {
            each += QLatin1String("each");
        }
        isKey = c == QLatin1Char('[') || (isKey && c != QLatin1Char(']'));
    }
    return each;
}

/** Whether a source stands for a node. Sources within the row's own item name that item. */
bool IsSource(const QString& source, const QString& path, const QString& each)
{
    return source == path || source == each;
}

/** The group of a node: itself, or the one that it is a member of. */
std::shared_ptr<IDbGroup> GroupOf(const std::shared_ptr<IDbGroup>& top,
                                  const std::shared_ptr<IDbObject>& node)
{
    const auto group = std::dynamic_pointer_cast<IDbGroup>(node);
    return group ? group
                 : std::dynamic_pointer_cast<IDbGroup>(
                       top->Find(node->GetPath().section(QLatin1Char('/'), 0, -2)));
}
} // namespace

t_JsonAnswer CJsonService::GetCouplings(const t_Call& call) const
{
    const auto node = Top()->Find(call.Path());
    const auto group = node ? GroupOf(Top(), node) : nullptr;
    if (!group)
    {
        return Refuse(404, eKW_ACC_NOT_FOUND, call.Path().left(200));
    }
    CJsonWriter json;
    json.BeginObject();
    json.Key("rows").BeginArray();
    VisitRows(*group, [&json](const KW_CouplingRow& row) { WriteRow(json, row); });
    json.EndArray();
    json.EndObject();
    return {200, json.GetText()};
}

t_JsonAnswer CJsonService::GetReasons(const t_Call& call) const
{
    const auto node = Top()->Find(call.Path());
    const auto group = node ? GroupOf(Top(), node) : nullptr;
    if (!group)
    {
        return Refuse(404, eKW_ACC_NOT_FOUND, call.Path().left(200));
    }
    const QString path = node->GetPath();
    const QString each = WithEach(path);
    CJsonWriter json;
    json.BeginObject();
    NJson::WriteNode(json.Key("node"), m_root, *node, {true, 0});
    json.Key("starts").BeginArray();
    VisitRows(*Top(),
              [&](const KW_CouplingRow& row)
              {
                  if (std::any_of(row.sources.begin(), row.sources.end(),
                                  [&](const QString& source)
                                  { return IsSource(source, path, each); }))
                  {
                      WriteRow(json, row);
                  }
              });
    json.EndArray();
    json.Key("rows").BeginArray();
    for (const KW_CouplingRow& row : KW_GetCouplingRows(*group))
    {
        WriteRow(json, row);
    }
    json.EndArray();
    json.EndObject();
    return {200, json.GetText()};
}
