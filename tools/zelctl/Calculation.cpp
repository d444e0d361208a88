// SPDX-License-Identifier: MIT
#include "Calculation.h"

#include "Commands.h"

#include <cmath>

namespace
{
/** How the help calls an argument. */
QString GetShownName(const char* name)
{
    return QString::fromLatin1(name).remove(QStringLiteral("--")).toUpper();
}
} // namespace

double ReadWhole(const std::string& text, KW_UNIT unit, const QString& name, double most)
{
    const double value = ReadDouble(ToText(text), unit, name);
    if (!(value >= 0 && value <= most) || value != std::floor(value))
    {
        throw CFailure(eSTATUS_USAGE,
                       QStringLiteral("%1 is a whole number 0 … %2, not \"%3\"")
                           .arg(name, KW_FormatNumber(most, eKW_UNIT_NOT_DEFINED), ToText(text)));
    }
    return value;
}

void CArguments::Reset(const std::vector<t_Argument>& arguments)
{
    for (const t_Argument& argument : arguments)
    {
        switch (argument.takes)
        {
        case t_Argument::eTAKES::Flag:
            m_flags[argument.name] = false;
            break;
        case t_Argument::eTAKES::List:
            m_lists[argument.name].clear();
            break;
        case t_Argument::eTAKES::Value:
            m_texts[argument.name] = argument.preset == nullptr ? "" : argument.preset;
            break;
        }
    }
}

void CArguments::Declare(CLI::App& command, const std::vector<t_Argument>& arguments)
{
    Reset(arguments);
    for (const t_Argument& argument : arguments)
    {
        if (argument.takes == t_Argument::eTAKES::Flag)
        {
            command.add_flag(argument.name, m_flags[argument.name], argument.brief);
            continue;
        }
        if (argument.takes == t_Argument::eTAKES::List)
        {
            command.add_option(argument.name, m_lists[argument.name], argument.brief);
            continue;
        }
        std::string& text = m_texts[argument.name];
        CLI::Option* const option = command.add_option(argument.name, text, argument.brief);
        option->required(argument.preset == nullptr);
        if (!text.empty())
        {
            option->capture_default_str();
        }
    }
}

double CArguments::Number(const char* name, KW_UNIT unit) const
{
    return ReadDouble(ToText(Text(name)), unit, GetShownName(name));
}

double CArguments::Whole(const char* name, KW_UNIT unit, double most) const
{
    return ReadWhole(Text(name), unit, GetShownName(name), most);
}
