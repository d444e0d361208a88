// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

/** Writes a JSON text in the order of the calls; commas are its own affair. Members are a key and a
    value: `json.Key("path").Text(path)`. */
class CJsonWriter
{
public:
    void BeginObject() { Begin('{'); }
    void EndObject() { End('}'); }
    void BeginArray() { Begin('['); }
    void EndArray() { End(']'); }

    CJsonWriter& Key(const char* name);
    CJsonWriter& Key(const QString& name);
    void Text(const QString& text);
    void Texts(const QStringList& texts);
    void Bool(bool value) { Raw(value ? "true" : "false"); }
    void Whole(INT64 number) { Raw(QByteArray::number(static_cast<qlonglong>(number))); }
    /** The shortest text that reads back to the same number; null for one that is not finite. */
    void Number(double number);
    void Null() { Raw("null"); }
    /** A value that is JSON already. */
    void Raw(const QByteArray& json);

    const QByteArray& GetText() const { return m_text; }

private:
    void Begin(char bracket);
    void End(char bracket);
    void Separate();
    void Quote(const QByteArray& bytes);

    QByteArray m_text;
    bool m_hasValue = false; ///< a comma must stand before what comes next
};
