// SPDX-License-Identifier: MIT
#include "DbSettings.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <algorithm>
#include <string_view>

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

namespace
{
/** End of a comment, section or instruction that begins at `at`; `at` for a tag. */
const char* EndOfOther(const char* at, const char* end)
{
    const std::pair<std::string_view, std::string_view> others[] = {
        {"!--", "-->"}, {"![CDATA[", "]]>"}, {"?", "?>"}};
    const std::string_view rest(at, static_cast<std::size_t>(end - at));
    for (const auto& [begin, close] : others)
    {
        if (rest.substr(0, begin.size()) == begin)
        {
            const auto found = rest.find(close, begin.size());
            return found == std::string_view::npos ? end : at + found + close.size();
        }
    }
    return at;
}

/** Attributes of the tag that begins at `at`, which moves to its end. */
int CountAttributes(const char*& at, const char* end)
{
    int count = 0;
    for (; at != end && *at != '>'; ++at)
    {
        if (*at == '"' || *at == '\'')
        {
            ++count;
            const char* const close = std::find(at + 1, end, *at);
            at = close == end ? end - 1 : close;
        }
    }
    return count;
}

/** Looks before Qt's reader does, which compares each attribute of a tag with all before it: a tag
    of some 100,000 would keep it busy for minutes. What is not well-formed is left to it. */
bool HasTooManyAttributes(const QByteArray& text)
{
    const char* const end = text.constData() + text.size();
    for (const char* at = std::find(text.constData(), end, '<'); at != end;
         at = std::find(at, end, '<'))
    {
        const char* const other = EndOfOther(++at, end);
        if (other == at && CountAttributes(at, end) > NDbBounds::kMaxAttributes)
        {
            return true;
        }
        at = std::max(at, other);
    }
    return false;
}
} // namespace

bool CDbSettingsDocument::ReadXmlFile(const QByteArray& text, const QString& kind)
{
    if (text.contains('\0'))
    {
        return Fail(QStringLiteral("this is no text in UTF-8"));
    }
    if (HasTooManyAttributes(text))
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
