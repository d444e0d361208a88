// SPDX-License-Identifier: MIT
#include "Mathematics/UnitRules.h"

#include "KWEnumerationsMathematics.h"
#include "KWEnumerationsUnits.h"

#include <cstddef>

namespace
{
struct t_UnitPair
{
    KW_UNIT of;
    KW_UNIT is;
};

template <std::size_t N>
KW_UNIT Lookup(const t_UnitPair (&table)[N], KW_UNIT unit)
{
    for (const t_UnitPair& row : table)
    {
        if (row.of == unit)
        {
            return row.is;
        }
    }
    return eKW_UNIT_NOT_DEFINED;
}

KW_UNIT RootOf(KW_UNIT unit)
{
    return unit == eKW_UNIT_LEVEL_V_SQUARE ? eKW_UNIT_LEVEL_V
           : unit == eKW_UNIT_NONE         ? eKW_UNIT_NONE
                                           : eKW_UNIT_NOT_DEFINED;
}
} // namespace

namespace NUnits
{
KW_UNIT PerSecond(KW_UNIT unit)
{
    constexpr t_UnitPair kTable[] = {{eKW_UNIT_LEVEL_V, eKW_UNIT_LEVEL_V_PER_S},
                                     {eKW_UNIT_LEVEL_A, eKW_UNIT_LEVEL_A_PER_S},
                                     {eKW_UNIT_NONE, eKW_UNIT_PER_SEC},
                                     {eKW_UNIT_V_S, eKW_UNIT_LEVEL_V},
                                     {eKW_UNIT_A_S, eKW_UNIT_LEVEL_A}};
    return Lookup(kTable, unit);
}

KW_UNIT PerDivision(KW_UNIT unit)
{
    constexpr t_UnitPair kTable[] = {{eKW_UNIT_LEVEL_V, eKW_UNIT_LEVEL_V_DIV},
                                     {eKW_UNIT_LEVEL_A, eKW_UNIT_LEVEL_A_DIV},
                                     {eKW_UNIT_LEVEL_W, eKW_UNIT_LEVEL_W_DIV}};
    return Lookup(kTable, unit);
}

KW_UNIT TimesSecond(KW_UNIT unit)
{
    constexpr t_UnitPair kTable[] = {
        {eKW_UNIT_LEVEL_V, eKW_UNIT_V_S},           {eKW_UNIT_LEVEL_A, eKW_UNIT_A_S},
        {eKW_UNIT_LEVEL_W, eKW_UNIT_LEVEL_JOULE},   {eKW_UNIT_NONE, eKW_UNIT_FREQ_SEC},
        {eKW_UNIT_LEVEL_V_PER_S, eKW_UNIT_LEVEL_V}, {eKW_UNIT_LEVEL_A_PER_S, eKW_UNIT_LEVEL_A}};
    return Lookup(kTable, unit);
}

KW_UNIT Product(KW_UNIT a, KW_UNIT b)
{
    if (a == eKW_UNIT_NONE || b == eKW_UNIT_NONE)
    {
        return a == eKW_UNIT_NONE ? b : a;
    }
    if (a == b)
    {
        return a == eKW_UNIT_LEVEL_V ? eKW_UNIT_LEVEL_V_SQUARE : eKW_UNIT_NOT_DEFINED;
    }
    const auto areTogether = [a, b](KW_UNIT one, KW_UNIT other)
    { return (a == one && b == other) || (a == other && b == one); };
    if (areTogether(eKW_UNIT_LEVEL_V, eKW_UNIT_LEVEL_A))
    {
        return eKW_UNIT_LEVEL_W;
    }
    if (areTogether(eKW_UNIT_LEVEL_A, eKW_UNIT_IMPEDANCE_OHM))
    {
        return eKW_UNIT_LEVEL_V;
    }
    return areTogether(eKW_UNIT_FREQ_SEC, eKW_UNIT_FREQ_HZ) ? eKW_UNIT_NONE
           : a == eKW_UNIT_FREQ_SEC                         ? TimesSecond(b)
           : b == eKW_UNIT_FREQ_SEC                         ? TimesSecond(a)
                                                            : eKW_UNIT_NOT_DEFINED;
}

KW_UNIT Quotient(KW_UNIT a, KW_UNIT b)
{
    struct t_Row
    {
        KW_UNIT a;
        KW_UNIT b;
        KW_UNIT quotient;
    };
    constexpr t_Row kTable[] = {
        {eKW_UNIT_LEVEL_V, eKW_UNIT_LEVEL_A, eKW_UNIT_IMPEDANCE_OHM},
        {eKW_UNIT_LEVEL_A, eKW_UNIT_LEVEL_V, eKW_UNIT_IMPEDANCE_SIEMENS},
        {eKW_UNIT_LEVEL_V, eKW_UNIT_IMPEDANCE_OHM, eKW_UNIT_LEVEL_A},
        {eKW_UNIT_LEVEL_W, eKW_UNIT_LEVEL_V, eKW_UNIT_LEVEL_A},
        {eKW_UNIT_LEVEL_W, eKW_UNIT_LEVEL_A, eKW_UNIT_LEVEL_V},
        {eKW_UNIT_LEVEL_V_SQUARE, eKW_UNIT_LEVEL_V, eKW_UNIT_LEVEL_V},
        {eKW_UNIT_LEVEL_V_SQUARE, eKW_UNIT_IMPEDANCE_OHM, eKW_UNIT_LEVEL_W},
        {eKW_UNIT_NONE, eKW_UNIT_FREQ_SEC, eKW_UNIT_FREQ_HZ},
        {eKW_UNIT_NONE, eKW_UNIT_FREQ_HZ, eKW_UNIT_FREQ_SEC},
        {eKW_UNIT_NONE, eKW_UNIT_IMPEDANCE_OHM, eKW_UNIT_IMPEDANCE_SIEMENS},
        {eKW_UNIT_NONE, eKW_UNIT_IMPEDANCE_SIEMENS, eKW_UNIT_IMPEDANCE_OHM}};
    if (a == b)
    {
        return a == eKW_UNIT_NOT_DEFINED ? a : eKW_UNIT_NONE;
    }
    for (const t_Row& row : kTable)
    {
        if (row.a == a && row.b == b)
        {
            return row.quotient;
        }
    }
    return b == eKW_UNIT_NONE ? a : b == eKW_UNIT_FREQ_SEC ? PerSecond(a) : eKW_UNIT_NOT_DEFINED;
}

KW_UNIT OfOperation(KW_ZEL_MATHEMATICS_TYPE type, KW_UNIT a, KW_UNIT b)
{
    switch (type)
    {
    case eKW_ZEL_MATHEMATICS_TYPE_ADD:
    case eKW_ZEL_MATHEMATICS_TYPE_SUBTRACT:
        return a == b ? a : eKW_UNIT_NOT_DEFINED;
    case eKW_ZEL_MATHEMATICS_TYPE_MULTIPLY:
        return Product(a, b);
    case eKW_ZEL_MATHEMATICS_TYPE_DIVIDE:
        return Quotient(a, b);
    case eKW_ZEL_MATHEMATICS_TYPE_RECIPROCAL:
        return Quotient(eKW_UNIT_NONE, a);
    case eKW_ZEL_MATHEMATICS_TYPE_SQUARE:
        return Product(a, a);
    case eKW_ZEL_MATHEMATICS_TYPE_SQRT:
        return RootOf(a);
    case eKW_ZEL_MATHEMATICS_TYPE_LOG10:
    case eKW_ZEL_MATHEMATICS_TYPE_LN:
        return eKW_UNIT_NONE;
    case eKW_ZEL_MATHEMATICS_TYPE_DERIVATIVE:
        return PerSecond(a);
    case eKW_ZEL_MATHEMATICS_TYPE_INTEGRAL:
        return TimesSecond(a);
    default:
        return a;
    }
}
} // namespace NUnits
