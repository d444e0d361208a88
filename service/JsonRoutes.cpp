// SPDX-License-Identifier: MIT
// The table of all requests, and the OpenAPI document that it makes.

#include "JsonSchemas.h"
#include "JsonService.h"

std::span<const CJsonService::t_Route> CJsonService::Routes()
{
    static constexpr t_Route kRoutes[] = {
        {"GET", "/openapi.json", false, true, &CJsonService::GetDescription, "This description", "",
         nullptr, "Description"},
        {"GET", "/tree", false, false, &CJsonService::GetNode,
         "A node with all that is below it. The settings of one group are read together.",
         "path depth detail", nullptr, "Node"},
        {"GET", "/standing", false, false, &CJsonService::GetStanding,
         "Who may write: local and remote users, or remote ones alone; or nobody by this service",
         "", nullptr, "Control"},
        {"GET", "/files", false, false, &CJsonService::GetFiles,
         "Names of files that a setting of a file's name takes, those that are there", "path",
         nullptr, "Files"},
        {"GET", "/history", false, true, &CJsonService::GetHistory,
         "The steps to undo and to redo, the next one first", "", nullptr, "History"},
        {"GET", "/couplings", false, false, &CJsonService::GetCouplings,
         "The rows of rules of a group and of all below it", "path", nullptr, "Couplings"},
        {"GET", "/why", false, false, &CJsonService::GetReasons,
         "A node with the rows of rules that it starts, and those of its group", "path", nullptr,
         "Reasons"},
        {"GET", "/changes", false, true, &CJsonService::GetChanges,
         "A WebSocket of changes: a client sends Subscribe and is answered by Standing, and by "
         "Changes from then on, each numbered. Without a WebSocket it is refused.",
         "", nullptr, "Changes"},
        {"GET", "/waves", false, true, &CJsonService::GetChanges,
         "A WebSocket of pictures: a client sends WaveWish, as often as it likes, and is answered "
         "by WaveStanding. From then on it gets the newest picture whenever it takes one: a binary "
         "message of the length of its head (32 bits, little endian), the head (WavePicture, in "
         "JSON, its length a multiple of 4), and pairs of 32-bit floats. WaveMasks come as texts "
         "when they have changed. Without a WebSocket it is refused.",
         "", nullptr, "WavePicture"},
        {"POST", "/write", true, false, &CJsonService::Write,
         "Writes settings, all or nothing unless \"together\" is false", "", "Writes", "Written"},
        {"POST", "/trial", false, false, &CJsonService::Try,
         "What would move if these settings were written: carried out on a private copy of the "
         "tree, which is thrown away",
         "", "Trial", "Tried"},
        {"POST", "/run", true, false, &CJsonService::Run,
         "Runs an action; an operation is answered when it has ended", "", "Path", "Code"},
        {"POST", "/items", true, false, &CJsonService::ChangeItems,
         "Inserts, removes, renames, copies or moves an item of an array or map, or makes it the "
         "active one",
         "", "ItemChange", "Code"},
        {"POST", "/undo", true, false, &CJsonService::Undo, "Steps back, all or none", "steps",
         nullptr, "Code"},
        {"POST", "/redo", true, false, &CJsonService::Redo, "Steps forward, all or none", "steps",
         nullptr, "Code"},
        {"POST", "/preset", true, false, &CJsonService::Preset,
         "Sets the defaults: of the user's settings, or of everything that is saved", "", "Preset",
         "Code"},
        {"POST", "/save", true, false, &CJsonService::Save,
         "Saves the user's settings in the settings folder", "", "File", "Code"},
        {"POST", "/recall", true, false, &CJsonService::Recall,
         "Recalls the user's settings from the settings folder", "", "File", "Code"},
        {"GET", "/settings", false, false, &CJsonService::GetSettings,
         "The user's settings as a file of them is written", "format", nullptr, "Settings"},
        {"POST", "/settings", true, false, &CJsonService::PutSettings,
         "Recalls the user's settings from the text of a file", "", "SettingsFile", "Code"},
    };
    return kRoutes;
}

namespace
{
QByteArray Reference(const char* schema)
{
    return QByteArray(R"({"$ref":"#/components/schemas/)") + schema + "\"}";
}

void AddContent(CJsonWriter& json, const char* schema)
{
    json.Key("content").BeginObject();
    json.Key("application/json").BeginObject();
    json.Key("schema").Raw(Reference(schema));
    json.EndObject();
    json.EndObject();
}

void AddResponse(CJsonWriter& json, const char* status, const char* description, const char* schema)
{
    json.Key(status).BeginObject();
    json.Key("description").Text(QLatin1String(description));
    AddContent(json, schema);
    json.EndObject();
}
} // namespace

void CJsonService::DescribeRoute(CJsonWriter& json, const t_Route& route)
{
    json.Key(QString::fromLatin1(route.method).toLower()).BeginObject();
    json.Key("summary").Text(QLatin1String(route.summary));
    if (*route.parameters != '\0')
    {
        json.Key("parameters").BeginArray();
        for (const QByteArray& name : QByteArray(route.parameters).split(' '))
        {
            json.Raw("{\"$ref\":\"#/components/parameters/" + name + "\"}");
        }
        json.EndArray();
    }
    if (route.body != nullptr)
    {
        json.Key("requestBody").BeginObject();
        json.Key("required").Bool(true);
        AddContent(json, route.body);
        json.EndObject();
    }
    json.Key("responses").BeginObject();
    AddResponse(json, "200", "Taken", route.answer);
    const bool isReported = QByteArray(route.answer) == "Written";
    AddResponse(json, "default", "Refused", isReported ? "WrittenOrRefused" : "Code");
    json.EndObject();
    json.EndObject();
}

QByteArray CJsonService::Describe()
{
    CJsonWriter json;
    json.BeginObject();
    json.Key("openapi").Text(QStringLiteral("3.1.0"));
    json.Key("info").BeginObject();
    json.Key("title").Text(QStringLiteral("The instrument's settings and results"));
    json.Key("version").Text(QStringLiteral("1"));
    json.EndObject();
    json.Key("paths").BeginObject();
    QByteArray path;
    for (const t_Route& route : Routes())
    {
        if (path != route.path) // methods of one path stand together
        {
            path.isEmpty() ? void() : json.EndObject();
            json.Key(route.path).BeginObject();
            path = route.path;
        }
        DescribeRoute(json, route);
    }
    json.EndObject();
    json.EndObject();
    json.Key("components").Raw(NJson::Components());
    json.EndObject();
    return json.GetText();
}
