// SPDX-License-Identifier: MIT
#include "JsonNodes.h"

#include "EnumNameInfo.h"
#include "IKWProperties.h"
#include "KWBrackets.h"
#include "KWEnumerationsOnOff.h"
#include "KWRemoteNames.h"
#include "KWTexts.h"
#include "PropertyLengths.h"

#include <QJsonValue>
#include <QLocale>
#include <cmath>

namespace
{
constexpr double kLargestExact = 9007199254740991.0; // the next one is rounded to an even one

bool IsDouble(const QString& type)
{
    return type == QLatin1String("double");
}

bool IsWhole(const QString& type)
{
    return type.startsWith(QLatin1String("int")) || type.startsWith(QLatin1String("uint"));
}

bool IsExact(const QString& number)
{
    return std::fabs(number.toDouble()) <= kLargestExact;
}

void WriteValues(CJsonWriter& json, const QStringList& texts, const QString& type)
{
    json.BeginArray();
    for (const QString& text : texts)
    {
        NJson::WriteValue(json, text, type);
    }
    json.EndArray();
}

void AddHead(CJsonWriter& json, const IDbObject& node)
{
    json.Key("path").Text(node.GetPath());
    json.Key("kind").Text(QLatin1String(NJson::NameOf(node.GetKind())));
}

void AddAvailability(CJsonWriter& json, KW_AVAILABILITY availability)
{
    json.Key("availability").Text(QLatin1String(NJson::NameOf(availability)));
}

/** A value, or null where there is none: the text is empty then. */
void WriteOrNull(CJsonWriter& json, const QString& text, const QString& type)
{
    if (text.isEmpty())
    {
        json.Null();
        return;
    }
    NJson::WriteValue(json, text, type);
}

void AddLimits(CJsonWriter& json, const t_JsonState& state)
{
    WriteOrNull(json.Key("minimum"), state.minimum, state.type);
    WriteOrNull(json.Key("maximum"), state.maximum, state.type);
    WriteOrNull(json.Key("step"), state.step, state.type);
    WriteValues(json.Key("selectable"), state.selectable, state.type);
}

/** What was chosen and is held back; results and secrets have none. It comes and goes with limits.
 */
void AddUserValue(CJsonWriter& json, const t_JsonState& state)
{
    if (state.isResult || state.isSecret)
    {
        return;
    }
    json.Key("userValue");
    if (state.userValue.isNull())
    {
        json.Null();
    }
    else
    {
        NJson::WriteValue(json, state.userValue, state.type);
    }
}

void AddState(CJsonWriter& json, const t_JsonState& state)
{
    json.Key("path").Text(state.path);
    json.Key("kind").Text(QLatin1String(NJson::NameOf(eKW_NODE_PROPERTY)));
    json.Key("type").Text(state.type);
    if (state.isSecret)
    {
        json.Key("value").Null();
    }
    else
    {
        NJson::WriteValue(json.Key("value"), state.text, state.type);
    }
    json.Key("text").Text(state.text);
    json.Key("shown").Text(state.shown);
    json.Key("unit").Text(state.unit);
    json.Key("result").Bool(state.isResult);
    json.Key("valid").Bool(state.isValid);
    json.Key("secret").Bool(state.isSecret);
    AddAvailability(json, state.availability);
    AddLimits(json, state);
    AddUserValue(json, state);
}

void AddNames(CJsonWriter& json, const IDbObject& node)
{
    json.Key("name").Text(node.GetNodeName());
    json.Key("remote").Text(KW_GetRemoteNames(node).mnemonic);
    json.Key("meaning").Text(KW_GetMeaning(node));
    QStringList files;
    files << (node.GetSaveRecallType() & eSAVERECALL_SETTINGS
                  ? QStringList(QStringLiteral("settings"))
                  : QStringList());
    files << (node.GetSaveRecallType() & eSAVERECALL_SYSTEM ? QStringList(QStringLiteral("system"))
                                                            : QStringList());
    json.Key("saved").Texts(files);
}

/** Every value of an enumeration, those that can not be selected now as well. */
void AddValues(CJsonWriter& json, IDbProperty& property)
{
    const CEnumNameInfo* const names = property.GetEnumNameInfo();
    const auto handle = std::dynamic_pointer_cast<IKWEnumPropertyBase>(property.GetHandle());
    if (names == nullptr || !handle)
    {
        return;
    }
    json.Key("values").BeginArray();
    for (INT32 value = 0; value < names->GetEnumSize(); ++value)
    {
        json.BeginObject();
        json.Key("value").Text(KW_FormatEnum(*names, value));
        json.Key("shown").Text(names->GetName(value));
        json.Key("remote").Text(names->GetRemoteName(value));
        json.Key("selectable").Bool(handle->GetValueState(value) != eVALUESTATE_NOT_SELECTABLE);
        json.EndObject();
    }
    json.EndArray();
}

/** What a user must know to write a value of kinds whose text says little. */
void AddKind(CJsonWriter& json, IDbProperty& property)
{
    const auto handle = property.GetHandle();
    if (const auto* const file = dynamic_cast<const IKWFilePathProperty*>(handle.get()))
    {
        json.Key("folder").Text(file->GetFolder());
        json.Key("openExtensions").Texts(file->GetOpenExtensions());
        json.Key("saveExtensions").Texts(file->GetSaveExtensions());
    }
    else if (const auto* const bits = dynamic_cast<const IKWBitPatternProperty*>(handle.get()))
    {
        json.Key("format").Text(bits->GetFormat() == eNUMBERFORMAT_BINARY ? QStringLiteral("binary")
                                                                          : QStringLiteral("hex"));
    }
}

void AddRest(CJsonWriter& json, IDbProperty& property, const t_JsonState& state)
{
    AddNames(json, property);
    NJson::AddForm(json, property);
    AddValues(json, property);
    AddKind(json, property);
    if (state.isSecret)
    {
        return;
    }
    const QString standard = property.GetDefaultText();
    NJson::WriteValue(json.Key("default"), standard, state.type);
    json.Key("isDefault").Bool(standard == state.text);
}

void WriteProperty(CJsonWriter& json, IDbProperty& property, bool isFull)
{
    const t_JsonState state = NJson::StateOf(property);
    json.BeginObject();
    AddState(json, state);
    if (isFull)
    {
        AddRest(json, property, state);
    }
    json.EndObject();
}

void WriteAction(CJsonWriter& json, const IDbObject& action, bool isFull)
{
    json.BeginObject();
    AddHead(json, action);
    AddAvailability(json, action.GetAvailability());
    if (isFull)
    {
        AddNames(json, action);
    }
    json.EndObject();
}

void AddContainer(CJsonWriter& json, const IDbContainer& container)
{
    json.Key("count").Whole(container.GetCount());
    json.Key("maximumCount").Whole(container.GetMaxCount());
    json.Key("dynamic").Bool(container.IsDynamic());
    json.Key("active").Text(container.GetActiveItem());
}

/** What a group has of its own: read together. */
void AddOwn(CJsonWriter& json, const std::shared_ptr<IKWFunctionRootBase>& root, IDbGroup& group,
            const t_JsonReading& reading)
{
    const CKWReadBracket together(root);
    AddHead(json, group);
    AddAvailability(json, group.GetAvailability());
    if (reading.isFull)
    {
        AddNames(json, group);
    }
    if (const IDbContainer* const container = group.AsContainer())
    {
        AddContainer(json, *container);
    }
    if (reading.depth == 0)
    {
        return;
    }
    json.Key("properties").BeginObject();
    for (INT32 i = 0; i < group.GetPropertyCount(); ++i)
    {
        const auto property = group.GetProperty(i);
        WriteProperty(json.Key(property->GetNodeName()), *property, reading.isFull);
    }
    json.EndObject();
    json.Key("actions").BeginObject();
    for (INT32 i = 0; i < group.GetActionCount(); ++i)
    {
        const auto action = group.GetAction(i);
        WriteAction(json.Key(action->GetNodeName()), *action, reading.isFull);
    }
    json.EndObject();
}

void WriteGroup(CJsonWriter& json, const std::shared_ptr<IKWFunctionRootBase>& root,
                IDbGroup& group, const t_JsonReading& reading)
{
    json.BeginObject();
    AddOwn(json, root, group, reading);
    const t_JsonReading below{reading.isFull, reading.depth < 0 ? -1 : reading.depth - 1};
    if (reading.depth != 0)
    {
        json.Key("groups").BeginObject();
        for (INT32 i = 0; i < group.GetGroupCount(); ++i)
        {
            const auto child = group.GetGroup(i);
            WriteGroup(json.Key(child->GetNodeName()), root, *child, below);
        }
        json.EndObject();
    }
    if (const IDbContainer* const container = group.AsContainer();
        container != nullptr && reading.depth != 0)
    {
        json.Key("items").BeginArray();
        // Others may remove items meanwhile.
        for (INT32 i = 0; const auto item = container->GetItemByPosition(i); ++i)
        {
            WriteGroup(json, root, *item, below);
        }
        json.EndArray();
    }
    json.EndObject();
}

KW_ACCEPTANCE ReadNumber(const IDbProperty& property, double number, QString& text)
{
    if (IsWhole(property.GetTypeName()) && std::fabs(number) > kLargestExact)
    {
        return eKW_ACC_BAD_TEXT;
    }
    const QString written = std::fabs(number) <= kLargestExact && std::trunc(number) == number
                                ? QString::number(static_cast<qlonglong>(number))
                                : QString::number(number, 'g', QLocale::FloatingPointShortest);
    return KW_ParseValue(property, written, text);
}
} // namespace

const char* NJson::NameOf(KW_AVAILABILITY availability)
{
    switch (availability)
    {
    case eAVAILABILITY_AVAILABLE:
        return "available";
    case eAVAILABILITY_READ_ONLY:
        return "read only";
    default:
        return "not available";
    }
}

const char* NJson::NameOf(KW_CONTROL_MODE mode)
{
    switch (mode)
    {
    case eCONTROL_LOCAL:
        return "local";
    case eCONTROL_REMOTE:
        return "remote";
    default:
        return "local lockout";
    }
}

const char* NJson::NameOf(KW_NODE_KIND kind)
{
    switch (kind)
    {
    case eKW_NODE_PROPERTY:
        return "property";
    case eKW_NODE_GROUP:
        return "group";
    case eKW_NODE_ARRAY:
        return "array";
    case eKW_NODE_MAP:
        return "map";
    case eKW_NODE_FUNCTION:
        return "function";
    default:
        return "operation";
    }
}

t_JsonState NJson::StateOf(IDbProperty& property)
{
    const KW_ValueText value = KW_GetValueText(property);
    t_JsonState state;
    state.path = property.GetPath();
    state.type = value.type;
    state.text = value.secret ? KW_GetSecretText() : value.text;
    state.shown = KW_FormatValue(value);
    state.unit = KW_GetUnitText(value.unit);
    state.minimum = property.GetMinText();
    state.maximum = property.GetMaxText();
    state.step = property.GetStepText();
    state.selectable = property.GetValueTexts();
    state.availability = property.GetAvailability();
    state.isResult = property.GetObjectType() == eOBJECTTYPE_RESULT;
    state.isValid = property.GetValidity() == eKW_VALIDITY_VALID;
    state.isSecret = value.secret;
    if (!state.isSecret)
    {
        state.userValue = KW_GetUserValueText(property).text;
    }
    return state;
}

void NJson::WriteValue(CJsonWriter& json, const QString& text, const QString& type)
{
    if (IsDouble(type) || IsWhole(type))
    {
        const bool isFinite = !text.isEmpty() && !text.contains(QLatin1String("nan")) &&
                              !text.contains(QLatin1String("inf"));
        if (!isFinite)
        {
            json.Null();
            return;
        }
        if (IsDouble(type) || IsExact(text))
        {
            json.Raw(text.toLatin1());
            return;
        }
    }
    json.Text(text);
}

void NJson::WriteState(CJsonWriter& json, const t_JsonState& state)
{
    json.BeginObject();
    AddState(json, state);
    json.EndObject();
}

void NJson::WriteNode(CJsonWriter& json, const std::shared_ptr<IKWFunctionRootBase>& root,
                      IDbObject& node, const t_JsonReading& reading)
{
    if (auto* const group = dynamic_cast<IDbGroup*>(&node))
    {
        WriteGroup(json, root, *group, reading);
        return;
    }
    const CKWReadBracket together(root);
    auto* const property = dynamic_cast<IDbProperty*>(&node);
    property != nullptr ? WriteProperty(json, *property, reading.isFull)
                        : WriteAction(json, node, reading.isFull);
}

void NJson::AddCode(CJsonWriter& json, KW_ACCEPTANCE code, const QString& detail)
{
    json.Key("code").Whole(code);
    json.Key("name").Text(KW_GetAcceptanceName(code));
    json.Key("text").Text(KW_GetAcceptanceText(code));
    if (!detail.isEmpty())
    {
        json.Key("detail").Text(detail);
    }
}

void NJson::AddForm(CJsonWriter& json, IDbProperty& property)
{
    json.Key("form").Text(KW_GetFormText(property));
    if (const INT32 most = MostLengthOf(*property.GetHandle()); most > 0)
    {
        json.Key("maximumLength").Whole(most);
    }
}

KW_ACCEPTANCE NJson::ReadValue(const IDbProperty& property, const QJsonValue& value, QString& text)
{
    const CEnumNameInfo* const names = property.GetEnumNameInfo();
    const bool isSwitch =
        names != nullptr && names->GetType() == GetStaticEnumNameInfo<KW_ONOFF>().GetType();
    if (value.isBool() && isSwitch)
    {
        text = KW_FormatEnum(*names, value.toBool() ? eKW_ONOFF_ON : eKW_ONOFF_OFF);
        return eKW_ACC_OK;
    }
    if (value.isDouble())
    {
        return ReadNumber(property, value.toDouble(), text);
    }
    return value.isString() ? KW_ParseValue(property, value.toString(), text)
                            : static_cast<KW_ACCEPTANCE>(eKW_ACC_BAD_TEXT);
}
