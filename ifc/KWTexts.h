// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"

#include <QString>

class CEnumNameInfo;

/**
 * What a user reads and writes of the tree: meanings, and values with their units. Every client
 * that shows settings takes these texts, so that all of them show the same.
 *
 * All functions may be called from any thread; those that are given a node take the tree's lock
 * for their own duration. None of them changes anything.
 *
 * Numbers are written as engineers do: "1.5 MHz", "20ms", "3k", "2 mV/div", "50%", "0.02". A unit
 * may be left out; one that is written must be the quantity's own. The SI prefixes f p n µ (u) m k
 * M G T stand with or without the unit, "Ohm" and "deg" may be written for Ω and °, a scale is per
 * division whether "/div" is typed or not. Upper and lower case count, as they tell milli from mega
 * and seconds from siemens.
 */

/** The model's sentence about a property, group or action; an array or map has that of its items.
    Empty where there is none, as for nodes that were removed from their tree. */
KW_EXPORT QString KW_GetMeaning(const IDbObject& node);

/** Whether the node is a property that holds a secret, such as a passphrase: its value is shown to
    nobody, appears in no report, and is saved in files of the instrument's state alone. */
KW_EXPORT bool KW_IsSecret(const IDbObject& node);

/** What stands for the value of a secret: as long for every value, the empty one included. */
KW_EXPORT QString KW_GetSecretText();

/** How programs call a code (KWAcceptance.h): its constant without "eKW_ACC_", such as
    "ABOVE_MAXIMUM"; the number for any other code. */
KW_EXPORT QString KW_GetAcceptanceName(KW_ACCEPTANCE code);

/** The display name of a unit, such as "V/div"; empty for bare numbers. */
KW_EXPORT QString KW_GetUnitText(KW_UNIT unit);

/** A number in `unit` with nine significant digits, prefix and unit: "1.5 MHz"; with `exact` in
    full with the plain unit: "1500000 Hz". Numbers without a unit, and texts that are no number,
    are given back as they are. `number` is a decimal text as IDbProperty::GetText writes it. */
///@{
KW_EXPORT QString KW_FormatNumber(const QString& number, KW_UNIT unit, bool exact = false);
KW_EXPORT QString KW_FormatNumber(double number, KW_UNIT unit, bool exact = false);
///@}

/** Reads a number that a user wrote as a number in `unit`: as decimal text without any rounding,
    or as the nearest double (an infinity beyond the type's range). "inf", "-inf" and "nan" are
    numbers here. Any other text, and another quantity's unit, is refused with eKW_ACC_BAD_TEXT
    and leaves `number` alone. */
///@{
KW_EXPORT KW_ACCEPTANCE KW_ParseNumber(const QString& text, KW_UNIT unit, QString& number);
KW_EXPORT KW_ACCEPTANCE KW_ParseNumber(const QString& text, KW_UNIT unit, double& number);
///@}

/** How a value of an enumeration is called: its serial name, or its number where it has none. */
KW_EXPORT QString KW_FormatEnum(const CEnumNameInfo& names, INT32 value);

/** Finds the value that a serial, remote or display name stands for, tried in this order and
    without regard to case; a value without a serial name is called by its number. A name that
    several values carry is refused with eKW_ACC_AMBIGUOUS_NAME, any other text with
    eKW_ACC_UNKNOWN_VALUE; both leave `value` alone. */
KW_EXPORT KW_ACCEPTANCE KW_ParseEnum(const CEnumNameInfo& names, const QString& text, INT32& value);

/** A value with what it takes to show it. */
struct KW_ValueText
{
    QString text;        ///< as IDbProperty::GetText: not to be shown where it is secret
    QString type;        ///< as IDbProperty::GetTypeName
    KW_UNIT unit{};      ///< of numbers; eKW_UNIT_NOT_DEFINED for every other kind
    bool secret = false; ///< as KW_IsSecret
};

/** The present value of a property. */
KW_EXPORT KW_ValueText KW_GetValueText(const IDbProperty& property);

/** What a text must look like beyond its length, for a user who was refused with eKW_ACC_BAD_TEXT:
    "8 to 63 printable ASCII characters, …". Empty where it may be any text, and for other kinds. */
KW_EXPORT QString KW_GetFormText(const IDbProperty& property);

/** What the user chose, where limits or other settings hold it back: it stands again when they let
   it. The text is null where the value is the user's own. */
KW_EXPORT KW_ValueText KW_GetUserValueText(const IDbProperty& property);

/** A value for a reader: numbers as KW_FormatNumber, texts in quotes with "\n" for line feeds,
    byte blocks by their size, or with `exact` in base 64; secrets as KW_GetSecretText. */
KW_EXPORT QString KW_FormatValue(const KW_ValueText& value, bool exact = false);

/** The text for IDbProperty::SetText of a value that a user wrote: numbers with prefixes and units
    (whole ones also as "0x1F"), enumerations by any of their names, patterns in lower case and with
    blanks or "_" between their digits, all else as it is. Whether the property takes the value is
    decided when it is set. Refused with eKW_ACC_BAD_TEXT for what is no number, or not a whole one
    where one is wanted, and as KW_ParseEnum; `text` is left alone then. */
KW_EXPORT KW_ACCEPTANCE KW_ParseValue(const IDbProperty& property, const QString& written,
                                      QString& text);
