// SPDX-License-Identifier: MIT
#include "XmlTags.h"

#include <algorithm>
#include <string_view>
#include <utility>

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
} // namespace

bool KW_HasLongXmlTag(const QByteArray& text, int maxAttributes)
{
    const char* const end = text.constData() + text.size();
    for (const char* at = std::find(text.constData(), end, '<'); at != end;
         at = std::find(at, end, '<'))
    {
        const char* const other = EndOfOther(++at, end);
        if (other == at && CountAttributes(at, end) > maxAttributes)
        {
            return true;
        }
        at = std::max(at, other);
    }
    return false;
}
