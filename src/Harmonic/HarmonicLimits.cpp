// SPDX-License-Identifier: MIT
#include "Harmonic/HarmonicLimits.h"

#include <QStringList>
#include <algorithm>
#include <cmath>
#include <span>

namespace NHarmonicLimits
{
namespace
{
constexpr UINT32 kHighestOfStandards = 40;

/** Equipment with less, other than lighting, has no limits in EN 61000-3-2. */
constexpr double kLeastPower = 75.0;

bool IsOdd(UINT32 order)
{
    return order % 2 == 1;
}

t_Limits Percent()
{
    return {eKW_HMA_SCALE_SELECTION_PERCENT_FUNDAMENTAL, {}, std::nullopt, std::nullopt};
}

t_Limits Absolute()
{
    return {eKW_HMA_SCALE_SELECTION_ABSOLUTE, {}, std::nullopt, std::nullopt};
}

t_Limits ClassA(double factor)
{
    t_Limits limits = Absolute();
    limits.orders = {{2, 1.08}, {3, 2.3}, {4, 0.43},  {5, 1.14}, {6, 0.3},
                     {7, 0.77}, {9, 0.4}, {11, 0.33}, {13, 0.21}};
    for (UINT32 n = 8; n <= kHighestOfStandards; ++n)
    {
        if (limits.orders.count(n) == 0)
        {
            limits.orders[n] = IsOdd(n) ? 0.15 * 15.0 / n : 0.23 * 8.0 / n;
        }
    }
    for (auto& [order, limit] : limits.orders)
    {
        limit *= factor;
    }
    return limits;
}

/** In milliampere per watt, for class D and small lamps. */
t_Orders PerWatt()
{
    t_Orders perWatt{{3, 3.4}, {5, 1.9}, {7, 1.0}, {9, 0.5}, {11, 0.35}};
    for (UINT32 n = 13; n < kHighestOfStandards; n += 2)
    {
        perWatt[n] = 3.85 / n;
    }
    return perWatt;
}

t_Limits PerPower(double power)
{
    constexpr double kMilli = 1e-3;
    t_Limits limits = Absolute();
    for (const auto& [order, perWatt] : PerWatt())
    {
        limits.orders[order] = perWatt * kMilli * power;
    }
    return limits;
}

t_Limits ClassD(double power)
{
    constexpr double kMostPower = 600.0;
    const t_Limits ofClassA = ClassA(1.0);
    if (power > kMostPower)
    {
        return ofClassA;
    }
    t_Limits limits = PerPower(power);
    for (auto& [order, limit] : limits.orders)
    {
        limit = std::min(limit, ofClassA.orders.at(order));
    }
    return limits;
}

t_Limits Lamp()
{
    t_Limits limits = Percent();
    limits.orders = {{2, 2.0}, {3, 27.0}, {5, 10.0}, {7, 7.0}, {9, 5.0}};
    for (UINT32 n = 11; n < kHighestOfStandards; n += 2)
    {
        limits.orders[n] = 3.0;
    }
    return limits;
}

/** From 5 W to 25 W a lamp keeps one of three sets of limits. */
t_Limits SmallLamp(KW_HMA_STANDARD standard, double power)
{
    t_Limits limits = Percent();
    switch (standard)
    {
    case eKW_HMA_STANDARD_EN61000_3_2_CLASS_C_WAVEFORM:
        limits.orders = {{3, 86.0}, {5, 61.0}};
        return limits;
    case eKW_HMA_STANDARD_EN61000_3_2_CLASS_C_THD:
        limits.orders = {{2, 5.0}, {3, 35.0}, {5, 25.0}, {7, 30.0}, {9, 20.0}, {11, 20.0}};
        limits.thd = 70.0;
        return limits;
    default:
        return PerPower(power);
    }
}

t_Limits ClassC(KW_HMA_STANDARD standard, double power)
{
    constexpr double kSmall = 25.0;
    constexpr double kLeast = 5.0;
    if (power < kLeast)
    {
        return Percent();
    }
    return power > kSmall ? Lamp() : SmallLamp(standard, power);
}

/** A row of EN 61000-3-12, in percent of the reference current; 0 for an order without limit. */
struct t_Row
{
    double ratio;
    double odd[6]; ///< orders 3 to 13
    double thd;
    double pwhd;
};

constexpr t_Row kOther[] = {{33.0, {21.6, 10.7, 7.2, 3.8, 3.1, 2.0}, 23.0, 23.0},
                            {66.0, {24.0, 13.0, 8.0, 5.0, 4.0, 3.0}, 26.0, 26.0},
                            {120.0, {27.0, 15.0, 10.0, 6.0, 5.0, 4.0}, 30.0, 30.0},
                            {250.0, {35.0, 20.0, 13.0, 9.0, 8.0, 6.0}, 40.0, 40.0},
                            {350.0, {41.0, 24.0, 15.0, 12.0, 10.0, 8.0}, 47.0, 47.0}};
constexpr t_Row kBalanced[] = {{33.0, {0.0, 10.7, 7.2, 0.0, 3.1, 2.0}, 13.0, 22.0},
                               {66.0, {0.0, 14.0, 9.0, 0.0, 5.0, 3.0}, 16.0, 25.0},
                               {120.0, {0.0, 19.0, 12.0, 0.0, 7.0, 4.0}, 22.0, 28.0},
                               {250.0, {0.0, 31.0, 20.0, 0.0, 12.0, 7.0}, 37.0, 38.0},
                               {350.0, {0.0, 40.0, 25.0, 0.0, 15.0, 10.0}, 48.0, 46.0}};
constexpr t_Row kBalancedEased[] = {{33.0, {0.0, 10.7, 7.2, 0.0, 3.1, 2.0}, 13.0, 22.0},
                                    {120.0, {0.0, 40.0, 25.0, 0.0, 15.0, 10.0}, 48.0, 46.0},
                                    {350.0, {0.0, 40.0, 25.0, 0.0, 15.0, 10.0}, 48.0, 46.0}};

t_Limits LargeEquipment(std::span<const t_Row> rows, const t_Ratings& ratings)
{
    std::size_t upper = 1;
    while (upper + 1 < rows.size() && rows[upper].ratio < ratings.shortCircuitRatio)
    {
        ++upper;
    }
    const t_Row& low = rows[upper - 1];
    const t_Row& high = rows[upper];
    const double share = (ratings.shortCircuitRatio - low.ratio) / (high.ratio - low.ratio);
    const auto between = [share](double a, double b) { return a + share * (b - a); };
    const double onePercent = ratings.current / 100.0;
    t_Limits limits = Absolute();
    limits.thd = between(low.thd, high.thd);
    limits.pwhd = between(low.pwhd, high.pwhd);
    for (UINT32 n = 2; n <= 13; ++n)
    {
        const UINT32 column = n / 2 - 1;
        const double percent = IsOdd(n) ? between(low.odd[column], high.odd[column]) : 16.0 / n;
        if (percent > 0.0)
        {
            limits.orders[n] = percent * onePercent;
        }
    }
    return limits;
}

t_Limits PublicSupply()
{
    t_Limits limits = Percent();
    limits.orders = {{2, 2.0},  {3, 5.0},  {4, 1.0},  {5, 6.0},  {7, 5.0},  {9, 1.5},  {11, 3.5},
                     {13, 3.0}, {15, 0.5}, {17, 2.0}, {19, 1.5}, {21, 0.5}, {23, 1.5}, {25, 1.5}};
    limits.thd = 8.0;
    for (UINT32 n = 6; n <= 24; n += 2)
    {
        limits.orders[n] = 0.5;
    }
    return limits;
}

t_Limits ShipboardVoltage()
{
    t_Limits limits = Percent();
    limits.thd = 5.0;
    for (UINT32 n = 2; n <= kHighestOfStandards; ++n)
    {
        limits.orders[n] = 3.0;
    }
    return limits;
}

/** Up to 20 kHz, hence for all orders that are analysed. */
t_Limits ShipboardCurrent(const t_Ratings& ratings)
{
    constexpr UINT32 kLastOfLarge = 32;
    constexpr double kBetweenSupplies = 200.0; // of 60 Hz and 400 Hz
    const double large = ratings.frequency < kBetweenSupplies ? 1000.0 : 200.0;
    const bool isLarge = ratings.power >= large * ratings.powerFactor;
    t_Limits limits = Percent();
    for (UINT32 n = 2; n <= kHighestOrder; ++n)
    {
        limits.orders[n] = isLarge && n <= kLastOfLarge ? 3.0 : 100.0 / n;
    }
    return limits;
}

/** Even orders, and the odd ones that are a multiple of three, `triplen` by their order. */
t_Limits Airborne(double triplen)
{
    constexpr double kHighEven = 0.25;
    t_Limits limits = Percent();
    for (UINT32 n = 2; n <= kHighestOfStandards; ++n)
    {
        const double even = n <= 4 ? 1.0 / n : kHighEven;
        limits.orders[n] = !IsOdd(n) ? even : (n % 3 == 0 ? triplen : 30.0) / n;
    }
    return limits;
}

t_Limits AirborneThreePhase()
{
    t_Limits limits = Airborne(10.0);
    for (const auto& [order, limit] : t_Orders{{3, 2.0},
                                               {5, 2.0},
                                               {7, 2.0},
                                               {11, 10.0},
                                               {13, 8.0},
                                               {17, 4.0},
                                               {19, 4.0},
                                               {23, 3.0},
                                               {25, 3.0}})
    {
        limits.orders[order] = limit;
    }
    return limits;
}

t_Limits OfEquipment(KW_HMA_STANDARD standard, double power)
{
    switch (standard)
    {
    case eKW_HMA_STANDARD_EN61000_3_2_CLASS_B:
        return ClassA(1.5);
    case eKW_HMA_STANDARD_EN61000_3_2_CLASS_D:
        return ClassD(power);
    default:
        return ClassA(1.0);
    }
}
} // namespace

t_Limits OfStandard(KW_HMA_STANDARD standard, const t_Ratings& ratings)
{
    switch (standard)
    {
    case eKW_HMA_STANDARD_EN61000_3_2_CLASS_A:
    case eKW_HMA_STANDARD_EN61000_3_2_CLASS_B:
    case eKW_HMA_STANDARD_EN61000_3_2_CLASS_D:
        return ratings.power > kLeastPower ? OfEquipment(standard, ratings.power) : Absolute();
    case eKW_HMA_STANDARD_EN61000_3_2_CLASS_C:
    case eKW_HMA_STANDARD_EN61000_3_2_CLASS_C_WAVEFORM:
    case eKW_HMA_STANDARD_EN61000_3_2_CLASS_C_THD:
        return ClassC(standard, ratings.power);
    case eKW_HMA_STANDARD_EN61000_3_12:
        return LargeEquipment(kOther, ratings);
    case eKW_HMA_STANDARD_EN61000_3_12_THREE_PHASE:
        return LargeEquipment(kBalanced, ratings);
    case eKW_HMA_STANDARD_EN61000_3_12_THREE_PHASE_TABLE_4:
        return LargeEquipment(kBalancedEased, ratings);
    case eKW_HMA_STANDARD_EN50160:
        return PublicSupply();
    case eKW_HMA_STANDARD_MIL_STD_1399:
        return ShipboardCurrent(ratings);
    case eKW_HMA_STANDARD_MIL_STD_1399_VOLTAGE:
        return ShipboardVoltage();
    case eKW_HMA_STANDARD_RTCA_DO_160:
        return Airborne(15.0);
    case eKW_HMA_STANDARD_RTCA_DO_160_THREE_PHASE:
        return AirborneThreePhase();
    default:
        return {};
    }
}

QString ToText(const t_Orders& orders)
{
    QStringList entries;
    for (const auto& [order, limit] : orders)
    {
        entries.append(QString::number(order) + QLatin1Char('=') + QString::number(limit, 'g', 6));
    }
    return entries.join(QLatin1Char(';'));
}

t_Orders FromText(const QString& text, bool& isComplete)
{
    t_Orders orders;
    isComplete = true;
    for (const QString& entry : text.split(QLatin1Char(';'), Qt::SkipEmptyParts))
    {
        bool isOrder = false;
        bool isNumber = false;
        const UINT32 order = entry.section(QLatin1Char('='), 0, 0).trimmed().toUInt(&isOrder);
        const double limit = entry.section(QLatin1Char('='), 1).trimmed().toDouble(&isNumber);
        if (isOrder && isNumber && std::isfinite(limit) && order >= 2 && order <= kHighestOrder)
        {
            orders[order] = limit;
        }
        else
        {
            isComplete = false;
        }
    }
    return orders;
}
} // namespace NHarmonicLimits
