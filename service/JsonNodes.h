// SPDX-License-Identifier: MIT
#pragma once

#include "IKWFunctionRootBase.h"
#include "JsonWriter.h"

#include <memory>
#include <optional>

class QJsonValue;

/** What can change about a property, as texts. Of a secret nothing but its looks is known here. */
struct t_JsonState
{
    QString path;
    QString type;
    QString text;  ///< as IDbProperty::GetText
    QString shown; ///< as KW_FormatValue
    QString unit;
    QString minimum;
    QString maximum;
    QString step;
    QStringList selectable;
    QString userValue; ///< null where the value is the user's own; never that of a secret
    KW_AVAILABILITY availability = eAVAILABILITY_AVAILABLE;
    bool isResult = false;
    bool isValid = true;
    bool isSecret = false;

    bool operator==(const t_JsonState&) const = default;
};

/** How much of a node is written. */
struct t_JsonReading
{
    bool isFull = false; ///< with what never or seldom changes: meaning, default, names, values
    int depth = -1;      ///< levels of members; 0 for the node alone, −1 for all
};

/**
 * Nodes and values in JSON. Whole numbers beyond 2⁵³ are texts, as many readers of JSON keep
 * numbers as doubles; doubles are written as the shortest text that reads back to the same one;
 * what is no finite number is null, and `text` says what it is.
 */
namespace NJson
{
t_JsonState StateOf(IDbProperty& property);

/** A value of the type; null where the text is empty or no finite number. */
void WriteValue(CJsonWriter& json, const QString& text, const QString& type);
void WriteState(CJsonWriter& json, const t_JsonState& state);

/** A node with its members. The properties of one group are read together, in a bracket; groups are
    read one by one, so that no write waits for longer than that. */
void WriteNode(CJsonWriter& json, const std::shared_ptr<IKWFunctionRootBase>& root, IDbObject& node,
               const t_JsonReading& reading);

/** Members "code", "name" and "text" of a code, and "detail" where there is more to say. */
void AddCode(CJsonWriter& json, KW_ACCEPTANCE code, const QString& detail = {});

/** Members that say what a text must look like, beyond what the state says. */
void AddForm(CJsonWriter& json, IDbProperty& property);

/** The text for IDbProperty::SetText of a value in JSON: numbers, texts as KW_ParseValue reads
   them, and for switches also true and false. Refused as there, and for numbers that JSON may have
    rounded. */
KW_ACCEPTANCE ReadValue(const IDbProperty& property, const QJsonValue& value, QString& text);

const char* NameOf(KW_AVAILABILITY availability);
const char* NameOf(KW_CONTROL_MODE mode);
const char* NameOf(KW_NODE_KIND kind);
} // namespace NJson
