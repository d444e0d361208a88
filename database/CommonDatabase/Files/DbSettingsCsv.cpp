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

namespace
{
/** What can not be read becomes other characters. */
bool IsUtf8(const QByteArray& text, const QString& characters)
{
    constexpr char kMark[] = "\xEF\xBB\xBF";
    const QByteArray again = characters.toUtf8();
    return text == again || (text.startsWith(kMark) && text.mid(3) == again);
}

/** The fields of RFC 4180, and nothing that only looks like them. */
class CCsvFields
{
public:
    explicit CCsvFields(QList<QString>& fields) : m_fields(fields) {}

    /** False with an error for a character that can not stand there. */
    bool Take(QChar c);
    bool IsInside() const { return m_place != ePLACE::Begin; }
    const QString& GetError() const { return m_error; }

private:
    enum class ePLACE
    {
        Begin,
        Plain,
        Quoted,
        Closed, ///< behind a quote that ends the field, or is the first of two
        LineEnd ///< behind a carriage return
    };

    bool EndField(QChar c);
    bool TakePlain(QChar c);
    bool Fail(const QString& error)
    {
        m_error = error;
        return false;
    }

    QList<QString>& m_fields;
    QString m_field;
    QString m_error;
    ePLACE m_place = ePLACE::Begin;
};

bool CCsvFields::EndField(QChar c)
{
    if (c == u'\r')
    {
        m_place = ePLACE::LineEnd;
        return true;
    }
    m_fields.append(m_field);
    m_field.clear();
    m_place = ePLACE::Begin;
    return m_fields.size() <= NDbBounds::kMaxFields ||
           Fail(QStringLiteral("there are more than %1 fields").arg(NDbBounds::kMaxFields));
}

bool CCsvFields::TakePlain(QChar c)
{
    if (c == u',' || c == u'\n' || c == u'\r')
    {
        return EndField(c);
    }
    if (c == u'"')
    {
        return Fail(QStringLiteral("a quote stands inside a field without quotes"));
    }
    m_field += c;
    m_place = ePLACE::Plain;
    return true;
}

bool CCsvFields::Take(QChar c)
{
    switch (m_place)
    {
    case ePLACE::Begin:
        if (c == u'"')
        {
            m_place = ePLACE::Quoted;
            return true;
        }
        return TakePlain(c);
    case ePLACE::Plain:
        return TakePlain(c);
    case ePLACE::Quoted:
        if (c == u'"')
        {
            m_place = ePLACE::Closed;
            return true;
        }
        m_field += c;
        return true;
    case ePLACE::Closed:
        if (c == u'"')
        {
            m_field += c;
            m_place = ePLACE::Quoted;
            return true;
        }
        return c == u',' || c == u'\n' || c == u'\r'
                   ? EndField(c)
                   : Fail(QStringLiteral("text follows the quote that ends a field"));
    default:
        return c == u'\n' ? EndField(c)
                          : Fail(QStringLiteral("a line end has lost its second half"));
    }
}
} // namespace

bool CDbSettingsDocument::SplitCsv(const QString& text, QList<QString>& fields, QString& error)
{
    CCsvFields split(fields);
    int line = 1;
    for (const QChar c : text)
    {
        if (!split.Take(c))
        {
            error = QStringLiteral("line %1: %2").arg(line).arg(split.GetError());
            return false;
        }
        line += c == u'\n' ? 1 : 0;
    }
    if (split.IsInside())
    {
        error = QStringLiteral("line %1: the file ends within a field").arg(line);
        return false;
    }
    return true;
}

bool CDbSettingsDocument::ReadCsvFile(const QByteArray& text, const QString& kind)
{
    const QString characters = QString::fromUtf8(text);
    if (!IsUtf8(text, characters))
    {
        return Fail(QStringLiteral("this is no text in UTF-8"));
    }
    QList<QString> fields;
    QString error;
    if (!SplitCsv(characters, fields, error))
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
    return CheckDocument(kind) && CheckDigest(text, true);
}

bool CDbSettingsDocument::OpenCsv(const QString& kind, QListIterator<QString>& fields)
{
    // Named by its place: where fields are missing, any text stands here, a secret too.
    const auto place = m_elements.size() + 1;
    bool isNumber = false;
    const int count = fields.hasNext() ? fields.next().toInt(&isNumber) : -1;
    if (!isNumber || count < 0 || count > NDbBounds::kMaxAttributes)
    {
        return Fail(QStringLiteral("element %1 has no count of attributes up to %2")
                        .arg(place)
                        .arg(NDbBounds::kMaxAttributes));
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
