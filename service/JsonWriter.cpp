// SPDX-License-Identifier: MIT
#include "JsonWriter.h"

#include <QLocale>
#include <algorithm>
#include <cmath>

namespace
{
bool NeedsEscape(char byte)
{
    return static_cast<unsigned char>(byte) < 0x20 || byte == '"' || byte == '\\';
}

QByteArray Escape(char byte)
{
    return byte == '"' || byte == '\\'
               ? QByteArray("\\") + byte
               : "\\u00" + QByteArray::number(byte, 16).rightJustified(2, '0');
}
} // namespace

void CJsonWriter::Separate()
{
    if (m_hasValue)
    {
        m_text += ',';
    }
}

void CJsonWriter::Begin(char bracket)
{
    Separate();
    m_text += bracket;
    m_hasValue = false;
}

void CJsonWriter::End(char bracket)
{
    m_text += bracket;
    m_hasValue = true;
}

void CJsonWriter::Quote(const QByteArray& bytes)
{
    m_text += '"';
    for (auto at = bytes.begin(); at != bytes.end();)
    {
        const auto special = std::find_if(at, bytes.end(), NeedsEscape);
        m_text.append(at, static_cast<int>(special - at));
        at = special;
        if (at != bytes.end())
        {
            m_text += Escape(*at++);
        }
    }
    m_text += '"';
}

CJsonWriter& CJsonWriter::Key(const char* name)
{
    Separate();
    m_text.append('"').append(name).append("\":", 2);
    m_hasValue = false;
    return *this;
}

CJsonWriter& CJsonWriter::Key(const QString& name)
{
    Separate();
    Quote(name.toUtf8());
    m_text += ':';
    m_hasValue = false;
    return *this;
}

void CJsonWriter::Text(const QString& text)
{
    Separate();
    Quote(text.toUtf8());
    m_hasValue = true;
}

void CJsonWriter::Texts(const QStringList& texts)
{
    BeginArray();
    for (const QString& text : texts)
    {
        Text(text);
    }
    EndArray();
}

void CJsonWriter::Number(double number)
{
    Raw(std::isfinite(number)
            ? QString::number(number, 'g', QLocale::FloatingPointShortest).toLatin1()
            : QByteArray("null"));
}

void CJsonWriter::Raw(const QByteArray& json)
{
    Separate();
    m_text += json;
    m_hasValue = true;
}
