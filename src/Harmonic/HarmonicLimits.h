// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsHarmonics.h"

#include <QString>
#include <map>
#include <optional>

/** Limits of harmonics by standards and by the user. Stateless. */
namespace NHarmonicLimits
{
/** Orders 2 and up with their limits. */
using t_Orders = std::map<UINT32, double>;

constexpr UINT32 kHighestOrder = 64;
/** A limit of the user that stands for none. */
constexpr double kNoLimit = 1e6;

struct t_Limits
{
    KW_HMA_SCALE_SELECTION scale = eKW_HMA_SCALE_SELECTION_PERCENT_FUNDAMENTAL;
    t_Orders orders;
    std::optional<double> thd;  ///< in percent
    std::optional<double> pwhd; ///< in percent, of the orders 14 to 40
};

/** What limits of some standards depend on. */
struct t_Ratings
{
    double power;             ///< W
    double current;           ///< A
    double powerFactor;       ///< 0 to 1
    double shortCircuitRatio; ///< 33 to 350
    double frequency;         ///< Hz, of the supply
};

/**
 * Limits of a standard; empty for "none" and "user", and where the standard has none for equipment
 * of such ratings. docs/harmonic-limits.md has editions, sources and what each applies to.
 */
t_Limits OfStandard(KW_HMA_STANDARD standard, const t_Ratings& ratings);

/** "3=2.3;5=1.14", six significant digits, ascending. */
QString ToText(const t_Orders& orders);

/** Reads that form. Entries that are no order from 2 to 64 with a number are left out, and
    `isComplete` says whether there were none. */
t_Orders FromText(const QString& text, bool& isComplete);
} // namespace NHarmonicLimits
