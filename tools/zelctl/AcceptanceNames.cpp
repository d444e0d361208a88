// SPDX-License-Identifier: MIT
#include "AcceptanceNames.h"

#include "Failure.h"
#include "NearestNames.h"

#include <algorithm>
#include <array>

namespace
{
struct t_Name
{
    KW_ACCEPTANCE code;
    const char* name;
};

#define KW_NAME(name)                                                                              \
    t_Name                                                                                         \
    {                                                                                              \
        eKW_ACC_##name, #name                                                                      \
    }
constexpr std::array kNames{
    KW_NAME(OK),
    KW_NAME(WARNING),
    KW_NAME(BELOW_MINIMUM),
    KW_NAME(ABOVE_MAXIMUM),
    KW_NAME(NOT_A_NUMBER),
    KW_NAME(NOT_IN_VALUE_LIST),
    KW_NAME(UNKNOWN_VALUE),
    KW_NAME(NOT_ENABLED),
    KW_NAME(AMBIGUOUS_NAME),
    KW_NAME(BAD_TEXT),
    KW_NAME(TOO_LONG),
    KW_NAME(LIMITS_CROSSED),
    KW_NAME(OUTSIDE_DECLARED),
    KW_NAME(READ_ONLY),
    KW_NAME(NOT_AVAILABLE),
    KW_NAME(NO_WRITE_ACCESS),
    KW_NAME(DETACHED),
    KW_NAME(BAD_INDEX),
    KW_NAME(BAD_NAME),
    KW_NAME(NAME_IN_USE),
    KW_NAME(NOT_FOUND),
    KW_NAME(CONTAINER_FULL),
    KW_NAME(FIXED_SIZE),
    KW_NAME(CAN_NOT_SHRINK),
    KW_NAME(NOTHING_TO_DO),
    KW_NAME(IN_TRANSACTION),
    KW_NAME(FILE_NOT_READABLE),
    KW_NAME(FILE_NOT_WRITABLE),
    KW_NAME(FILE_NOT_UNDERSTOOD),
    KW_NAME(WRONG_KIND),
    KW_NAME(TIMEOUT),
    KW_NAME(OPERATION_FAILED),
    KW_NAME(INTERNAL),
    KW_NAME(NOTHING_TO_ACT_ON),
};
#undef KW_NAME
static_assert(kNames.size() == eKW_ACC_COUNT, "every code of the library has its name here");
} // namespace

QString GetAcceptanceName(KW_ACCEPTANCE code)
{
    const auto found = std::find_if(kNames.begin(), kNames.end(),
                                    [code](const t_Name& entry) { return entry.code == code; });
    return found == kNames.end() ? QString::number(code) : QString::fromLatin1(found->name);
}

QString DescribeAcceptance(KW_ACCEPTANCE code)
{
    return QStringLiteral("code %1 %2, %3")
        .arg(QString::number(code), GetAcceptanceName(code), KW_GetAcceptanceText(code));
}

KW_ACCEPTANCE ReadAcceptance(const QString& text)
{
    bool isNumber = false;
    const KW_ACCEPTANCE number = text.toUInt(&isNumber);
    if (isNumber)
    {
        return number;
    }
    QString name = text.toUpper();
    name.remove(QLatin1String("EKW_ACC_"));
    QStringList names;
    for (const t_Name& entry : kNames)
    {
        names.append(QString::fromLatin1(entry.name));
    }
    const auto found = names.indexOf(name);
    if (found < 0)
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("no code has the name \"%1\"%2")
                                          .arg(text, DidYouMean(GetNearestNames(name, names))));
    }
    return kNames[static_cast<std::size_t>(found)].code;
}
