// SPDX-License-Identifier: MIT
// Generated from Basics.toml: change the model, not this file.
#pragma once

#include <EnumNameInfo.h>

/** Rate; a text that follows a separator begins with a digit, some texts are not set. */
enum KW_RATE : INT32
{
    eKW_RATE_10K = 0, ///< 10 k: Slow.
    eKW_RATE_2U5 = 1, ///< 2.5 µ\s
    /** "User": Any rate that the user enters; the exact figure is the property beside this
        selector. */
    eKW_RATE_USER = 2
};
template <>
KW_EXPORT const CEnumNameInfo& GetStaticEnumNameInfo<KW_RATE>();
template <>
inline constexpr bool KW_STEPS_BY_NUMBER<KW_RATE> = true;

/** Probe, with a blank entry. */
enum KW_PROBE : INT32
{
    eKW_PROBE_X1 = 0, ///< x1
    eKW_PROBE_1 = 1 ///< 1
};
template <>
KW_EXPORT const CEnumNameInfo& GetStaticEnumNameInfo<KW_PROBE>();

/** Sign; serial names only */
enum KW_SIGN : INT32
{
    eKW_SIGN_NEGATIVE = 0, ///< NEGATIVE
    eKW_SIGN_POSITIVE = 1 ///< POSITIVE
};
template <>
KW_EXPORT const CEnumNameInfo& GetStaticEnumNameInfo<KW_SIGN>();

/** Unit. */
enum KW_UNIT : INT32
{
    eKW_UNIT_NONE = 0, ///< NONE
    eKW_UNIT_FREQ_S_DIV = 1 ///< s/div
};
template <>
KW_EXPORT const CEnumNameInfo& GetStaticEnumNameInfo<KW_UNIT>();
