// SPDX-License-Identifier: MIT
#include "LabelList/DbcFields.h"

#include "LabelList/DbcLexer.h"
#include "LabelList/DbcText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace
{
constexpr double kMilliseconds = 1000.0; ///< in a second
constexpr UINT32 kLongestClassic = 8;    ///< bytes of a frame that is not of CAN FD

struct t_Definition
{
    const char* object;
    const char* name;
    const char* type;
    KW_LabelAttribute defaultValue;
};

const char* const kFormats =
    "ENUM \"StandardCAN\",\"ExtendedCAN\",\"reserved\",\"J1939PG\",\"reserved\",\"reserved\","
    "\"reserved\",\"reserved\",\"reserved\",\"reserved\",\"reserved\",\"reserved\",\"reserved\","
    "\"reserved\",\"StandardCAN_FD\",\"ExtendedCAN_FD\"";

// By their numbers.
const t_Definition kDefinitions[] = {
    {"BO_", "GenMsgCycleTime", "INT 0 65535", {"0", false}},
    {"BO_", "VFrameFormat", kFormats, {"StandardCAN", true}},
    {"BO_", "CANFD_BRS", "ENUM \"0\",\"1\"", {"0", true}},
    {"BO_", "SystemMessageLongSymbol", "STRING", {"", true}},
    {"SG_", "SystemSignalLongSymbol", "STRING", {"", true}},
    {"BU_", "SystemNodeLongSymbol", "STRING", {"", true}},
    {"", "DBName", "STRING", {"", true}},
};

struct t_Format
{
    UINT32 number;
    std::string_view name;
};
constexpr t_Format kFrameFormats[] = {
    {0, "StandardCAN"}, {1, "ExtendedCAN"}, {14, "StandardCAN_FD"}, {15, "ExtendedCAN_FD"}};

std::string NameOf(CDbcFields::e_Field field)
{
    return kDefinitions[field].name;
}

bool IsOf(const KW_AttributeDefinition& definition, const t_Definition& usual)
{
    return definition.name == usual.name && definition.object == usual.object;
}

/** Texts of 'ENUM "a","b"'. */
std::vector<std::string> TextsOf(const std::string& type)
{
    std::vector<std::string> texts;
    CDbcLexer lexer(type);
    const bool isEnumeration = lexer.Take().text == "ENUM";
    while (isEnumeration && lexer.Peek().kind == e_DbcToken::Text)
    {
        texts.push_back(NDbcText::Unquoted(lexer.Take().text, true));
        lexer.TakeSign(',');
    }
    return texts;
}

std::optional<double> NumberOf(const KW_LabelAttribute& attribute)
{
    const std::string_view text = attribute.value;
    const std::size_t plus = !text.empty() && text.front() == '+' ? 1 : 0;
    double number = 0.0;
    const auto read = std::from_chars(text.data() + plus, text.data() + text.size(), number);
    const bool isNumber =
        !attribute.isText && read.ec == std::errc() && read.ptr == text.data() + text.size();
    return isNumber ? std::optional(number) : std::nullopt;
}

std::optional<std::size_t> IndexOf(const KW_LabelAttribute& attribute)
{
    const auto number = NumberOf(attribute);
    constexpr double kMost = 65535.0;
    return number && *number >= 0.0 && *number <= kMost && std::trunc(*number) == *number
               ? std::optional(static_cast<std::size_t>(*number))
               : std::nullopt;
}

KW_LabelAttribute Number(double number)
{
    char text[32];
    const auto written = std::to_chars(std::begin(text), std::end(text), number);
    return {std::string(text, written.ptr), false};
}

/** A number of milliseconds as seconds; none for what no cycle time can be. */
std::optional<double> SecondsOf(const KW_LabelAttribute& attribute)
{
    const double seconds = NumberOf(attribute).value_or(0.0) / kMilliseconds;
    return seconds > 0.0 && std::isfinite(seconds) ? std::optional(seconds) : std::nullopt;
}

/** Milliseconds that read back to exactly these seconds; the product alone may miss them by its
    last digit. */
double MillisecondsOf(double seconds)
{
    const double product = seconds * kMilliseconds;
    for (const double candidate : {std::round(product), product, std::nextafter(product, 0.0),
                                   std::nextafter(product, 2.0 * product)})
    {
        if (candidate / kMilliseconds == seconds)
        {
            return candidate;
        }
    }
    return product;
}

bool IsFdFormat(std::string_view format)
{
    return format == "StandardCAN_FD" || format == "ExtendedCAN_FD";
}
} // namespace

CDbcFields::t_Used CDbcFields::UsedBy(const KW_LabelList& list)
{
    t_Used used{};
    used[ListName] = !list.name.empty();
    for (const KW_LabelEntry& entry : list.messages)
    {
        used[CycleTime] = used[CycleTime] || entry.details.cycleTime.has_value();
        used[FrameFormat] = used[FrameFormat] || entry.details.isFd;
        used[BitRateSwitch] = used[BitRateSwitch] || entry.details.hasBitRateSwitch;
    }
    return used;
}

void CDbcFields::Define(const t_Used& used, std::vector<KW_AttributeDefinition>& definitions)
{
    for (std::size_t i = 0; i < used.size(); ++i)
    {
        const t_Definition& usual = kDefinitions[i];
        const bool isDefined =
            std::any_of(definitions.begin(), definitions.end(),
                        [&](const auto& definition) { return IsOf(definition, usual); });
        if (used[i] && !isDefined)
        {
            const auto relations =
                std::find_if(definitions.begin(), definitions.end(),
                             [](const auto& definition)
                             { return definition.object.rfind("BA_DEF_REL_", 0) == 0; });
            definitions.insert(relations,
                               {usual.object, usual.name, usual.type, usual.defaultValue});
        }
    }
}

CDbcFields::CDbcFields(const std::vector<KW_AttributeDefinition>& definitions)
{
    for (const KW_AttributeDefinition& definition : definitions)
    {
        for (std::size_t i = 0; i < m_fields.size(); ++i)
        {
            if (IsOf(definition, kDefinitions[i]))
            {
                m_fields[i] = {TextsOf(definition.type), definition.defaultValue};
            }
        }
    }
}

void CDbcFields::Take(KW_LabelMessageDetails& details, UINT32 length) const
{
    TakeCycleTime(details);
    TakeFormat(details, length);
    TakeSwitch(details);
}

KW_LabelAttributes CDbcFields::Attributes(const CLabelListMessage& message,
                                          const KW_LabelMessageDetails& details) const
{
    KW_LabelAttributes attributes = details.attributes;
    PutCycleTime(details, attributes);
    PutFormat(message, details.isFd, attributes);
    if (details.isFd)
    {
        PutSwitch(details.hasBitRateSwitch, attributes);
    }
    return attributes;
}

std::string CDbcFields::TakeText(e_Field field, KW_LabelAttributes& attributes)
{
    const auto found = attributes.find(NameOf(field));
    if (found == attributes.end())
    {
        return {};
    }
    std::string text = found->second.isText ? found->second.value : std::string();
    attributes.erase(found);
    return text;
}

void CDbcFields::PutText(e_Field field, const std::string& text, KW_LabelAttributes& attributes)
{
    attributes.insert_or_assign(NameOf(field), KW_LabelAttribute{text, true});
}

std::optional<double> CDbcFields::DefaultCycle() const
{
    const auto& value = m_fields[CycleTime].defaultValue;
    return value ? SecondsOf(*value) : std::nullopt;
}

void CDbcFields::TakeCycleTime(KW_LabelMessageDetails& details) const
{
    const auto found = details.attributes.find(NameOf(CycleTime));
    if (found == details.attributes.end())
    {
        details.cycleTime = DefaultCycle();
        return;
    }
    details.cycleTime = SecondsOf(found->second);
    if (details.cycleTime)
    {
        details.attributes.erase(found);
    }
}

/** 0 says that there is none, against a default. */
void CDbcFields::PutCycleTime(const KW_LabelMessageDetails& details,
                              KW_LabelAttributes& attributes) const
{
    const std::string name = NameOf(CycleTime);
    const auto usual = DefaultCycle();
    if (!details.cycleTime)
    {
        if (usual)
        {
            attributes.emplace(name, Number(0.0));
        }
    }
    else if (details.cycleTime == usual)
    {
        attributes.erase(name);
    }
    else
    {
        attributes.insert_or_assign(name, Number(MillisecondsOf(*details.cycleTime)));
    }
}

/** The name of a format, which stands there by its text or by its number. */
std::string CDbcFields::FormatOf(const KW_LabelAttribute& attribute) const
{
    const auto& texts = m_fields[FrameFormat].texts;
    const auto index = IndexOf(attribute);
    if (!index)
    {
        return attribute.value;
    }
    if (*index < texts.size())
    {
        return texts[*index];
    }
    for (const t_Format& format : kFrameFormats)
    {
        if (format.number == *index)
        {
            return std::string(format.name);
        }
    }
    return {};
}

/** Its number by the definition; its usual one, where that stands for nothing else; or its text. */
KW_LabelAttribute CDbcFields::FormatValue(std::string_view format) const
{
    const auto& texts = m_fields[FrameFormat].texts;
    const auto found = std::find(texts.begin(), texts.end(), format);
    if (found != texts.end())
    {
        return Number(static_cast<double>(found - texts.begin()));
    }
    for (const t_Format& usual : kFrameFormats)
    {
        if (usual.name == format && usual.number >= texts.size())
        {
            return Number(usual.number);
        }
    }
    return {std::string(format), true};
}

bool CDbcFields::IsFdByDefault() const
{
    const auto& value = m_fields[FrameFormat].defaultValue;
    return value && IsFdFormat(FormatOf(*value));
}

void CDbcFields::TakeFormat(KW_LabelMessageDetails& details, UINT32 length) const
{
    const auto found = details.attributes.find(NameOf(FrameFormat));
    if (found == details.attributes.end())
    {
        details.isFd = IsFdByDefault() || length > kLongestClassic;
        return;
    }
    details.isFd = IsFdFormat(FormatOf(found->second));
    if (details.isFd)
    {
        details.attributes.erase(found);
    }
}

void CDbcFields::PutFormat(const CLabelListMessage& message, bool isFd,
                           KW_LabelAttributes& attributes) const
{
    const std::string name = NameOf(FrameFormat);
    const bool isExtended = message.getIdentifierFormat() == "29";
    const auto found = attributes.find(name);
    const bool isKept = found != attributes.end() && !IsFdFormat(FormatOf(found->second));
    const auto& usual = m_fields[FrameFormat].defaultValue;
    if (!isFd)
    {
        const bool isTakenForFd = IsFdByDefault() || message.getLength() > kLongestClassic;
        if (!isKept && isTakenForFd)
        {
            attributes.insert_or_assign(name, FormatValue(kFrameFormats[isExtended ? 1 : 0].name));
        }
        return;
    }
    const std::string_view format = kFrameFormats[isExtended ? 3 : 2].name;
    if (usual && FormatOf(*usual) == format)
    {
        attributes.erase(name);
        return;
    }
    attributes.insert_or_assign(name, FormatValue(format));
}

/** 0 or 1, or a text that has one of these numbers. */
std::optional<bool> CDbcFields::SwitchOf(const KW_LabelAttribute& attribute) const
{
    const auto& texts = m_fields[BitRateSwitch].texts;
    const auto found = std::find(texts.begin(), texts.end(), attribute.value);
    const auto index = attribute.isText && found != texts.end()
                           ? std::optional(static_cast<std::size_t>(found - texts.begin()))
                           : IndexOf(attribute);
    return index && *index <= 1 ? std::optional(*index == 1) : std::nullopt;
}

bool CDbcFields::IsSwitchedByDefault() const
{
    const auto& value = m_fields[BitRateSwitch].defaultValue;
    return value && SwitchOf(*value).value_or(false);
}

void CDbcFields::TakeSwitch(KW_LabelMessageDetails& details) const
{
    const auto found = details.attributes.find(NameOf(BitRateSwitch));
    const auto value =
        found != details.attributes.end() ? SwitchOf(found->second) : std::optional<bool>();
    details.hasBitRateSwitch = details.isFd && value.value_or(IsSwitchedByDefault());
    if (details.isFd && value)
    {
        details.attributes.erase(found);
    }
}

void CDbcFields::PutSwitch(bool isOn, KW_LabelAttributes& attributes) const
{
    const std::string name = NameOf(BitRateSwitch);
    if (isOn != IsSwitchedByDefault())
    {
        attributes.insert_or_assign(name, Number(isOn ? 1.0 : 0.0));
    }
    else if (const auto found = attributes.find(name);
             found != attributes.end() && SwitchOf(found->second))
    {
        attributes.erase(found);
    }
}
