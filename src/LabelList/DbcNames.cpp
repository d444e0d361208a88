// SPDX-License-Identifier: MIT
#include "LabelList/DbcNames.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace
{
bool IsPart(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/** The name as far as an identifier can have it: "_" for all other characters, however many bytes
    they take. */
std::string Simplified(std::string_view name)
{
    std::string simple;
    for (const char c : name)
    {
        const bool isContinued = (static_cast<unsigned char>(c) & 0xc0U) == 0x80U;
        if (simple.size() < NDbcNames::kLongest && !isContinued)
        {
            simple += IsPart(c) ? c : '_';
        }
    }
    if (simple.empty() || IsDigit(simple.front()))
    {
        simple.insert(simple.begin(), '_');
    }
    simple.resize(std::min(simple.size(), NDbcNames::kLongest));
    return simple;
}

class CNamesInFile
{
public:
    /** Empty for a name that has to be made. */
    std::string Keep(const NDbcNames::t_Named& named)
    {
        const bool isShort =
            NDbcNames::IsPlain(named.shortName) && m_used.count(std::string(named.shortName)) == 0;
        const bool isKept = isShort || (named.shortName.empty() && NDbcNames::IsPlain(named.name));
        std::string kept = isKept ? std::string(isShort ? named.shortName : named.name) : "";
        if (isKept)
        {
            m_used.insert(kept);
        }
        return kept;
    }

    std::string Make(const NDbcNames::t_Named& named)
    {
        const std::string simple =
            Simplified(named.shortName.empty() ? named.name : named.shortName);
        std::string made = simple;
        std::size_t& number = m_numbers[simple];
        while (!NDbcNames::IsPlain(made) || m_used.count(made) != 0)
        {
            std::string end(1, '_');
            end += std::to_string(++number + 1);
            made = simple.substr(0, NDbcNames::kLongest - end.size()) + end;
        }
        m_used.insert(made);
        return made;
    }

private:
    std::unordered_set<std::string> m_used;
    std::unordered_map<std::string, std::size_t> m_numbers; ///< that were tried for a name
};
} // namespace

bool NDbcNames::IsIdentifier(std::string_view name)
{
    return !name.empty() && !IsDigit(name.front()) && std::all_of(name.begin(), name.end(), IsPart);
}

// Where names are listed, keywords would begin the next signal or message.
bool NDbcNames::IsPlain(std::string_view name)
{
    constexpr std::string_view kTaken[] = {"SG_", "BO_", kNobody};
    return name.size() <= kLongest && IsIdentifier(name) &&
           std::find(std::begin(kTaken), std::end(kTaken), name) == std::end(kTaken);
}

std::vector<std::string> NDbcNames::InFile(std::span<const t_Named> names)
{
    std::vector<std::string> inFile;
    inFile.reserve(names.size());
    const bool isPlain = std::all_of(names.begin(), names.end(),
                                     [](const t_Named& named)
                                     { return named.shortName.empty() && IsPlain(named.name); });
    CNamesInFile used;
    for (const t_Named& named : names)
    {
        inFile.push_back(isPlain ? std::string(named.name) : used.Keep(named));
    }
    for (std::size_t i = 0; i < names.size(); ++i)
    {
        if (inFile[i].empty())
        {
            inFile[i] = used.Make(names[i]);
        }
    }
    return inFile;
}
