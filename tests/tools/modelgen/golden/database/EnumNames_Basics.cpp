// SPDX-License-Identifier: MIT
// Generated from Basics.toml: change the model, not this file.
#include "CommonDatabase/Properties/DbPropEnumType.h"
#include "KWEnumerationsBasics.h"

#include <limits>

template <>
const CEnumNameInfo& GetStaticEnumNameInfo<KW_RATE>()
{
    static constexpr char16_t kDisplay[] = u"10 k\0002.5 µ\\s\0\"User\"";
    static constexpr char16_t kShort[] = u"10\0\x01\0007";
    static constexpr char16_t kRemote[] = u"R10K\0R2U\0USER";
    static constexpr char16_t kSerial[] = u"10K\0002U5\0USER";
    static constexpr double kNumbers[] = {
        10000.0, 2.5e-06, std::numeric_limits<double>::quiet_NaN()};
    static const CEnumNameInfo info(3, u"KW_RATE",
                                    {kDisplay, kShort, kRemote, kSerial}, kNumbers);
    return info;
}

template <>
const CEnumNameInfo& GetStaticEnumNameInfo<KW_PROBE>()
{
    static constexpr char16_t kDisplay[] = u"x1\0";
    static constexpr char16_t kRemote[] = u"1X\0";
    static constexpr char16_t kSerial[] = u"X1\0";
    static const CEnumNameInfo info(2, u"KW_PROBE",
                                    {kDisplay, nullptr, kRemote, kSerial});
    return info;
}

template <>
const CEnumNameInfo& GetStaticEnumNameInfo<KW_SIGN>()
{
    static constexpr char16_t kSerial[] = u"NEGATIVE\0POSITIVE";
    static const CEnumNameInfo info(2, u"KW_SIGN",
                                    {nullptr, nullptr, nullptr, kSerial});
    return info;
}

template <>
const CEnumNameInfo& GetStaticEnumNameInfo<KW_UNIT>()
{
    static constexpr char16_t kDisplay[] = u"\0s/div";
    static constexpr char16_t kRemote[] = u"NONE\0SDIV";
    static constexpr char16_t kSerial[] = u"NONE\0FREQ_S_DIV";
    static const CEnumNameInfo info(2, u"KW_UNIT",
                                    {kDisplay, nullptr, kRemote, kSerial});
    return info;
}

template CDbPropEnum<KW_RATE>::CDbPropEnum();
template CDbPropEnum<KW_PROBE>::CDbPropEnum();
template CDbPropEnum<KW_SIGN>::CDbPropEnum();
template CDbPropEnum<KW_UNIT>::CDbPropEnum();
