// SPDX-License-Identifier: MIT
#pragma once

#include "Decimal.h"
#include "KWEnumerations.h"

#include <QString>

/**
 * Numbers as engineers write them: "1.5 MHz", "20ms", "3k", "2 mV/div", "50%", "0.02".
 *
 * A unit may be left out; one that is written must be the quantity's own. Prefixes f p n µ (u) m k
 * M G T stand with or without the unit. "Ohm" and "deg" may be written for Ω and °. Upper and
 * lower case count, as they tell milli from mega and seconds from siemens.
 */

/** What the unit of a number shows; empty for bare numbers. */
QString GetUnitText(KW_UNIT unit);

/** A number with nine significant digits, prefix and unit: "1.5 MHz". Numbers without a unit, and
    texts that are no number, are shown as they are. */
QString ShowNumber(const QString& exactText, KW_UNIT unit);
QString ShowNumber(double value, KW_UNIT unit);

/** The number in full with its plain unit: "1500000 Hz". */
QString ShowExactNumber(const QString& exactText, KW_UNIT unit);

/** Reads a number in `unit`. `what` names the quantity in the failure that any other text ends
    in. */
t_Decimal ReadNumber(const QString& text, KW_UNIT unit, const QString& what);

/** The same as a double; "inf", "-inf" and "nan" are numbers here. */
double ReadDouble(const QString& text, KW_UNIT unit, const QString& what);
