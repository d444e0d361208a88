// SPDX-License-Identifier: MIT
#pragma once

#include "PythonCalls.h"

#include "EnumTypes.h"
#include "IKWProperties.h"
#include "KWTexts.h"

/** Whether T is an enumeration of the model. */
template <typename T>
inline constexpr bool kIsEnumeration = false;
#define KWI_IS_ENUMERATION(Type)                                                                   \
    template <>                                                                                    \
    inline constexpr bool kIsEnumeration<Type> = true;
KWI_ENUMERATIONS(KWI_IS_ENUMERATION)
#undef KWI_IS_ENUMERATION

/** Classes of enumerations, made when they are first asked for. */
struct t_Enumeration
{
    PyObject* type = nullptr;    ///< an IntEnum
    PyObject* members = nullptr; ///< tuple of its members, by value
};

/** The class of a table. Throws what Python sets. */
const t_Enumeration& EnumerationOf(const CEnumNameInfo& table);

/** Delivers a result: only the typed handle does that. */
KW_ACCEPTANCE DeliverMember(IKWEnumPropertyBase& property, INT32 value);

/** The member of a value, a new reference; the number where the table has no such value. */
PyObject* NewMember(const t_Enumeration& enumeration, INT32 value);

namespace pybind11::detail
{
/** Enumerations of the library as their members; a name of any kind is taken for its value. */
template <typename T>
struct type_caster<T, std::enable_if_t<kIsEnumeration<T>>>
{
    PYBIND11_TYPE_CASTER(T, const_name("int"));

    bool load(handle source, bool)
    {
        const CEnumNameInfo& table = GetStaticEnumNameInfo<T>();
        if (PyUnicode_Check(source.ptr()))
        {
            INT32 number = 0;
            const KW_ACCEPTANCE code = KW_ParseEnum(table, TextOf(source.ptr()), number);
            value = static_cast<T>(number);
            return KW_IsAccepted(code);
        }
        // A member of another enumeration is a number too, but never what was meant.
        const t_Enumeration& enumeration = EnumerationOf(table);
        const bool isOther = PyLong_Check(source.ptr()) && !PyLong_CheckExact(source.ptr()) &&
                             !PyBool_Check(source.ptr()) &&
                             PyObject_IsInstance(source.ptr(), enumeration.type) != 1;
        if (isOther || !PyLong_Check(source.ptr()))
        {
            return false;
        }
        int overflow = 0;
        const long number = PyLong_AsLongAndOverflow(source.ptr(), &overflow);
        if (overflow != 0 || number < INT32_MIN || number > INT32_MAX)
        {
            return false;
        }
        value = static_cast<T>(number);
        return true;
    }
    static handle cast(T member, return_value_policy, handle)
    {
        return NewMember(EnumerationOf(GetStaticEnumNameInfo<T>()), static_cast<INT32>(member));
    }
};
} // namespace pybind11::detail
