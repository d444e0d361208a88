// SPDX-License-Identifier: MIT
#include "AcceptanceNames.h"

#include "Failure.h"
#include "KWTexts.h"
#include "NearestNames.h"

QString DescribeAcceptance(KW_ACCEPTANCE code)
{
    return QStringLiteral("code %1 %2, %3")
        .arg(QString::number(code), KW_GetAcceptanceName(code), KW_GetAcceptanceText(code));
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
    for (KW_ACCEPTANCE code = 0; code < eKW_ACC_COUNT; ++code)
    {
        names.append(KW_GetAcceptanceName(code));
    }
    const auto found = names.indexOf(name);
    if (found < 0)
    {
        throw CFailure(eSTATUS_USAGE, QStringLiteral("no code has the name \"%1\"%2")
                                          .arg(text, DidYouMean(GetNearestNames(name, names))));
    }
    return static_cast<KW_ACCEPTANCE>(found);
}
