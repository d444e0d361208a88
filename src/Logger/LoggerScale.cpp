// SPDX-License-Identifier: MIT
#include "Logger/LoggerScale.h"

#include "EnumNameInfo.h"
#include "KWEnumerationsLogger.h"
#include "Rules/NumberRules.h"

double NLoggerScale::WidthOf(KW_ZEL_LOGGER_HORIZONTAL_SCALE scale)
{
    return NRules::ScreenWidth(
        GetStaticEnumNameInfo<KW_ZEL_LOGGER_HORIZONTAL_SCALE>().GetNumber(scale).value_or(0.0));
}

KW_ZEL_LOGGER_HORIZONTAL_SCALE NLoggerScale::FinestFor(double seconds)
{
    const INT32 count = GetStaticEnumNameInfo<KW_ZEL_LOGGER_HORIZONTAL_SCALE>().GetEnumSize();
    INT32 scale = 0;
    while (scale + 1 < count &&
           WidthOf(static_cast<KW_ZEL_LOGGER_HORIZONTAL_SCALE>(scale)) < seconds)
    {
        ++scale;
    }
    return static_cast<KW_ZEL_LOGGER_HORIZONTAL_SCALE>(scale);
}
