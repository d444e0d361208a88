// SPDX-License-Identifier: MIT
#include "KWAcceptance.h"
#include "KWTexts.h"

#include <array>

namespace
{
struct t_Texts
{
    const char* name;
    const char* text;
};

/** In the order of the codes. */
constexpr std::array<t_Texts, eKW_ACC_COUNT> kTexts{{
    {"OK", "taken"},
    {"WARNING", "taken, but limited, rounded or moved by a rule"},
    {"BELOW_MINIMUM", "below the minimum"},
    {"ABOVE_MAXIMUM", "above the maximum"},
    {"NOT_A_NUMBER", "not a number"},
    {"NOT_IN_VALUE_LIST", "not in the value list"},
    {"UNKNOWN_VALUE", "no such value"},
    {"NOT_ENABLED", "this value can not be selected now"},
    {"AMBIGUOUS_NAME", "the name stands for several values"},
    {"BAD_TEXT", "the text can not be read as a value"},
    {"TOO_LONG", "too long"},
    {"LIMITS_CROSSED", "the minimum would lie above the maximum"},
    {"OUTSIDE_DECLARED", "a limit would leave the declared range"},
    {"READ_ONLY", "read only"},
    {"NOT_AVAILABLE", "not available"},
    {"NO_WRITE_ACCESS", "no write access: the instrument is under remote control"},
    {"DETACHED", "the node is not part of a tree"},
    {"BAD_INDEX", "no such index"},
    {"BAD_NAME", "not a valid name"},
    {"NAME_IN_USE", "the name or key is in use"},
    {"NOT_FOUND", "not found"},
    {"CONTAINER_FULL", "the container is full"},
    {"FIXED_SIZE", "the items of the container are fixed"},
    {"CAN_NOT_SHRINK", "a size can not be reduced"},
    {"NOTHING_TO_DO", "nothing to undo or redo"},
    {"IN_TRANSACTION", "not possible within a transaction"},
    {"FILE_NOT_READABLE", "the file can not be read"},
    {"FILE_NOT_WRITABLE", "the file can not be written"},
    {"FILE_NOT_UNDERSTOOD", "the file was not understood"},
    {"WRONG_KIND", "not possible for this kind of node"},
    {"TIMEOUT", "the operation did not end in time"},
    {"OPERATION_FAILED", "the operation ended with another result"},
    {"INTERNAL", "internal error"},
    {"NOTHING_TO_ACT_ON", "there is nothing to act on"},
}};
static_assert(kTexts.back().text != nullptr, "every code has its texts here");
} // namespace

QString KW_GetAcceptanceText(KW_ACCEPTANCE code)
{
    return code < eKW_ACC_COUNT ? QLatin1String(kTexts[code].text)
                                : QStringLiteral("unknown code %1").arg(code);
}

QString KW_GetAcceptanceName(KW_ACCEPTANCE code)
{
    return code < eKW_ACC_COUNT ? QString::fromLatin1(kTexts[code].name) : QString::number(code);
}
