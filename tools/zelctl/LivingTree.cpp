// SPDX-License-Identifier: MIT
#include "LivingTree.h"

#include "Failure.h"
#include "IKWFunctionZEL.h"
#include "NodeFacts.h"
#include "TreeWalk.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>
#include <QTemporaryFile>
#include <QUrl>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace
{
KW_ACCEPTANCE CodeOf(const COrderedJson& answer)
{
    if (!answer.Has("code"))
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("what came is no answer of the service"));
    }
    return static_cast<KW_ACCEPTANCE>(answer["code"].GetInt());
}

bool IsCsv(const QString& fileName)
{
    return fileName.endsWith(QLatin1String(".csv"));
}

/** Of a settings file in XML the branch of one group; the names of the elements are its path. */
QString GetBranch(const QByteArray& settings, const QString& path)
{
    const QString wanted = path + QLatin1Char('/');
    QString branch;
    QXmlStreamReader from(settings);
    QXmlStreamWriter to(&branch);
    QStringList place; // names of the open elements: of the document, of the root, and so on
    while (!from.atEnd())
    {
        const auto token = from.readNext();
        const bool isStart = token == QXmlStreamReader::StartElement;
        if (!isStart && token != QXmlStreamReader::EndElement)
        {
            continue;
        }
        if (isStart)
        {
            place.append(from.attributes().value(QLatin1String("Name")).toString());
        }
        const QString at = QStringList(place.mid(2)).join(QLatin1Char('/')) + QLatin1Char('/');
        const bool isWhole = from.name() == QLatin1String("Digest"); // of all that was saved
        if (!isWhole && (place.size() <= 2 || wanted.startsWith(at) || at.startsWith(wanted)))
        {
            to.writeCurrentToken(from);
        }
        if (!isStart)
        {
            place.removeLast();
        }
    }
    return branch;
}

/** Settings that no file holds. */
void MakeAlike(IDbGroup& living, IDbGroup& copy)
{
    QHash<QString, QString> texts;
    WalkTree(living, 0,
             [&texts](const std::shared_ptr<IDbObject>& node, int)
             {
                 const auto* const property = dynamic_cast<const IDbProperty*>(node.get());
                 if (property != nullptr && property->GetObjectType() == eOBJECTTYPE_SETTING)
                 {
                     texts.insert(property->GetPath(), property->GetText());
                 }
             });
    WalkTree(copy, 0,
             [&texts](const std::shared_ptr<IDbObject>& node, int)
             {
                 auto* const property = dynamic_cast<IDbProperty*>(node.get());
                 if (property == nullptr || IsSecret(*property))
                 {
                     return;
                 }
                 const auto text = texts.constFind(property->GetPath());
                 if (text != texts.constEnd() && *text != property->GetText())
                 {
                     property->SetText(*text); // what rules hold otherwise stays so
                 }
             });
}
} // namespace

CLivingTree::CLivingTree(CHttpClient client) : m_client(std::move(client))
{
    if (!Read({}, 1))
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("what came is no answer of the service"));
    }
}

CLivingTree::~CLivingTree() = default;

std::shared_ptr<CLivingNode> CLivingTree::Make(const QString& path, const QString& kind)
{
    if (kind == QLatin1String("property"))
    {
        return std::make_shared<CLivingProperty>(*this, path, eKW_NODE_PROPERTY);
    }
    if (kind == QLatin1String("group"))
    {
        return std::make_shared<CLivingGroup>(*this, path, eKW_NODE_GROUP);
    }
    if (kind == QLatin1String("array") || kind == QLatin1String("map"))
    {
        const bool isArray = kind == QLatin1String("array");
        return std::make_shared<CLivingContainer>(*this, path,
                                                  isArray ? eKW_NODE_ARRAY : eKW_NODE_MAP);
    }
    const bool isFunction = kind == QLatin1String("function");
    return std::make_shared<CLivingAction>(*this, path,
                                           isFunction ? eKW_NODE_FUNCTION : eKW_NODE_OPERATION);
}

std::shared_ptr<CLivingNode> CLivingTree::Absorb(COrderedJson&& told)
{
    const QString path = told["path"].GetText();
    const QString kind = told["kind"].GetText();
    std::shared_ptr<CLivingNode> node = m_nodes.value(path);
    if (!node || GetKindText(node->Kind()) != kind)
    {
        node = Make(path, kind);
        m_nodes.insert(path, node);
    }
    if (m_step && m_step->shown.contains(path))
    {
        told.Merge(m_step->shown.value(path));
    }
    node->Take(std::move(told));
    return node;
}

std::shared_ptr<CLivingNode> CLivingTree::Read(const QString& path, int depth)
{
    QByteArray target = "/tree?detail=full&path=" + QUrl::toPercentEncoding(path);
    target += depth < 0 ? QByteArray() : "&depth=" + QByteArray::number(depth);
    COrderedJson told = m_client.Get(target);
    if (!told.Has("kind"))
    {
        m_nodes.remove(path);
        const KW_ACCEPTANCE code = CodeOf(told);
        if (code != eKW_ACC_NOT_FOUND)
        {
            throw CFailure(code, told["text"].GetText());
        }
        return nullptr;
    }
    return Absorb(std::move(told));
}

void CLivingTree::Refresh(const CLivingNode& node)
{
    const auto parent = node.Path().isEmpty() ? nullptr : m_nodes.value(GetParentPath(node.Path()));
    if (parent && parent->IsFresh())
    {
        parent->NeedMembers();
    }
    if (!node.IsFresh())
    {
        Read(node.Path(), 1);
    }
}

std::shared_ptr<IDbObject> CLivingTree::Find(const QString& path)
{
    auto node = m_nodes.value(path);
    if (!node || !node->IsFresh())
    {
        node = Read(path, 1);
    }
    return std::dynamic_pointer_cast<IDbObject>(node);
}

std::shared_ptr<IDbGroup> CLivingTree::GetDbObject() const
{
    // The root was read at the beginning, and stays.
    return std::dynamic_pointer_cast<IDbGroup>(m_nodes.value(QString()));
}

KW_ACCEPTANCE CLivingTree::Write(const QJsonObject& write)
{
    if (m_step)
    {
        return Try(write);
    }
    const COrderedJson answer =
        m_client.Post("/write", {{QStringLiteral("writes"), QJsonArray{write}},
                                 {QStringLiteral("together"), false}});
    Forget();
    return CodeOf(answer);
}

KW_ACCEPTANCE CLivingTree::Try(const QJsonObject& write)
{
    QJsonArray writes = m_step->writes;
    writes.append(write);
    const COrderedJson answer = m_client.Post("/trial", {{QStringLiteral("writes"), writes}});
    const auto& reports = answer["writes"].GetMembers();
    const KW_ACCEPTANCE code = CodeOf(reports.empty() ? answer : reports.back().second);
    if (KW_IsAccepted(code))
    {
        m_step->writes = writes;
        m_step->shown.clear();
        for (const auto& [name, change] : answer["changes"].GetMembers())
        {
            m_step->shown.insert(change["path"].GetText(), change["now"]);
        }
    }
    Forget();
    return code;
}

KW_History CLivingTree::GetHistory() const
{
    const COrderedJson answer = m_client.Get("/history");
    return {answer["undoSteps"].GetTexts(), answer["redoSteps"].GetTexts()};
}

KW_ACCEPTANCE CLivingTree::Act(const char* target, const QJsonObject& body)
{
    if (m_step)
    {
        throw CFailure(eSTATUS_REFUSED, eKW_ACC_IN_TRANSACTION,
                       QStringLiteral("a step on the living tree consists of writes of settings "
                                      "alone; close it with \"commit\" or \"rollback\""));
    }
    const COrderedJson answer = m_client.Post(target, body);
    Forget();
    return CodeOf(answer);
}

CWebSocket CLivingTree::Follow(const QStringList& paths) const
{
    CWebSocket changes = m_client.Open("/changes");
    changes.Send(
        QJsonDocument(QJsonObject{{QStringLiteral("subscribe"), QJsonArray::fromStringList(paths)}})
            .toJson(QJsonDocument::Compact));
    const auto standing = COrderedJson::Parse(changes.Take());
    if (!standing || !standing->Has("subscribed"))
    {
        throw CFailure(eSTATUS_USAGE,
                       QStringLiteral("the service tells of no changes: %1")
                           .arg(standing ? (*standing)["detail"].GetText() : QString()));
    }
    return changes;
}

void CLivingTree::StartTransaction(const QString& text)
{
    m_step = t_Step{text, {}, {}};
}

KW_ACCEPTANCE CLivingTree::EndTransaction(bool keep)
{
    if (!m_step)
    {
        return eKW_ACC_NOTHING_TO_DO;
    }
    const t_Step step = *std::exchange(m_step, std::nullopt);
    Forget();
    if (!keep || step.writes.isEmpty())
    {
        return eKW_ACC_OK;
    }
    const KW_ACCEPTANCE code = Act(
        "/write", {{QStringLiteral("writes"), step.writes}, {QStringLiteral("text"), step.text}});
    // What was moved has been told when it was written.
    return code == eKW_ACC_WARNING ? static_cast<KW_ACCEPTANCE>(eKW_ACC_OK) : code;
}

KW_ACCEPTANCE CLivingTree::RunPresetSequence(bool factory)
{
    return Act("/preset", {{QStringLiteral("factory"), factory}});
}

QByteArray CLivingTree::ReadSettings(bool isCsv) const
{
    const COrderedJson answer =
        m_client.Get(isCsv ? "/settings?format=csv" : "/settings?format=xml");
    if (!answer.Has("settings"))
    {
        throw CFailure(
            CodeOf(answer),
            QStringLiteral("the service tells no settings: %1").arg(answer["detail"].GetText()));
    }
    return answer["settings"].GetText().toUtf8();
}

KW_ACCEPTANCE CLivingTree::Save(const QString& fileName)
{
    const QByteArray settings = ReadSettings(IsCsv(fileName));
    const QFileInfo present(fileName);
    QSaveFile file(fileName);
    const bool isSaved = (!present.exists() || present.isFile()) &&
                         file.open(QIODevice::WriteOnly) &&
                         file.write(settings) == settings.size() && file.commit();
    return isSaved ? eKW_ACC_OK : eKW_ACC_FILE_NOT_WRITABLE;
}

KW_ACCEPTANCE CLivingTree::Recall(const QString& fileName)
{
    QFile file(fileName);
    if (!QFileInfo(fileName).isFile() || !file.open(QIODevice::ReadOnly))
    {
        return eKW_ACC_FILE_NOT_READABLE;
    }
    return Act("/settings", {{QStringLiteral("settings"), QString::fromUtf8(file.readAll())},
                             {QStringLiteral("format"),
                              IsCsv(fileName) ? QStringLiteral("csv") : QStringLiteral("xml")}});
}

IKWFunctionRootBase& CLivingTree::GetPrivate()
{
    m_private = m_private ? m_private : GetZELRoot();
    return *m_private;
}

std::shared_ptr<IDbObject> CLivingTree::FindTwin(const QString& path)
{
    const auto tree = GetPrivate().GetDbObject();
    if (auto twin = tree->Find(path))
    {
        return twin;
    }
    // An item that is not there is made as any other of its container.
    const QString parent = GetParentPath(path);
    const auto group =
        path.isEmpty() ? nullptr : std::dynamic_pointer_cast<IDbGroup>(FindTwin(parent));
    IDbContainer* const container = group ? group->AsContainer() : nullptr;
    if (container == nullptr || !path.endsWith(QLatin1Char(']')))
    {
        const QString name = path.section(QLatin1Char('/'), -1);
        return group ? group->Find(name) : nullptr;
    }
    if (container->GetCount() == 0)
    {
        container->InsertItem({});
    }
    return container->GetItemByPosition(0);
}

const CEnumNameInfo* CLivingTree::FindNames(const QString& type, const QString& path)
{
    const auto known = m_names.constFind(type);
    if (known != m_names.constEnd())
    {
        return *known;
    }
    const auto twin = std::dynamic_pointer_cast<IDbProperty>(FindTwin(path));
    const CEnumNameInfo* const names = twin ? twin->GetEnumNameInfo() : nullptr;
    m_names.insert(type, names);
    return names;
}

std::shared_ptr<IKWFunctionRootBase> CLivingTree::MakeCopy()
{
    QTemporaryFile file;
    const QByteArray settings = ReadSettings(false);
    if (!file.open() || file.write(settings) != settings.size() || !file.flush())
    {
        throw CFailure(eSTATUS_USAGE,
                       QStringLiteral("can not write a temporary file: ") + file.errorString());
    }
    IKWFunctionRootBase& copy = GetPrivate();
    copy.RunPresetSequence(true);
    const KW_ACCEPTANCE code = copy.Recall(file.fileName());
    if (!KW_IsAccepted(code))
    {
        throw CFailure(code, QStringLiteral("the service's settings can not be recalled: ") +
                                 KW_GetAcceptanceText(code));
    }
    MakeAlike(*GetDbObject(), *copy.GetDbObject());
    copy.EnableHistory(false); // forgets these steps
    copy.EnableHistory(true);
    return m_private;
}

KW_ACCEPTANCE CLivingTree::TakeFromCopy(const QString& path, const QString& text)
{
    QTemporaryFile file;
    const KW_ACCEPTANCE code = file.open() ? GetPrivate().Save(file.fileName())
                                           : static_cast<KW_ACCEPTANCE>(eKW_ACC_FILE_NOT_WRITABLE);
    if (!KW_IsAccepted(code))
    {
        return code;
    }
    QFile saved(file.fileName()); // a new one has taken its name
    const QString branch =
        saved.open(QIODevice::ReadOnly) ? GetBranch(saved.readAll(), path) : QString();
    return Act("/settings", {{QStringLiteral("settings"), branch},
                             {QStringLiteral("format"), QStringLiteral("xml")},
                             {QStringLiteral("text"), text}});
}
