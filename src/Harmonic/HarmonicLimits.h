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
    std::optional<double> thd; ///< in percent
};

/** What limits of some standards depend on. */
struct t_Ratings
{
    double power;             ///< W
    double current;           ///< A
    double powerFactor;       ///< 0 to 1
    double shortCircuitRatio; ///< 33 to 350
};

/**
 * Limits of a standard, for orders up to 40; empty for "none" and "user".
 *
 * EN 61000-3-2: class A in ampere, class B 1.5 times that, class C in percent of the fundamental,
 * class D the smaller of its limit per watt and that of class A. EN 61000-3-12: table for other
 * than balanced three-phase equipment, in ampere of the rated current, interpolated between its
 * short-circuit ratios. EN 50160: public supply voltage. MIL-STD-1399: supply voltage. RTCA DO-160:
 * currents of single-phase equipment.
 */
t_Limits OfStandard(KW_HMA_STANDARD standard, const t_Ratings& ratings);

/** "3=2.3;5=1.14", six significant digits, ascending. */
QString ToText(const t_Orders& orders);

/** Reads that form. Entries that are no order from 2 to 64 with a number are left out, and
    `isComplete` says whether there were none. */
t_Orders FromText(const QString& text, bool& isComplete);
} // namespace NHarmonicLimits
