// SPDX-License-Identifier: MIT
#include "NodeText.h"

#include "EnumNameInfo.h"
#include "EnumText.h"
#include "Failure.h"
#include "IKWProperties.h"
#include "Output.h"
#include "TreeWalk.h"
#include "ValueText.h"

#include <QJsonArray>
#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

namespace
{
struct t_IntegerType
{
    const char* name;
    const char* lowest;
    const char* highest;
};

constexpr std::array<t_IntegerType, 6> kIntegers{
    {{"int16", "-32768", "32767"},
     {"uint16", "0", "65535"},
     {"int32", "-2147483648", "2147483647"},
     {"uint32", "0", "4294967295"},
     {"int64", "-9223372036854775808", "9223372036854775807"},
     {"uint64", "0", "18446744073709551615"}}};

const t_IntegerType* FindInteger(const QString& type)
{
    for (const t_IntegerType& integer : kIntegers)
    {
        if (type == QLatin1String(integer.name))
        {
            return &integer;
        }
    }
    return nullptr;
}

bool IsDouble(const QString& type)
{
    return type == QLatin1String("double");
}

bool IsNumber(const QString& type)
{
    return IsDouble(type) || FindInteger(type) != nullptr;
}

/** What the property would have read, for a text that it could not. */
CFailure NotRead(const IDbProperty& property, const QString& written)
{
    const QString path = property.GetPath();
    const QString shown = IsSecret(property) ? KW_GetSecretText() : written;
    QString number;
    if (KW_IsAccepted(KW_ParseNumber(written, property.GetUnitCode(), number)))
    {
        return {eSTATUS_USAGE,
                QStringLiteral("%1 takes whole numbers (%2), not %3")
                    .arg(path, property.GetTypeName(), IsSecret(property) ? shown : number)};
    }
    return NoNumber(shown, property.GetUnitCode(), path);
}

QString DescribeRange(const IDbProperty& property, bool exact)
{
    const QString type = property.GetTypeName();
    const t_IntegerType* const integer = FindInteger(type);
    if (!IsNumber(type))
    {
        return {};
    }
    const auto show = [&](const QString& limit, const char* otherwise)
    {
        const QString text = limit.isEmpty() ? QString::fromLatin1(otherwise) : limit;
        return ShowValue({text, type, property.GetUnitCode()}, exact);
    };
    return QStringLiteral("allowed: %1 … %2")
        .arg(show(property.GetMinText(), integer != nullptr ? integer->lowest : "-inf"),
             show(property.GetMaxText(), integer != nullptr ? integer->highest : "inf"));
}

QString DescribeSelectable(const IDbProperty& property, bool exact)
{
    constexpr int kMostTexts = 16;
    QStringList values;
    const QStringList texts = property.GetValueTexts();
    for (const QString& text : texts)
    {
        values.append(ShowValue({text, property.GetTypeName(), property.GetUnitCode()}, exact));
    }
    const QString more = values.size() > kMostTexts
                             ? QStringLiteral(", … (%1 in all)").arg(values.size())
                             : QString();
    return values.isEmpty()
               ? QString()
               : QStringLiteral("selectable: ") +
                     QStringList(values.mid(0, kMostTexts)).join(QLatin1String(", ")) + more;
}

QString DescribeLength(const IDbProperty& property)
{
    const INT32 most = GetMostLength(property);
    const QString type = property.GetTypeName();
    return most == 0 ? QString()
                     : QStringLiteral("at most %1 %2")
                           .arg(most)
                           .arg(QLatin1String(type == QLatin1String("bitpattern") ? "bits"
                                              : type == QLatin1String("blob")     ? "bytes"
                                                                                  : "characters"));
}

QString DescribeForm(const IDbProperty& property, bool exact)
{
    const QString type = property.GetTypeName();
    if (type == QLatin1String("bitpattern"))
    {
        return QStringLiteral("a pattern consists of 0, 1 and X");
    }
    if (type == QLatin1String("blob"))
    {
        return QStringLiteral("bytes are written in base 64");
    }
    if (const QString form = GetFormText(property); !form.isEmpty())
    {
        return QStringLiteral("allowed: ") + form;
    }
    return DescribeRange(property, exact);
}

QString DescribeFile(const IDbProperty& property)
{
    const auto file = GetFileForm(property);
    return !file
               ? QString()
               : QStringLiteral("a file in \"%1\" that ends in .%2")
                     .arg(file->GetFolder(), file->GetOpenExtensions().join(QLatin1String(", .")));
}

void AddProperty(QJsonObject& json, const IDbProperty& property, bool full)
{
    const t_ShownValue value = GetShownValue(property);
    json[QStringLiteral("type")] = value.type;
    json[QStringLiteral("value")] = ToJsonValue(value);
    json[QStringLiteral("text")] = value.secret ? KW_GetSecretText() : value.text;
    json[QStringLiteral("unit")] = KW_GetUnitText(value.unit);
    json[QStringLiteral("result")] = property.GetObjectType() == eOBJECTTYPE_RESULT;
    json[QStringLiteral("valid")] = property.GetValidity() == eKW_VALIDITY_VALID;
    if (!full)
    {
        return;
    }
    const auto other = [&](const QString& text) {
        return text.isEmpty() ? QJsonValue() : ToJsonValue({text, value.type, value.unit});
    };
    json[QStringLiteral("meaning")] = GetMeaning(property);
    json[QStringLiteral("userValue")] = other(GetUserValueText(property).text);
    json[QStringLiteral("default")] =
        ToJsonValue({property.GetDefaultText(), value.type, value.unit});
    json[QStringLiteral("minimum")] = other(property.GetMinText());
    json[QStringLiteral("maximum")] = other(property.GetMaxText());
    json[QStringLiteral("step")] = other(property.GetStepText());
    json[QStringLiteral("selectable")] = ToJsonValues(property.GetValueTexts(), value);
}
QString DescribeFiles(INT32 saveRecall)
{
    switch (saveRecall)
    {
    case eSAVERECALL_NONE:
        return QStringLiteral("no file");
    case eSAVERECALL_SETTINGS:
        return QStringLiteral("settings files");
    case eSAVERECALL_SYSTEM:
        return QStringLiteral("the instrument's own state");
    default:
        return QStringLiteral("settings files and the instrument's own state");
    }
}

} // namespace

QString ReadValue(const IDbProperty& property, const QString& written)
{
    if (const CEnumNameInfo* const names = property.GetEnumNameInfo())
    {
        return KW_FormatEnum(*names, ReadEnum(*names, written, property.GetPath()));
    }
    QString text;
    if (!KW_IsAccepted(KW_ParseValue(property, written, text)))
    {
        throw NotRead(property, written);
    }
    return text;
}

QString DescribeLimits(const IDbProperty& property, KW_ACCEPTANCE code, bool exact)
{
    switch (code)
    {
    case eKW_ACC_BELOW_MINIMUM:
    case eKW_ACC_ABOVE_MAXIMUM:
    case eKW_ACC_NOT_A_NUMBER:
        return DescribeRange(property, exact);
    case eKW_ACC_BAD_TEXT:
        return DescribeForm(property, exact);
    case eKW_ACC_NOT_IN_VALUE_LIST:
    case eKW_ACC_NOT_ENABLED:
    case eKW_ACC_UNKNOWN_VALUE:
    case eKW_ACC_AMBIGUOUS_NAME:
        return DescribeSelectable(property, exact);
    case eKW_ACC_TOO_LONG:
        return DescribeLength(property);
    case eKW_ACC_BAD_NAME:
        return DescribeFile(property);
    case eKW_ACC_NOT_FOUND:
        return QStringLiteral("a reference takes the path of an item of an array or map");
    case eKW_ACC_READ_ONLY:
        return property.GetObjectType() == eOBJECTTYPE_RESULT
                   ? QStringLiteral("a result follows from other settings or is measured")
                   : QStringLiteral("it can not be changed in the present state");
    default:
        return {};
    }
}

QString GetAvailabilityText(KW_AVAILABILITY availability)
{
    switch (availability)
    {
    case eAVAILABILITY_AVAILABLE:
        return QStringLiteral("available");
    case eAVAILABILITY_READ_ONLY:
        return QStringLiteral("read only");
    case eAVAILABILITY_NOT_AVAILABLE:
        return QStringLiteral("not available");
    }
    return {};
}

QString DescribeState(const IDbObject& node)
{
    QStringList states;
    if (node.GetObjectType() == eOBJECTTYPE_RESULT)
    {
        states.append(QStringLiteral("result"));
    }
    const auto* const property = dynamic_cast<const IDbProperty*>(&node);
    if (property != nullptr && property->GetValidity() == eKW_VALIDITY_INVALID)
    {
        states.append(QStringLiteral("invalid"));
    }
    if (node.GetAvailability() != eAVAILABILITY_AVAILABLE)
    {
        states.append(GetAvailabilityText(node.GetAvailability()));
    }
    return states.join(QLatin1String(", "));
}

QStringList GetInfoLines(const IDbProperty& property, bool exact)
{
    const t_ShownValue value = GetShownValue(property);
    CTable table;
    const auto row = [&table](const char* name, const QString& text)
    {
        if (!text.isEmpty())
        {
            table.Add({QStringLiteral("  ") + QLatin1String(name), text});
        }
    };
    const auto shown = [&](const QString& text) {
        return text.isEmpty() ? QString() : ShowValue({text, value.type, value.unit}, exact);
    };
    QStringList selectable;
    const QStringList texts = property.GetValueTexts();
    for (const QString& text : texts)
    {
        selectable.append(shown(text));
    }
    row("meaning", GetMeaning(property));
    row("value", ShowValue(value, exact));
    row("user's value", shown(GetUserValueText(property).text));
    row("default", shown(property.GetDefaultText()));
    row("minimum", shown(property.GetMinText()));
    row("maximum", shown(property.GetMaxText()));
    row("step", shown(property.GetStepText()));
    row("selectable", selectable.join(QLatin1String(", ")));
    row("type", value.type);
    row("unit", KW_GetUnitText(value.unit));
    row("state", DescribeState(property));
    row("saved in", DescribeFiles(property.GetSaveRecallType()));
    return QStringList(property.GetPath()) + table.GetLines(0);
}

QJsonValue ToJsonValue(const t_ShownValue& value)
{
    if (value.secret)
    {
        return KW_GetSecretText();
    }
    constexpr double kLargestExact = 9007199254740992.0;
    bool isNumber = false;
    const double number = IsNumber(value.type) ? value.text.toDouble(&isNumber) : 0.0;
    const bool isExact = IsDouble(value.type) || std::fabs(number) < kLargestExact;
    return isNumber && std::isfinite(number) && isExact ? QJsonValue(number)
                                                        : QJsonValue(value.text);
}

QJsonArray ToJsonValues(const QStringList& texts, const t_ShownValue& like)
{
    QJsonArray values;
    for (const QString& text : texts)
    {
        values.append(ToJsonValue({text, like.type, like.unit}));
    }
    return values;
}

QJsonObject ToJson(const IDbObject& node, bool full)
{
    QJsonObject json{{QStringLiteral("path"), node.GetPath()},
                     {QStringLiteral("kind"), GetKindText(node.GetKind())},
                     {QStringLiteral("availability"), GetAvailabilityText(node.GetAvailability())}};
    if (const auto* const property = dynamic_cast<const IDbProperty*>(&node))
    {
        AddProperty(json, *property, full);
    }
    if (const auto* const container = dynamic_cast<const IDbContainer*>(&node))
    {
        json[QStringLiteral("count")] = container->GetCount();
        json[QStringLiteral("maximumCount")] = container->GetMaxCount();
        json[QStringLiteral("active")] = container->GetActiveItem();
    }
    return json;
}
