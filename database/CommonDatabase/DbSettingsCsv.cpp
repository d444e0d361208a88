// SPDX-License-Identifier: MIT
#include "DbSettings.h"

namespace
{
const QString kEnd = QStringLiteral("End");

void AppendQuoted(QString& text, const QString& field)
{
    const bool needsQuotes = field.contains(QLatin1Char(',')) || field.contains(QLatin1Char('"')) ||
                             field.contains(QLatin1Char('\n')) || field.contains(QLatin1Char('\r'));
    if (!needsQuotes)
    {
        text += field;
        return;
    }
    QString doubled = field;
    doubled.replace(QLatin1Char('"'), QLatin1String("\"\""));
    text += QLatin1Char('"') + doubled + QLatin1Char('"');
}
} // namespace

void CDbCsvSettingsWriter::WriteAttributeCount()
{
    if (m_open)
    {
        m_fields[m_countField] = QString::number(m_attributes);
        m_open = false;
    }
}

void CDbCsvSettingsWriter::StartElement(const QString& kind)
{
    WriteAttributeCount();
    m_fields.append(kind);
    m_countField = m_fields.size();
    m_fields.append(QString());
    m_attributes = 0;
    m_open = true;
}

void CDbCsvSettingsWriter::Attribute(const QString& key, const QString& value)
{
    m_fields.append(key);
    m_fields.append(value);
    ++m_attributes;
}

void CDbCsvSettingsWriter::EndElement()
{
    WriteAttributeCount();
    m_fields.append(kEnd);
}

QByteArray CDbCsvSettingsWriter::ToText(const QList<QString>& fields)
{
    QString text;
    int depth = 0;
    for (auto field = fields.cbegin(); field != fields.cend(); ++depth)
    {
        // Elements without elements inside stand whole on their line.
        for (; field != fields.cend() && *field == kEnd; ++field, --depth)
        {
            text += text.endsWith(QLatin1Char('\n')) ? QString(kEnd) : QLatin1Char(',') + kEnd;
            text += QLatin1Char('\n');
        }
        if (field == fields.cend())
        {
            break;
        }
        if (!text.isEmpty() && !text.endsWith(QLatin1Char('\n')))
        {
            text += QLatin1Char('\n');
        }
        const int attributeFields = 2 * (field + 1)->toInt();
        for (int i = 0; i < attributeFields + 2; ++i, ++field)
        {
            if (i > 0)
            {
                text += QLatin1Char(',');
            }
            AppendQuoted(text, *field);
        }
    }
    return text.toUtf8();
}

bool CDbSettingsDocument::SplitCsv(const QString& text, QList<QString>& fields, QString& error)
{
    QString field;
    bool quoted = false;
    int line = 1;
    for (auto c = text.cbegin(); c != text.cend(); ++c)
    {
        line += *c == QLatin1Char('\n') ? 1 : 0;
        if (quoted)
        {
            const bool isQuote = *c == QLatin1Char('"');
            if (isQuote && c + 1 != text.cend() && *(c + 1) == QLatin1Char('"'))
            {
                field += *++c;
            }
            else if (isQuote)
            {
                quoted = false;
            }
            else
            {
                field += *c;
            }
        }
        else if (*c == QLatin1Char('"') && field.isEmpty())
        {
            quoted = true;
        }
        else if (*c == QLatin1Char(',') || *c == QLatin1Char('\n'))
        {
            fields.append(field);
            field.clear();
        }
        else if (*c != QLatin1Char('\r'))
        {
            field += *c;
        }
    }
    if (quoted || !field.isEmpty())
    {
        error = QStringLiteral("line %1: the file ends within a field").arg(line);
        return false;
    }
    return true;
}

bool CDbSettingsDocument::ReadCsvFile(const QByteArray& text, const QString& kind)
{
    QList<QString> fields;
    QString error;
    if (!SplitCsv(QString::fromUtf8(text), fields, error))
    {
        return Fail(error);
    }
    QListIterator<QString> iterator(fields);
    if (!ReadCsvElement(iterator))
    {
        return false;
    }
    if (iterator.hasNext())
    {
        return Fail(QStringLiteral("something follows the end of the settings"));
    }
    return CheckDocument(kind);
}

bool CDbSettingsDocument::OpenCsv(const QString& kind, QListIterator<QString>& fields)
{
    // Named by its place: where fields are missing, any text stands here, a secret too.
    const auto place = m_elements.size() + 1;
    bool isNumber = false;
    const int count = fields.hasNext() ? fields.next().toInt(&isNumber) : -1;
    if (!isNumber || count < 0)
    {
        return Fail(QStringLiteral("element %1 has no count of attributes").arg(place));
    }
    if (!Open(kind))
    {
        return false;
    }
    for (int i = 0; i < count; ++i)
    {
        const QString key = fields.hasNext() ? fields.next() : QString();
        if (!fields.hasNext())
        {
            return Fail(QStringLiteral("element %1 ends within its attributes").arg(place));
        }
        AddAttribute(key, fields.next());
    }
    return true;
}

bool CDbSettingsDocument::ReadCsvElement(QListIterator<QString>& fields)
{
    while (fields.hasNext())
    {
        const QString kind = fields.next();
        if (kind == kEnd && !m_open.empty())
        {
            Close();
            if (m_open.empty())
            {
                return true;
            }
        }
        else if (!OpenCsv(kind, fields))
        {
            return false;
        }
    }
    return Fail(QStringLiteral("the file ends too early"));
}
