// SPDX-License-Identifier: MIT
#include "LabelList/LabelXmlTokens.h"

#include "LabelList/LabelBounds.h"

namespace
{
constexpr int kByteOrderMark = 3; ///< bytes

bool IsXmlBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/** Walks the attributes of a tag, which is known to be well-formed. */
class CTagWalk
{
public:
    CTagWalk(std::string_view tag, t_TextPlace place)
        : m_at(tag.data()), m_end(tag.data() + tag.size()), m_place(place)
    {
        while (!IsEnd() && !IsXmlBlank(*m_at))
        {
            Step();
        }
    }

    /** Goes to the next attribute; false at the end of the tag. */
    bool Next(std::string& name, t_TextPlace& place)
    {
        while (m_at != m_end && IsXmlBlank(*m_at))
        {
            Step();
        }
        place = m_place;
        const char* const begin = m_at;
        while (!IsEnd() && *m_at != '=' && !IsXmlBlank(*m_at))
        {
            Step();
        }
        name.assign(begin, m_at);
        return !IsEnd() && StepOverText();
    }

private:
    bool IsEnd() const { return m_at == m_end || *m_at == '>' || *m_at == '/'; }

    void Step()
    {
        const bool isLineEnd = *m_at++ == '\n';
        m_place = isLineEnd ? t_TextPlace{m_place.line + 1, 1}
                            : t_TextPlace{m_place.line, m_place.column + 1};
    }

    bool StepOverText()
    {
        while (m_at != m_end && *m_at != '"' && *m_at != '\'')
        {
            Step();
        }
        const char quote = m_at == m_end ? '"' : *m_at;
        for (int quotes = 0; m_at != m_end && quotes < 2; Step())
        {
            quotes += *m_at == quote ? 1 : 0;
        }
        return true;
    }

    const char* m_at;
    const char* m_end;
    t_TextPlace m_place;
};
} // namespace

CLabelXmlTokens::CLabelXmlTokens(const QByteArray& text, CLabelReports& reports)
    : m_text(text.startsWith("\xEF\xBB\xBF") ? text.mid(kByteOrderMark) : text),
      m_bytes(m_text.constData(), static_cast<std::size_t>(m_text.size())), m_reports(reports),
      m_reader(m_text)
{
}

bool CLabelXmlTokens::Next()
{
    while (!m_isBroken)
    {
        const qint64 before = m_reader.characterOffset();
        switch (m_reader.readNext())
        {
        case QXmlStreamReader::StartElement:
            Open();
            return CheckBounds();
        case QXmlStreamReader::EndElement:
            --m_depth;
            return false;
        case QXmlStreamReader::EndDocument:
            return false;
        case QXmlStreamReader::StartDocument:
            if (!m_reader.documentEncoding().isEmpty() &&
                m_reader.documentEncoding().compare(QLatin1String("UTF-8"), Qt::CaseInsensitive))
            {
                return Break(QStringLiteral("in another encoding than UTF-8"));
            }
            break;
        case QXmlStreamReader::Characters:
            if (!m_reader.isWhitespace())
            {
                WalkTo(before);
                m_reports.Warning(m_place,
                                  QStringLiteral("text outside of attributes is left out"));
            }
            break;
        case QXmlStreamReader::DTD:
        case QXmlStreamReader::EntityReference:
            return Break(QStringLiteral("document types and entities are not taken"));
        case QXmlStreamReader::Invalid:
            return Break(m_reader.errorString());
        default:
            break;
        }
    }
    return false;
}

bool CLabelXmlTokens::CheckBounds()
{
    if (++m_elements > NLabelBounds::kMaxXmlElements)
    {
        return BreakAt(m_place,
                       QStringLiteral("more than %1 elements").arg(NLabelBounds::kMaxXmlElements));
    }
    return ++m_depth <= NLabelBounds::kMaxXmlDepth ||
           BreakAt(m_place, QStringLiteral("elements within more than %1 others")
                                .arg(NLabelBounds::kMaxXmlDepth));
}

const CLabelXmlTokens::t_Attribute* CLabelXmlTokens::Take(std::string_view name)
{
    for (t_Attribute& attribute : m_attributes)
    {
        if (attribute.name == name)
        {
            attribute.isTaken = true;
            return &attribute;
        }
    }
    return nullptr;
}

void CLabelXmlTokens::EndLeaf()
{
    WarnOfRest();
    while (Next())
    {
        PassOver();
    }
}

void CLabelXmlTokens::WarnOfRest()
{
    for (const t_Attribute& attribute : m_attributes)
    {
        if (!attribute.isTaken)
        {
            m_reports.Warning(attribute.place,
                              QStringLiteral("attribute %1 is not known here and left out")
                                  .arg(QString::fromStdString(attribute.name)));
        }
    }
}

void CLabelXmlTokens::PassOver()
{
    m_reports.Warning(m_place, QStringLiteral("element %1 is not known here and left out")
                                   .arg(QString::fromStdString(m_name)));
    for (int open = 1; open > 0 && !m_isBroken;)
    {
        open += Next() ? 1 : -1;
    }
}

void CLabelXmlTokens::Open()
{
    WalkTo(m_reader.characterOffset());
    m_place = m_tagPlace;
    m_name = m_reader.name().toUtf8().toStdString();
    ReadAttributes();
}

void CLabelXmlTokens::ReadAttributes()
{
    m_attributes.clear();
    const QXmlStreamAttributes all = m_reader.attributes();
    CTagWalk walk(m_bytes.substr(m_tag), m_place);
    auto attribute = all.begin();
    t_Attribute next;
    while (attribute != all.end() && walk.Next(next.name, next.place))
    {
        // Declarations of namespaces stand in the tag only.
        const QLatin1String name(next.name.data(), static_cast<int>(next.name.size()));
        if (attribute->qualifiedName() != name &&
            attribute->qualifiedName() != QString::fromStdString(next.name))
        {
            continue;
        }
        if (attribute->namespaceUri().isEmpty())
        {
            next.text = attribute->value().toUtf8().toStdString();
            m_attributes.push_back(next);
        }
        ++attribute;
    }
}

bool CLabelXmlTokens::Break(const QString& what)
{
    QString clause = what;
    while (clause.endsWith(QLatin1Char('.'))) // the reader's own are sentences
    {
        clause.chop(1);
    }
    WalkTo(m_reader.characterOffset() - 1);
    return BreakAt(m_place, clause);
}

bool CLabelXmlTokens::BreakAt(t_TextPlace place, const QString& what)
{
    m_reports.Error(place, what);
    m_isBroken = true;
    return false;
}

/** Characters are those of UTF-16: of a sequence of four bytes two. */
void CLabelXmlTokens::WalkTo(qint64 character)
{
    constexpr UINT8 kFourBytes = 0xF0;
    while (m_byte < m_bytes.size() && m_character < character)
    {
        const auto lead = static_cast<UINT8>(m_bytes[m_byte]);
        if (lead == '<')
        {
            m_tag = m_byte;
            m_tagPlace = {m_line, static_cast<UINT32>(m_byte - m_lineStart) + 1};
        }
        ++m_byte;
        while (m_byte < m_bytes.size() && (static_cast<UINT8>(m_bytes[m_byte]) & 0xC0U) == 0x80U)
        {
            ++m_byte;
        }
        m_character += lead >= kFourBytes ? 2 : 1;
        m_line += lead == '\n' ? 1 : 0;
        m_lineStart = lead == '\n' ? m_byte : m_lineStart;
    }
    m_place = {m_line, static_cast<UINT32>(m_byte - m_lineStart) + 1};
}
