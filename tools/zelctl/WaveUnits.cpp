// SPDX-License-Identifier: MIT
#include "WaveUnits.h"

#include "EnumText.h"

namespace
{
/** With a prefix, or none: a table of mV is one of volts. */
bool IsOf(KW_UNIT unit, const QString& text, double& factor)
{
    const QString name = KW_GetUnitText(unit);
    return !name.isEmpty() && text.endsWith(name) &&
           KW_IsAccepted(KW_ParseNumber(QStringLiteral("1 ") + text, unit, factor));
}
} // namespace

bool FindWaveUnit(const QString& text, KW_UNIT& unit, double& factor)
{
    static constexpr KW_UNIT kWithPrefix[] = {
        eKW_UNIT_LEVEL_V, eKW_UNIT_LEVEL_A,       eKW_UNIT_LEVEL_W,  eKW_UNIT_FREQ_SEC,
        eKW_UNIT_FREQ_HZ, eKW_UNIT_IMPEDANCE_OHM, eKW_UNIT_LEVEL_VA, eKW_UNIT_FIELD_FARAD};
    for (const KW_UNIT candidate : kWithPrefix)
    {
        double read = 1.0;
        if (IsOf(candidate, text, read))
        {
            unit = candidate;
            factor = read;
            return true;
        }
    }
    const INT32 count = GetStaticEnumNameInfo<KW_UNIT>().GetEnumSize();
    for (INT32 i = 0; i < count; ++i)
    {
        if (KW_GetUnitText(static_cast<KW_UNIT>(i)) == text)
        {
            unit = static_cast<KW_UNIT>(i);
            factor = 1.0;
            return true;
        }
    }
    return false;
}

KW_ZEL_CHANNEL WaveChannelOf(const QString& name)
{
    INT32 channel = eKW_ZEL_CHANNEL_NONE;
    KW_ParseEnum(GetStaticEnumNameInfo<KW_ZEL_CHANNEL>(), name, channel);
    return static_cast<KW_ZEL_CHANNEL>(channel);
}
