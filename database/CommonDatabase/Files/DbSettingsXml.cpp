// SPDX-License-Identifier: MIT
#include "DbSettings.h"

#include "XmlTags.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

void CDbXmlSettingsWriter::StartElement(const QString& kind)
{
    m_writer.writeStartElement(kind);
}

void CDbXmlSettingsWriter::Attribute(const QString& key, const QString& value)
{
    m_writer.writeAttribute(key, value);
}

void CDbXmlSettingsWriter::EndElement()
{
    m_writer.writeEndElement();
}

bool CDbXmlSettingsWriter::IsGood() const
{
    return !m_writer.hasError();
}

bool CDbSettingsDocument::ReadXmlFile(const QByteArray& text, const QString& kind)
{
    if (text.contains('\0'))
    {
        return Fail(QStringLiteral("this is no text in UTF-8"));
    }
    if (KW_HasLongXmlTag(text, NDbBounds::kMaxAttributes))
    {
        return Fail(QStringLiteral("an element has more than %1 attributes")
                        .arg(NDbBounds::kMaxAttributes));
    }
    m_text.reserve(text.size());
    QXmlStreamReader reader(text);
    if (!ReadXmlTokens(reader))
    {
        return false;
    }
    // What follows the document element must be well-formed too: a file that was written twice
    // over is damaged.
    while (!reader.atEnd())
    {
        reader.readNext();
    }
    if (reader.hasError())
    {
        return FailAt(reader, reader.errorString());
    }
    return CheckDocument(kind) && CheckDigest(text, false);
}

bool CDbSettingsDocument::ReadXmlElement(QXmlStreamReader& reader)
{
    return ReadXmlTokens(reader);
}

bool CDbSettingsDocument::FailAt(const QXmlStreamReader& reader, const QString& error)
{
    QString clause = error;
    while (clause.endsWith(QLatin1Char('.'))) // the reader's own are sentences
    {
        clause.chop(1);
    }
    return Fail(QStringLiteral("line %1, column %2: %3")
                    .arg(reader.lineNumber())
                    .arg(reader.columnNumber())
                    .arg(clause));
}

bool CDbSettingsDocument::OpenXml(const QXmlStreamReader& reader)
{
    if (!Open(reader.name()))
    {
        return FailAt(reader, m_error);
    }
    const QXmlStreamAttributes attributes = reader.attributes();
    for (const QXmlStreamAttribute& attribute : attributes)
    {
        AddAttribute(attribute.name(), attribute.value());
    }
    return true;
}

bool CDbSettingsDocument::ReadXmlTokens(QXmlStreamReader& reader)
{
    if (!reader.isStartElement())
    {
        reader.readNext();
    }
    for (;; reader.readNext())
    {
        switch (reader.tokenType())
        {
        case QXmlStreamReader::StartElement:
            if (!OpenXml(reader))
            {
                return false;
            }
            break;
        case QXmlStreamReader::EndElement:
            if (m_open.empty())
            {
                return FailAt(reader, QStringLiteral("an element was expected"));
            }
            Close();
            if (m_open.empty())
            {
                return true;
            }
            break;
        case QXmlStreamReader::DTD:
        case QXmlStreamReader::EntityReference:
            return FailAt(reader, QStringLiteral("document types and entities are not allowed"));
        case QXmlStreamReader::Characters:
            if (!reader.isWhitespace())
            {
                return FailAt(reader, QStringLiteral("text outside of attributes"));
            }
            break;
        case QXmlStreamReader::Invalid:
        case QXmlStreamReader::EndDocument:
            return FailAt(reader, reader.hasError() ? reader.errorString()
                                                    : QStringLiteral("the file ends too early"));
        default:
            break;
        }
    }
}
