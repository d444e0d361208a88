// SPDX-License-Identifier: MIT
#include "JsonService.h"

#include "FilesFolder.h"
#include "IKWProperties.h"
#include "JsonNodes.h"
#include "JsonWrites.h"
#include "KWHistory.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>
#include <new>
#include <optional>

namespace
{
constexpr int kLongestText = 200; // of a step's name, and of what is repeated in an answer

/** What HTTP calls a refusal of the tree. */
int StatusOf(KW_ACCEPTANCE code)
{
    switch (code)
    {
    case eKW_ACC_OK:
    case eKW_ACC_WARNING:
        return 200;
    case eKW_ACC_READ_ONLY:
    case eKW_ACC_NO_WRITE_ACCESS:
        return 403;
    case eKW_ACC_NOT_FOUND:
    case eKW_ACC_FILE_NOT_READABLE:
        return 404;
    case eKW_ACC_NOT_ENABLED:
    case eKW_ACC_NOT_AVAILABLE:
    case eKW_ACC_NAME_IN_USE:
    case eKW_ACC_CONTAINER_FULL:
    case eKW_ACC_FIXED_SIZE:
    case eKW_ACC_CAN_NOT_SHRINK:
    case eKW_ACC_NOTHING_TO_DO:
    case eKW_ACC_IN_TRANSACTION:
    case eKW_ACC_NOTHING_TO_ACT_ON:
        return 409;
    case eKW_ACC_FILE_NOT_WRITABLE:
    case eKW_ACC_OPERATION_FAILED:
    case eKW_ACC_INTERNAL:
        return 500;
    case eKW_ACC_DETACHED:
        return 503;
    case eKW_ACC_TIMEOUT:
        return 504;
    default:
        return 422;
    }
}

t_JsonAnswer Missing(const QString& path)
{
    return CJsonService::AnswerCode(eKW_ACC_NOT_FOUND,
                                    QStringLiteral("no node \"%1\"").arg(path.left(kLongestText)));
}

t_JsonAnswer WrongBody(const QString& detail)
{
    return CJsonService::Refuse(400, eKW_ACC_BAD_TEXT, detail);
}

bool IsFull(const QUrlQuery& query)
{
    return query.queryItemValue(QStringLiteral("detail")) == QLatin1String("full");
}

/** Levels that are asked for; all where nothing is. */
int DepthOf(const QUrlQuery& query)
{
    const QString depth = query.queryItemValue(QStringLiteral("depth"));
    bool isNumber = false;
    const int levels = depth.toInt(&isNumber);
    return isNumber ? std::max(levels, 0) : -1;
}

/** Steps back or forward: one where nothing is said, nothing for what is no number of steps. */
std::optional<int> StepsOf(const QUrlQuery& query)
{
    const QString name = QStringLiteral("steps");
    bool isNumber = false;
    const int steps = query.queryItemValue(name).toInt(&isNumber);
    if (!query.hasQueryItem(name))
    {
        return 1;
    }
    return isNumber ? std::optional(steps) : std::nullopt;
}

t_JsonAnswer WrongSteps()
{
    return CJsonService::Refuse(400, eKW_ACC_BAD_TEXT,
                                QStringLiteral("\"steps\" is a whole number"));
}

/** Writes a result of several writes, and its status. */
t_JsonAnswer AnswerWrites(const CJsonWriter& writes, const NJson::t_Written& written, bool together)
{
    CJsonWriter json;
    json.BeginObject();
    NJson::AddCode(json, written.code);
    json.Key("kept").Bool(written.isKept);
    json.Key("writes").Raw(writes.GetText());
    json.EndObject();
    return {together ? StatusOf(written.code) : 200, json.GetText()};
}

/** Gives an item of an array another index: a copy takes its place, as one step for undo. */
KW_ACCEPTANCE MoveItem(IKWFunctionRootBase& root, IDbContainer& container, const QString& key,
                       const QString& to)
{
    bool isFrom = false;
    bool isTo = false;
    const int from = key.toInt(&isFrom);
    const int target = to.toInt(&isTo);
    const int count = container.GetCount();
    if (!isFrom || !isTo || from < 0 || target < 0 || from >= count || target >= count)
    {
        return eKW_ACC_BAD_INDEX;
    }
    if (from == target)
    {
        return eKW_ACC_OK;
    }
    const bool isActive = container.GetActiveItem() == key;
    const bool isDown = target > from;
    root.StartTransaction(QStringLiteral("Move"));
    KW_ACCEPTANCE code = container.CopyItem(key, QString::number(isDown ? target + 1 : target));
    if (KW_IsAccepted(code))
    {
        code = container.RemoveItem(QString::number(isDown ? from : from + 1));
    }
    if (KW_IsAccepted(code) && isActive)
    {
        code = container.SetActiveItem(QString::number(target));
    }
    root.EndTransaction(KW_IsAccepted(code));
    return code;
}

/** What is asked of a container, by the names that the request gives. */
KW_ACCEPTANCE ChangeItems(IKWFunctionRootBase& root, IDbContainer& container, const QString& what,
                          const QString& key, const QString& to)
{
    if (what == QLatin1String("insert"))
    {
        return container.InsertItem(key);
    }
    if (what == QLatin1String("remove"))
    {
        return container.RemoveItem(key);
    }
    if (what == QLatin1String("rename"))
    {
        return container.RenameItem(key, to);
    }
    if (what == QLatin1String("copy"))
    {
        return container.CopyItem(key, to);
    }
    if (what == QLatin1String("move"))
    {
        return MoveItem(root, container, key, to);
    }
    return what == QLatin1String("activate") ? container.SetActiveItem(key)
                                             : static_cast<KW_ACCEPTANCE>(eKW_ACC_UNKNOWN_VALUE);
}
} // namespace

QString CJsonService::t_Call::Path() const
{
    const QString name = QStringLiteral("path");
    QString path = body.contains(name) ? body[name].toString()
                                       : query.queryItemValue(name, QUrl::FullyDecoded);
    while (path.endsWith(QLatin1Char('/')))
    {
        path.chop(1);
    }
    return path;
}

t_JsonAnswer CJsonService::AnswerCode(KW_ACCEPTANCE code, const QString& detail)
{
    CJsonWriter json;
    json.BeginObject();
    NJson::AddCode(json, code, detail);
    json.EndObject();
    return {StatusOf(code), json.GetText()};
}

t_JsonAnswer CJsonService::Refuse(int status, KW_ACCEPTANCE code, const QString& detail)
{
    return {status, AnswerCode(code, detail).body};
}

const CJsonService::t_Route* CJsonService::Find(const t_JsonRequest& request, bool& isPath)
{
    const QByteArray path = request.target.split('?').first();
    const auto routes = Routes();
    isPath = std::any_of(routes.begin(), routes.end(),
                         [&path](const t_Route& route) { return path == route.path; });
    const auto found = std::find_if(
        routes.begin(), routes.end(),
        [&](const t_Route& route) { return path == route.path && request.method == route.method; });
    return found != routes.end() ? &*found : nullptr;
}

bool CJsonService::IsQuick(const t_JsonRequest& request) const
{
    bool isPath = false;
    const t_Route* const route = Find(request, isPath);
    return route == nullptr || route->isQuick;
}

t_JsonAnswer CJsonService::Answer(const t_JsonRequest& request) const
{
    bool isPath = false;
    const t_Route* const route = Find(request, isPath);
    if (route == nullptr)
    {
        return isPath ? Refuse(405, eKW_ACC_WRONG_KIND, QStringLiteral("another method is wanted"))
                      : Refuse(404, eKW_ACC_NOT_FOUND, QStringLiteral("see /openapi.json"));
    }
    if (route->writes && m_options.readOnly)
    {
        return AnswerCode(eKW_ACC_NO_WRITE_ACCESS, QStringLiteral("the service only reads"));
    }
    t_Call call;
    const auto query = request.target.indexOf('?');
    call.query =
        QUrlQuery(query < 0 ? QString() : QString::fromUtf8(request.target.mid(query + 1)));
    if (route->body != nullptr)
    {
        QJsonParseError error{};
        const QJsonDocument document = QJsonDocument::fromJson(request.body, &error);
        if (!document.isObject())
        {
            return WrongBody(
                error.error == QJsonParseError::NoError
                    ? QStringLiteral("the body is no object")
                    : QStringLiteral("%1 at byte %2").arg(error.errorString()).arg(error.offset));
        }
        call.body = document.object();
    }
    try
    {
        return (this->*route->handler)(call);
    }
    catch (const std::bad_alloc&)
    {
        return {503, QByteArray()};
    }
}

t_JsonAnswer CJsonService::GetDescription(const t_Call&) const
{
    return {200, Describe()};
}

t_JsonAnswer CJsonService::GetNode(const t_Call& call) const
{
    const auto node = Top()->Find(call.Path());
    if (!node)
    {
        return Missing(call.Path());
    }
    CJsonWriter json;
    NJson::WriteNode(json, m_root, *node, {IsFull(call.query), DepthOf(call.query)});
    return {200, json.GetText()};
}

t_JsonAnswer CJsonService::GetStanding(const t_Call&) const
{
    CJsonWriter json;
    json.BeginObject();
    json.Key("control").Text(QLatin1String(NJson::NameOf(m_root->GetControlMode())));
    json.Key("readOnly").Bool(m_options.readOnly);
    json.EndObject();
    return {200, json.GetText()};
}

t_JsonAnswer CJsonService::GetFiles(const t_Call& call) const
{
    const auto node = Top()->Find(call.Path());
    const auto property = std::dynamic_pointer_cast<IDbProperty>(node);
    const auto handle =
        property ? std::dynamic_pointer_cast<IKWFilePathProperty>(property->GetHandle()) : nullptr;
    if (!handle)
    {
        return node ? AnswerCode(eKW_ACC_WRONG_KIND, QStringLiteral("a file's name is wanted"))
                    : Missing(call.Path());
    }
    const QStringList files = CFilesFolder(m_root->GetSettingsFolder())
                                  .List(handle->GetFolder(), handle->GetOpenExtensions());
    CJsonWriter json;
    json.BeginObject();
    json.Key("folder").Text(handle->GetFolder());
    json.Key("files").Texts(files);
    json.EndObject();
    return {200, json.GetText()};
}

t_JsonAnswer CJsonService::GetChanges(const t_Call&) const
{
    return Refuse(426, eKW_ACC_WRONG_KIND, QStringLiteral("a WebSocket is wanted"));
}

t_JsonAnswer CJsonService::GetHistory(const t_Call&) const
{
    const KW_History history = KW_GetHistory(*m_root);
    CJsonWriter json;
    json.BeginObject();
    json.Key("canUndo").Bool(!history.undo.isEmpty());
    json.Key("undo").Text(history.undo.value(0));
    json.Key("canRedo").Bool(!history.redo.isEmpty());
    json.Key("redo").Text(history.redo.value(0));
    json.Key("undoSteps").Texts(history.undo);
    json.Key("redoSteps").Texts(history.redo);
    json.EndObject();
    return {200, json.GetText()};
}

t_JsonAnswer CJsonService::Write(const t_Call& call) const
{
    const QJsonArray writes = call.body[QStringLiteral("writes")].toArray();
    QString wrong;
    if (!NJson::AreWrites(writes, m_options.bounds.writes, wrong))
    {
        return WrongBody(wrong);
    }
    const QString text = call.body[QStringLiteral("text")].toString().left(kLongestText);
    const NJson::t_Writing writing{writes, call.body[QStringLiteral("together")].toBool(true),
                                   text.isEmpty() ? QStringLiteral("Remote") : text};
    CJsonWriter reports;
    const NJson::t_Written written = NJson::Write(reports, m_root, writing);
    return AnswerWrites(reports, written, writing.together);
}

t_JsonAnswer CJsonService::Run(const t_Call& call) const
{
    const auto node = Top()->Find(call.Path());
    const auto action = std::dynamic_pointer_cast<IDbAction>(node);
    if (!action)
    {
        return node ? AnswerCode(eKW_ACC_WRONG_KIND, QStringLiteral("an action is wanted"))
                    : Missing(call.Path());
    }
    return AnswerCode(action->Execute());
}

t_JsonAnswer CJsonService::ChangeItems(const t_Call& call) const
{
    const auto group = std::dynamic_pointer_cast<IDbGroup>(Top()->Find(call.Path()));
    IDbContainer* const container = group ? group->AsContainer() : nullptr;
    if (container == nullptr)
    {
        return group ? AnswerCode(eKW_ACC_WRONG_KIND, QStringLiteral("an array or map is wanted"))
                     : Missing(call.Path());
    }
    const QString what = call.body[QStringLiteral("do")].toString();
    if (what == QLatin1String("move") && group->GetKind() != eKW_NODE_ARRAY)
    {
        return AnswerCode(eKW_ACC_WRONG_KIND, QStringLiteral("items of a map have no order"));
    }
    return AnswerCode(::ChangeItems(*m_root, *container, what,
                                    call.body[QStringLiteral("key")].toString(),
                                    call.body[QStringLiteral("to")].toString()));
}

t_JsonAnswer CJsonService::Undo(const t_Call& call) const
{
    const std::optional<int> steps = StepsOf(call.query);
    return steps ? AnswerCode(KW_UndoSteps(*m_root, *steps)) : WrongSteps();
}

t_JsonAnswer CJsonService::Redo(const t_Call& call) const
{
    const std::optional<int> steps = StepsOf(call.query);
    return steps ? AnswerCode(KW_RedoSteps(*m_root, *steps)) : WrongSteps();
}

t_JsonAnswer CJsonService::Preset(const t_Call& call) const
{
    return AnswerCode(m_root->RunPresetSequence(call.body[QStringLiteral("factory")].toBool()));
}

QString CJsonService::FileOf(const t_Call& call, QString& error) const
{
    const QString name = call.body[QStringLiteral("file")].toString();
    if (!name.endsWith(QLatin1String(".xml")) && !name.endsWith(QLatin1String(".csv")))
    {
        error = QStringLiteral("a file name that ends in .xml or .csv is wanted");
        return {};
    }
    return CFilesFolder(m_root->GetSettingsFolder()).PathOf(name, QString(), error);
}

t_JsonAnswer CJsonService::Save(const t_Call& call) const
{
    QString error;
    const QString file = FileOf(call, error);
    return file.isEmpty() ? AnswerCode(eKW_ACC_BAD_NAME, error) : AnswerCode(m_root->Save(file));
}

t_JsonAnswer CJsonService::Recall(const t_Call& call) const
{
    QString error;
    const QString file = FileOf(call, error);
    return file.isEmpty() ? AnswerCode(eKW_ACC_BAD_NAME, error) : AnswerCode(m_root->Recall(file));
}
