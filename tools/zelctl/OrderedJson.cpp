// SPDX-License-Identifier: MIT
#include "OrderedJson.h"

#include <algorithm>
#include <cstring>

/** Reads one document from its beginning to its end. */
class COrderedJson::CParser
{
public:
    explicit CParser(const QByteArray& text) : m_at(text.begin()), m_end(text.end()) {}

    bool ReadDocument(COrderedJson& value)
    {
        const bool isRead = ReadValue(value, 0);
        SkipBlanks();
        return isRead && m_at == m_end;
    }

private:
    static constexpr int kDeepest = 128;

    void SkipBlanks()
    {
        m_at = std::find_if(
            m_at, m_end, [](char c) { return std::strchr(" \t\r\n", c) == nullptr || c == '\0'; });
    }

    bool Take(char wanted)
    {
        SkipBlanks();
        const bool isThere = m_at != m_end && *m_at == wanted;
        m_at += isThere ? 1 : 0;
        return isThere;
    }

    bool TakeWord(const char* word)
    {
        const auto length = static_cast<std::ptrdiff_t>(std::strlen(word));
        const bool isThere = m_end - m_at >= length && std::equal(m_at, m_at + length, word);
        m_at += isThere ? length : 0;
        return isThere;
    }

    bool ReadValue(COrderedJson& value, int depth)
    {
        SkipBlanks();
        if (m_at == m_end || depth > kDeepest)
        {
            return false;
        }
        switch (*m_at)
        {
        case '{':
            value.m_kind = eKIND::Object;
            return ReadMembers(value, '}', depth);
        case '[':
            value.m_kind = eKIND::Array;
            return ReadMembers(value, ']', depth);
        case '"':
            value.m_kind = eKIND::Text;
            return ReadText(value.m_text);
        case 't':
            value.m_kind = eKIND::True;
            return TakeWord("true");
        case 'f':
            value.m_kind = eKIND::False;
            return TakeWord("false");
        case 'n':
            return TakeWord("null");
        default:
            value.m_kind = eKIND::Number;
            return ReadNumber(value.m_text);
        }
    }

    bool ReadMembers(COrderedJson& value, char closing, int depth)
    {
        ++m_at;
        if (Take(closing))
        {
            return true;
        }
        do
        {
            t_Member& member = value.m_members.emplace_back();
            SkipBlanks();
            const bool isNamed = closing == ']' || (ReadText(member.first) && Take(':'));
            if (!isNamed || !ReadValue(member.second, depth + 1))
            {
                return false;
            }
        } while (Take(','));
        return Take(closing);
    }

    bool ReadNumber(QString& text)
    {
        const auto end = std::find_if(
            m_at, m_end,
            [](char c) { return c == '\0' || std::strchr("+-.0123456789eE", c) == nullptr; });
        text = QString::fromLatin1(m_at, static_cast<int>(end - m_at));
        m_at = end;
        bool isNumber = false;
        text.toDouble(&isNumber);
        return isNumber;
    }

    bool ReadText(QString& text)
    {
        if (m_at == m_end || *m_at != '"')
        {
            return false;
        }
        QByteArray bytes;
        for (++m_at; m_at != m_end && *m_at != '"';)
        {
            const auto end =
                std::find_if(m_at, m_end, [](char c) { return c == '"' || c == '\\'; });
            bytes.append(m_at, static_cast<int>(end - m_at));
            m_at = end;
            if (m_at != m_end && *m_at == '\\' && !ReadEscape(bytes))
            {
                return false;
            }
        }
        text = QString::fromUtf8(bytes);
        return m_at != m_end && *m_at++ == '"';
    }

    bool ReadEscape(QByteArray& bytes)
    {
        constexpr char kSigns[] = "\"\\/bfnrt";
        constexpr char kBytes[] = "\"\\/\b\f\n\r\t";
        if (m_end - m_at < 2)
        {
            return false;
        }
        const char sign = m_at[1];
        m_at += 2;
        if (sign == 'u')
        {
            QString unicode;
            bool isRead = ReadUnit(unicode);
            if (isRead && unicode.back().isHighSurrogate() && TakeWord("\\u"))
            {
                isRead = ReadUnit(unicode);
            }
            bytes += unicode.toUtf8();
            return isRead;
        }
        const char* const found = sign == '\0' ? nullptr : std::strchr(kSigns, sign);
        bytes += found != nullptr ? kBytes[found - kSigns] : '?';
        return found != nullptr;
    }

    bool ReadUnit(QString& text)
    {
        if (m_end - m_at < 4)
        {
            return false;
        }
        bool isNumber = false;
        text += QChar(QByteArray(m_at, 4).toUShort(&isNumber, 16));
        m_at += 4;
        return isNumber;
    }

    const char* m_at;
    const char* m_end;
};

std::optional<COrderedJson> COrderedJson::Parse(const QByteArray& text)
{
    COrderedJson value;
    return CParser(text).ReadDocument(value) ? std::optional(std::move(value)) : std::nullopt;
}

COrderedJson COrderedJson::Object()
{
    COrderedJson object;
    object.m_kind = eKIND::Object;
    return object;
}

const COrderedJson* COrderedJson::Find(const char* name) const
{
    const auto found = std::find_if(m_members.begin(), m_members.end(),
                                    [name](const t_Member& member)
                                    { return member.first == QLatin1String(name); });
    return found != m_members.end() ? &found->second : nullptr;
}

const COrderedJson& COrderedJson::operator[](const char* name) const
{
    static const COrderedJson null;
    const COrderedJson* const found = Find(name);
    return found != nullptr ? *found : null;
}

QStringList COrderedJson::GetTexts() const
{
    QStringList texts;
    for (const t_Member& member : m_members)
    {
        texts.append(member.second.GetText());
    }
    return texts;
}

void COrderedJson::Merge(const COrderedJson& other)
{
    for (const t_Member& member : other.m_members)
    {
        const auto found =
            std::find_if(m_members.begin(), m_members.end(),
                         [&member](const t_Member& own) { return own.first == member.first; });
        found != m_members.end() ? found->second = member.second
                                 : m_members.emplace_back(member).second;
    }
}
