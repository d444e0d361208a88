// SPDX-License-Identifier: MIT
#include "Enumerations.h"

#include "EnumDocs.h"

#include <algorithm>
#include <unordered_map>

namespace
{
template <typename T>
KW_ACCEPTANCE Deliver(IKWEnumPropertyBase& property, INT32 value)
{
    return static_cast<IKWEnumProperty<T>&>(property).SetResult(static_cast<T>(value));
}

/** What needs the type itself. */
struct t_Type
{
    const char* name;
    const CEnumNameInfo& (*table)();
    KW_ACCEPTANCE (*deliver)(IKWEnumPropertyBase& property, INT32 value);
};
#define KWI_TYPE(Type) {#Type, GetStaticEnumNameInfo<Type>, Deliver<Type>},
constexpr t_Type kTypes[] = {KWI_ENUMERATIONS(KWI_TYPE)};
#undef KWI_TYPE

const t_Type* FindType(std::string_view name)
{
    const auto* const found =
        std::find_if(std::begin(kTypes), std::end(kTypes),
                     [name](const t_Type& type) { return type.name == name; });
    return found == std::end(kTypes) ? nullptr : found;
}

py::object FindClass(const std::string& name)
{
    const t_Type* const type = FindType(name);
    if (type == nullptr)
    {
        throw py::key_error(name);
    }
    return py::reinterpret_borrow<py::object>(EnumerationOf(type->table()).type);
}

/** Text of a value; None where it is not set. */
template <QString (CEnumNameInfo::*Get)(INT32) const>
py::object Text(const CEnumNameInfo& table, INT32 value)
{
    const QString text = (table.*Get)(value);
    return text.isNull() ? py::none() : py::cast(text);
}

/** What the model says of the type and its values; None for one that it does not know. */
const char* DocOf(const CEnumNameInfo& table)
{
    const auto* const found = std::find_if(std::begin(kEnumDocs), std::end(kEnumDocs),
                                           [&](const t_EnumDoc& row)
                                           { return table.GetType() == QLatin1String(row.type); });
    return found != std::end(kEnumDocs) ? found->doc : nullptr;
}

py::object NumberOf(const CEnumNameInfo& table, INT32 value)
{
    const auto number = table.GetNumber(value);
    return number ? py::object(py::float_(*number)) : py::none();
}
} // namespace

const t_Enumeration& EnumerationOf(const CEnumNameInfo& table)
{
    static auto& made = *new std::unordered_map<const CEnumNameInfo*, t_Enumeration>;
    const auto found = made.find(&table);
    if (found != made.end())
    {
        return found->second;
    }
    const py::object type = py::handle(Registered().makeEnumeration)(
        py::cast(&table, py::return_value_policy::reference));
    // Another thread may have been quicker; its class is the one that stands.
    const auto place = made.emplace(&table, t_Enumeration{}).first;
    if (place->second.type == nullptr)
    {
        py::tuple members(table.GetEnumSize());
        for (INT32 value = 0; value < table.GetEnumSize(); ++value)
        {
            members[static_cast<std::size_t>(value)] = type(value);
        }
        place->second = {py::object(type).release().ptr(), members.release().ptr()};
    }
    return place->second;
}

KW_ACCEPTANCE DeliverMember(IKWEnumPropertyBase& property, INT32 value)
{
    const t_Type* const type = FindType(property.GetEnumNameInfo().GetType().toStdString());
    return type != nullptr ? type->deliver(property, value) : eKW_ACC_WRONG_KIND;
}

PyObject* NewMember(const t_Enumeration& enumeration, INT32 value)
{
    if (value < 0 || value >= PyTuple_GET_SIZE(enumeration.members))
    {
        return PyLong_FromLong(value);
    }
    PyObject* const member = PyTuple_GET_ITEM(enumeration.members, value);
    Py_INCREF(member);
    return member;
}

void AddEnumerations(py::module_& module)
{
    py::class_<CEnumNameInfo>(module, "EnumTable", "The names of an enumeration's values.")
        .def_property_readonly("type", &CEnumNameInfo::GetType)
        .def_property_readonly("doc", &DocOf)
        .def("__len__", &CEnumNameInfo::GetEnumSize)
        .def("display", &Text<&CEnumNameInfo::GetName>, py::arg("value"))
        .def("short", &Text<&CEnumNameInfo::GetShortName>, py::arg("value"))
        .def("remote", &Text<&CEnumNameInfo::GetRemoteName>, py::arg("value"))
        .def("serial", &Text<&CEnumNameInfo::GetSerialName>, py::arg("value"))
        .def("number", &NumberOf, py::arg("value"));
    module.def("enumeration", &FindClass, py::arg("name"),
               "The class of an enumeration, such as \"KW_ONOFF\".");
    module.def(
        "enumeration_names",
        []
        {
            py::list names;
            for (const t_Type& type : kTypes)
            {
                names.append(type.name);
            }
            return names;
        },
        "The names of all enumerations.");
}
