// SPDX-License-Identifier: MIT
#include "Harmonic/HarmonicLimits.h"

#include <QStringList>
#include <algorithm>
#include <cmath>
#include <iterator>

namespace NHarmonicLimits
{
namespace
{
constexpr UINT32 kHighestOfStandards = 40;

t_Limits ClassA(double factor)
{
    t_Limits limits{eKW_HMA_SCALE_SELECTION_ABSOLUTE,
                    {{2, 1.08},
                     {3, 2.3},
                     {4, 0.43},
                     {5, 1.14},
                     {6, 0.3},
                     {7, 0.77},
                     {9, 0.4},
                     {11, 0.33},
                     {13, 0.21}},
                    std::nullopt};
    for (UINT32 n = 8; n <= kHighestOfStandards; ++n)
    {
        if (limits.orders.count(n) == 0)
        {
            limits.orders[n] = n % 2 == 0 ? 0.23 * 8.0 / n : 0.15 * 15.0 / n;
        }
    }
    for (auto& [order, limit] : limits.orders)
    {
        limit *= factor;
    }
    return limits;
}

t_Limits ClassC(double powerFactor)
{
    t_Limits limits{eKW_HMA_SCALE_SELECTION_PERCENT_FUNDAMENTAL,
                    {{2, 2.0}, {3, 30.0 * powerFactor}, {5, 10.0}, {7, 7.0}, {9, 5.0}},
                    std::nullopt};
    for (UINT32 n = 11; n < kHighestOfStandards; n += 2)
    {
        limits.orders[n] = 3.0;
    }
    return limits;
}

t_Limits ClassD(double power)
{
    constexpr double kMilli = 1e-3;
    const t_Orders ofClassA = ClassA(1.0).orders;
    t_Orders perWatt{{3, 3.4}, {5, 1.9}, {7, 1.0}, {9, 0.5}, {11, 0.35}};
    for (UINT32 n = 13; n < kHighestOfStandards; n += 2)
    {
        perWatt[n] = 3.85 / n;
    }
    for (auto& [order, limit] : perWatt)
    {
        limit = std::min(limit * kMilli * power, ofClassA.at(order));
    }
    return {eKW_HMA_SCALE_SELECTION_ABSOLUTE, perWatt, std::nullopt};
}

t_Limits LargeEquipment(const t_Ratings& ratings)
{
    struct t_Row
    {
        double ratio;
        double odd[6]; ///< percent, orders 3 to 13
        double thd;
    };
    constexpr t_Row kRows[] = {{33.0, {21.6, 10.7, 7.2, 3.8, 3.1, 2.0}, 23.0},
                               {66.0, {24.0, 13.0, 8.0, 5.0, 4.0, 3.0}, 26.0},
                               {120.0, {27.0, 15.0, 10.0, 6.0, 5.0, 4.0}, 30.0},
                               {250.0, {35.0, 20.0, 13.0, 9.0, 8.0, 6.0}, 40.0},
                               {350.0, {41.0, 24.0, 15.0, 12.0, 10.0, 8.0}, 47.0}};
    const t_Row* upper = std::begin(kRows) + 1;
    while (upper + 1 != std::end(kRows) && upper->ratio < ratings.shortCircuitRatio)
    {
        ++upper;
    }
    const t_Row& below = *(upper - 1);
    const double share = (ratings.shortCircuitRatio - below.ratio) / (upper->ratio - below.ratio);
    const auto between = [share](double a, double b) { return a + share * (b - a); };
    const double onePercent = ratings.current / 100.0;
    t_Limits limits{eKW_HMA_SCALE_SELECTION_ABSOLUTE, {}, between(below.thd, upper->thd)};
    for (UINT32 n = 2; n <= 13; ++n)
    {
        const UINT32 column = n / 2 - 1;
        const double percent =
            n % 2 == 0 ? 16.0 / n : between(below.odd[column], upper->odd[column]);
        limits.orders[n] = percent * onePercent;
    }
    return limits;
}

t_Limits PublicSupply()
{
    t_Limits limits{eKW_HMA_SCALE_SELECTION_PERCENT_FUNDAMENTAL,
                    {{2, 2.0},
                     {3, 5.0},
                     {4, 1.0},
                     {5, 6.0},
                     {7, 5.0},
                     {9, 1.5},
                     {11, 3.5},
                     {13, 3.0},
                     {15, 0.5},
                     {17, 2.0},
                     {19, 1.5},
                     {21, 0.5},
                     {23, 1.5},
                     {25, 1.5}},
                    8.0};
    for (UINT32 n = 6; n <= 24; n += 2)
    {
        limits.orders[n] = 0.5;
    }
    return limits;
}

t_Limits Shipboard()
{
    t_Limits limits{eKW_HMA_SCALE_SELECTION_PERCENT_FUNDAMENTAL, {}, 5.0};
    for (UINT32 n = 2; n <= kHighestOfStandards; ++n)
    {
        limits.orders[n] = 3.0;
    }
    return limits;
}

t_Limits Airborne()
{
    t_Limits limits;
    for (UINT32 n = 2; n <= kHighestOfStandards; ++n)
    {
        const double even = n <= 4 ? 1.0 : 0.25;
        const double odd = (n % 3 == 0 ? 15.0 : 30.0) / n;
        limits.orders[n] = n % 2 == 0 ? even : odd;
    }
    return limits;
}
} // namespace

t_Limits OfStandard(KW_HMA_STANDARD standard, const t_Ratings& ratings)
{
    switch (standard)
    {
    case eKW_HMA_STANDARD_EN61000_3_2_CLASS_A:
        return ClassA(1.0);
    case eKW_HMA_STANDARD_EN61000_3_2_CLASS_B:
        return ClassA(1.5);
    case eKW_HMA_STANDARD_EN61000_3_2_CLASS_C:
        return ClassC(ratings.powerFactor);
    case eKW_HMA_STANDARD_EN61000_3_2_CLASS_D:
        return ClassD(ratings.power);
    case eKW_HMA_STANDARD_EN61000_3_12:
        return LargeEquipment(ratings);
    case eKW_HMA_STANDARD_EN50160:
        return PublicSupply();
    case eKW_HMA_STANDARD_MIL_STD_1399:
        return Shipboard();
    case eKW_HMA_STANDARD_RTCA_DO_160:
        return Airborne();
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
