// SPDX-License-Identifier: MIT
#include "RemoteContainers.h"

#include "IKWFunctionBase.h"
#include "RemoteHeaders.h"
#include "RemoteTree.h"
#include "RemoteValues.h"

#include <array>

namespace
{
using t_Data = std::vector<t_RemoteData>;

bool IsMap(const IDbGroup& group)
{
    return group.GetKind() == eKW_NODE_MAP;
}

/** The key of an item that is, as IDbContainer takes it: an array's by number; a map's by name, or
    by number, which is its key and 1. */
t_RemoteError KeyOf(IDbGroup& group, const t_RemoteData& data, QString& key)
{
    if (IsMap(group) && data.kind == t_RemoteData::eKIND::String)
    {
        return NRemote::ReadText(data, key);
    }
    INT64 number = 0;
    if (const t_RemoteError error = NRemote::ReadWhole(data, number))
    {
        return error;
    }
    const auto item = CRemoteTree::ItemAt(group, number);
    if (!item)
    {
        return NRemote::ErrorOf(IsMap(group) ? eKW_ACC_NOT_FOUND : eKW_ACC_BAD_INDEX);
    }
    key = item->GetNodeName();
    return {};
}

/** The key of an item to come: a name in maps, a place from 1 in arrays. */
t_RemoteError NewKeyOf(const IDbGroup& group, const t_RemoteData& data, QString& key)
{
    if (IsMap(group))
    {
        return NRemote::ReadText(data, key);
    }
    INT64 number = 0;
    const t_RemoteError error = NRemote::ReadWhole(data, number);
    key = QString::number(number - 1);
    return error;
}

t_RemoteError Insert(IDbGroup& group, const t_Data& data)
{
    QString key;
    const t_RemoteError error = data.empty() ? t_RemoteError{} : NewKeyOf(group, data[0], key);
    return error ? error : NRemote::ErrorOf(group.AsContainer()->InsertItem(key));
}

t_RemoteError Remove(IDbGroup& group, const t_Data& data)
{
    QString key;
    const t_RemoteError error = KeyOf(group, data[0], key);
    return error ? error : NRemote::ErrorOf(group.AsContainer()->RemoveItem(key));
}

t_RemoteError Rename(IDbGroup& group, const t_Data& data)
{
    QString key;
    QString name;
    t_RemoteError error = KeyOf(group, data[0], key);
    error = error ? error : NRemote::ReadText(data[1], name);
    return error ? error : NRemote::ErrorOf(group.AsContainer()->RenameItem(key, name));
}

t_RemoteError Copy(IDbGroup& group, const t_Data& data)
{
    QString key;
    QString copied;
    t_RemoteError error = KeyOf(group, data[0], key);
    error = error ? error : NewKeyOf(group, data[1], copied);
    return error ? error : NRemote::ErrorOf(group.AsContainer()->CopyItem(key, copied));
}

t_RemoteError Activate(IDbGroup& group, const t_Data& data)
{
    QString key;
    const t_RemoteError error = KeyOf(group, data[0], key);
    return error ? error : NRemote::ErrorOf(group.AsContainer()->SetActiveItem(key));
}

QByteArray CountOf(IDbGroup& group)
{
    return QByteArray::number(group.AsContainer()->GetCount());
}

QByteArray CatalogOf(IDbGroup& group)
{
    QByteArray list;
    const IDbContainer& container = *group.AsContainer();
    const auto map = std::dynamic_pointer_cast<IKWMapBase>(group.GetHandle());
    for (INT32 i = 0; i < container.GetCount(); ++i)
    {
        // It may have gone since it was counted.
        const auto item = container.GetItemByPosition(i);
        const auto mapItem = map && item ? map->GetMapItem(item->GetNodeName()) : nullptr;
        if (!item || (map && !mapItem))
        {
            continue;
        }
        list += list.isEmpty() ? "" : ",";
        list += mapItem ? QByteArray::number(mapItem->GetNumericKey() + 1) + ',' +
                              NRemote::Quoted(mapItem->GetName())
                        : QByteArray::number(i + 1);
    }
    return list;
}

QByteArray ActiveOf(IDbGroup& group)
{
    const QString key = group.AsContainer()->GetActiveItem();
    return IsMap(group)    ? NRemote::Quoted(key)
           : key.isEmpty() ? QByteArray("0")
                           : QByteArray::number(key.toInt() + 1);
}

struct t_Query
{
    const char* header;
    QByteArray (*answer)(IDbGroup&);
};

struct t_Change
{
    const char* header;
    std::size_t least;
    std::size_t most;
    t_RemoteError (*run)(IDbGroup&, const t_Data&);
};

constexpr std::array kQueries{t_Query{"COUNt", CountOf}, t_Query{"CATalog", CatalogOf},
                              t_Query{"ACTive", ActiveOf}};
constexpr std::array kChanges{t_Change{"INSert", 0, 1, Insert}, t_Change{"REMove", 1, 1, Remove},
                              t_Change{"REName", 2, 2, Rename}, t_Change{"COPY", 2, 2, Copy},
                              t_Change{"ACTive", 1, 1, Activate}};

t_RemoteError Ask(IDbGroup& group, const QByteArray& command, const t_Data& data,
                  QByteArray& answer)
{
    for (const t_Query& query : kQueries)
    {
        if (NRemote::IsHeader(query.header, {command}))
        {
            answer = data.empty() ? query.answer(group) : QByteArray();
            return {data.empty() ? eREMOTE_NO_ERROR : eREMOTE_PARAMETER_NOT_ALLOWED, QString()};
        }
    }
    return {eREMOTE_UNDEFINED_HEADER, QString::fromLatin1(command)};
}
} // namespace

t_RemoteError NRemote::ExecuteContainer(IDbGroup& group, const QByteArray& command,
                                        const t_RemoteUnit& unit, QByteArray& answer)
{
    if (unit.isQuery)
    {
        return Ask(group, command, unit.data, answer);
    }
    for (const t_Change& change : kChanges)
    {
        if (!IsHeader(change.header, {command}))
        {
            continue;
        }
        const std::size_t count = unit.data.size();
        return count < change.least  ? t_RemoteError{eREMOTE_MISSING_PARAMETER, QString()}
               : count > change.most ? t_RemoteError{eREMOTE_PARAMETER_NOT_ALLOWED, QString()}
                                     : change.run(group, unit.data);
    }
    return {eREMOTE_UNDEFINED_HEADER, QString::fromLatin1(command)};
}
