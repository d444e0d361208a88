// SPDX-License-Identifier: MIT
#include "OrderedJson.h"

#include <algorithm>
#include <nlohmann/json.hpp>

/** Puts together what the reader of JSON meets: numbers as they are written, names in their order.
 */
class COrderedJson::CBuilder : public nlohmann::json_sax<nlohmann::json>
{
public:
    explicit CBuilder(COrderedJson& document) { m_open.push_back(&document); }

    bool null() override { return Add(eKIND::Null); }
    bool boolean(bool value) override { return Add(value ? eKIND::True : eKIND::False); }
    bool number_integer(number_integer_t value) override
    {
        return Add(eKIND::Number, QString::number(static_cast<qlonglong>(value)));
    }
    bool number_unsigned(number_unsigned_t value) override
    {
        return Add(eKIND::Number, QString::number(static_cast<qulonglong>(value)));
    }
    bool number_float(number_float_t /*value*/, const string_t& text) override
    {
        return Add(eKIND::Number, QString::fromStdString(text));
    }
    bool string(string_t& text) override { return Add(eKIND::Text, QString::fromStdString(text)); }
    bool binary(binary_t& /*bytes*/) override { return false; }

    bool start_object(std::size_t /*size*/) override { return Open(eKIND::Object); }
    bool key(string_t& name) override
    {
        m_open.back()->m_members.emplace_back().first = QString::fromStdString(name);
        return true;
    }
    bool end_object() override { return Close(); }
    bool start_array(std::size_t /*size*/) override { return Open(eKIND::Array); }
    bool end_array() override { return Close(); }

    bool parse_error(std::size_t /*place*/, const std::string& /*token*/,
                     const nlohmann::detail::exception& /*error*/) override
    {
        return false;
    }

private:
    static constexpr std::size_t kDeepest = 128; // of a destructor that calls itself

    /** Where the next value goes: an element is made here, a member was made by its name. */
    COrderedJson& Next()
    {
        COrderedJson& open = *m_open.back();
        return open.m_kind == eKIND::Array    ? open.m_members.emplace_back().second
               : open.m_kind == eKIND::Object ? open.m_members.back().second
                                              : open;
    }
    bool Add(eKIND kind, QString text = {})
    {
        COrderedJson& value = Next();
        value.m_kind = kind;
        value.m_text = std::move(text);
        return true;
    }
    /** Who is open stands still: only the innermost one gets further members. */
    bool Open(eKIND kind)
    {
        COrderedJson& value = Next();
        value.m_kind = kind;
        m_open.push_back(&value);
        return m_open.size() <= kDeepest;
    }
    bool Close()
    {
        m_open.pop_back();
        return true;
    }

    std::vector<COrderedJson*> m_open; ///< the document, then each object or array that is open
};

std::optional<COrderedJson> COrderedJson::Parse(const QByteArray& text)
{
    COrderedJson value;
    CBuilder builder(value);
    const bool isRead = nlohmann::json::sax_parse(text.begin(), text.end(), &builder);
    return isRead ? std::optional(std::move(value)) : std::nullopt;
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
