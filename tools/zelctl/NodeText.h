// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"

#include <QJsonObject>
#include <QString>

/** A value of a property with what it takes to show it. */
struct t_ShownValue
{
    QString text; ///< as IDbProperty::GetText
    QString type; ///< as IDbProperty::GetTypeName
    KW_UNIT unit;
};

t_ShownValue GetShownValue(const IDbProperty& property);

/** A value for a reader: numbers with prefix and unit, or in full with `exact`; texts in quotes;
    byte blocks by their size, or in full with `exact`. */
QString ShowValue(const t_ShownValue& value, bool exact);

/** The property's text for a value that a user wrote: numbers with prefixes and units,
    enumerations by any of their names, patterns with blanks. Fails for what can not be meant. */
QString ReadValue(const IDbProperty& property, const QString& written);

/** What the property would have taken, for a refused write; empty where the code says it all. */
QString DescribeLimits(const IDbProperty& property, KW_ACCEPTANCE code, bool exact);

/** "result", "read only", "not available", "invalid", joined; empty for a usable setting. */
QString DescribeState(const IDbObject& node);

/** A property's path, and lines with its meaning, value, limits, type, unit and state. */
QStringList GetInfoLines(const IDbProperty& property, bool exact);

QString GetAvailabilityText(KW_AVAILABILITY availability);

/** A node in JSON: path, kind, and of properties type, value, text, unit, state; with `full` also
    meaning, default, limits and selectable values. */
QJsonObject ToJson(const IDbObject& node, bool full);

/** A value in JSON: numbers that a JSON number holds exactly as such, all else as text. */
QJsonValue ToJsonValue(const t_ShownValue& value);
