// SPDX-License-Identifier: MIT
#include "Nodes.h"

#include "KWRemoteNames.h"

#include <cmath>
#include <limits>

namespace
{
template <typename T>
void* Cast(const std::shared_ptr<IKWPropertyBase>& handle)
{
    return dynamic_cast<T*>(handle.get());
}

struct t_KindName
{
    const char* name;
    e_Kind kind;
    void* (*cast)(const std::shared_ptr<IKWPropertyBase>&);
};
constexpr t_KindName kKinds[] = {
    {"double", e_Kind::Double, Cast<IKWNumericProperty<double>>},
    {"uint32", e_Kind::UInt32, Cast<IKWNumericProperty<UINT32>>},
    {"uint16", e_Kind::UInt16, Cast<IKWNumericProperty<UINT16>>},
    {"uint64", e_Kind::UInt64, Cast<IKWNumericProperty<UINT64>>},
    {"int16", e_Kind::Int16, Cast<IKWNumericProperty<INT16>>},
    {"int32", e_Kind::Int32, Cast<IKWNumericProperty<INT32>>},
    {"int64", e_Kind::Int64, Cast<IKWNumericProperty<INT64>>},
    {"string", e_Kind::String, Cast<IKWStringProperty>},
    {"bitpattern", e_Kind::Pattern, Cast<IKWBitPatternProperty>},
    {"blob", e_Kind::Blob, Cast<IKWBlobProperty>},
    {"filepath", e_Kind::FilePath, Cast<IKWFilePathProperty>},
    {"reference", e_Kind::Reference, Cast<IKWReferenceProperty>},
};

template <typename T>
PyObject* NewNumber(T number)
{
    if constexpr (std::is_floating_point_v<T>)
    {
        return PyFloat_FromDouble(number);
    }
    else if constexpr (std::is_signed_v<T>)
    {
        return PyLong_FromLongLong(number);
    }
    else
    {
        return PyLong_FromUnsignedLongLong(number);
    }
}

template <typename T>
PyObject* ReadText(const CProperty& property)
{
    return NewText(Released([&] { return property.As<T>().Get(); }));
}

PyObject* NewBytes(const CProperty& property)
{
    const QByteArray bytes = Released([&] { return property.As<IKWBlobProperty>().Get(); });
    return PyBytes_FromStringAndSize(bytes.constData(), bytes.size());
}

[[noreturn]] void RefuseType(const CProperty& property, PyObject* value)
{
    const QString name = Released([&] { return property.node->GetTypeName(); });
    PyErr_Format(PyExc_TypeError, "a %s can not be set to %R", name.toUtf8().constData(), value);
    throw py::error_already_set();
}

[[noreturn]] void RefuseCode(KW_ACCEPTANCE code, PyObject* self, PyObject* value)
{
    Refuse(code, self, value);
    throw py::error_already_set();
}

/** What a user wrote: read with its unit, then written as text. */
void WriteWritten(const CProperty& property, PyObject* self, PyObject* value)
{
    const QString written = TextOf(value);
    Ask(self, value,
        [&]
        {
            QString text;
            const KW_ACCEPTANCE code = KW_ParseValue(*property.node, written, text);
            return KW_IsAccepted(code) ? property.node->SetText(text) : code;
        });
}

/** The number of a Python object. */
template <typename T>
T NumberOf(const CProperty& property, PyObject* self, PyObject* value)
{
    if constexpr (std::is_floating_point_v<T>)
    {
        const double number = PyFloat_AsDouble(value); // takes __float__ and __index__
        if (number == -1.0 && PyErr_Occurred() != nullptr)
        {
            if (PyErr_ExceptionMatches(PyExc_OverflowError))
            {
                PyErr_Clear();
                RefuseCode(eKW_ACC_ABOVE_MAXIMUM, self, value);
            }
            PyErr_Clear();
            RefuseType(property, value);
        }
        return number;
    }
    else
    {
        py::object whole;
        if (PyFloat_Check(value))
        {
            // 3.0 is a whole number, 3.5 would be rounded by nobody's wish.
            const double number = PyFloat_AS_DOUBLE(value);
            if (!std::isfinite(number) || number != std::floor(number))
            {
                RefuseCode(std::isnan(number) ? eKW_ACC_NOT_A_NUMBER : eKW_ACC_BAD_TEXT, self,
                           value);
            }
            whole = py::reinterpret_steal<py::object>(PyLong_FromDouble(number));
        }
        else
        {
            whole = py::reinterpret_steal<py::object>(PyNumber_Index(value));
            if (!whole)
            {
                PyErr_Clear();
                RefuseType(property, value);
            }
        }
        int overflow = 0;
        const long long number = PyLong_AsLongLongAndOverflow(whole.ptr(), &overflow);
        if constexpr (std::is_same_v<T, UINT64>)
        {
            if (overflow > 0)
            {
                const unsigned long long large = PyLong_AsUnsignedLongLong(whole.ptr());
                if (PyErr_Occurred() == nullptr)
                {
                    return large;
                }
                PyErr_Clear();
            }
        }
        if (overflow < 0 || (overflow == 0 && std::cmp_less(number, std::numeric_limits<T>::min())))
        {
            RefuseCode(eKW_ACC_BELOW_MINIMUM, self, value);
        }
        if (overflow > 0 || std::cmp_greater(number, std::numeric_limits<T>::max()))
        {
            RefuseCode(eKW_ACC_ABOVE_MAXIMUM, self, value);
        }
        return static_cast<T>(number);
    }
}

template <typename T>
void WriteNumber(const CProperty& property, IKWNumericProperty<T>& handle, PyObject* self,
                 PyObject* value, e_Write how)
{
    T number{};
    if (PyUnicode_Check(value))
    {
        if (how == e_Write::Set)
        {
            WriteWritten(property, self, value);
            return;
        }
        QString text;
        Ask(self, value, [&] { return KW_ParseValue(*property.node, TextOf(value), text); });
        bool isNumber = false;
        if constexpr (std::is_floating_point_v<T>)
        {
            number = text.toDouble(&isNumber);
        }
        else
        {
            const auto whole = py::reinterpret_steal<py::object>(
                PyLong_FromString(text.toUtf8().constData(), nullptr, 10));
            if (whole)
            {
                number = NumberOf<T>(property, self, whole.ptr());
            }
            PyErr_Clear();
        }
    }
    else
    {
        number = NumberOf<T>(property, self, value);
    }
    Ask(self, value,
        [&]
        {
            switch (how)
            {
            case e_Write::Limited:
                return handle.SetLimited(number);
            case e_Write::UserValue:
                return handle.SetUserValue(number);
            case e_Write::Deliver:
                return handle.SetResult(number);
            default:
                return handle.Set(number);
            }
        });
}

void WriteEnum(const CProperty& property, PyObject* self, PyObject* value, e_Write how)
{
    if (PyUnicode_Check(value) && how != e_Write::Deliver)
    {
        WriteWritten(property, self, value);
        return;
    }
    INT32 number = 0;
    if (PyUnicode_Check(value))
    {
        const CEnumNameInfo& names = *property.node->GetEnumNameInfo();
        Ask(self, value, [&] { return KW_ParseEnum(names, TextOf(value), number); });
    }
    else
    {
        const auto own = reinterpret_cast<PyTypeObject*>(property.Enumeration().type);
        if (!PyLong_Check(value))
        {
            RefuseType(property, value);
        }
        // A member of another enumeration is a number too, but never what was meant.
        if (Py_TYPE(value) != own && !PyLong_CheckExact(value) && !PyBool_Check(value))
        {
            RefuseCode(eKW_ACC_WRONG_KIND, self, value);
        }
        int overflow = 0;
        const long long wide = PyLong_AsLongLongAndOverflow(value, &overflow);
        if (overflow != 0 || wide < INT32_MIN || wide > INT32_MAX)
        {
            RefuseCode(eKW_ACC_UNKNOWN_VALUE, self, value);
        }
        number = static_cast<INT32>(wide);
    }
    if (how != e_Write::Deliver)
    {
        Ask(self, value, [&] { return property.As<IKWEnumPropertyBase>().SetAsInt(number); });
        return;
    }
    Ask(self, value, [&] { return DeliverMember(property.As<IKWEnumPropertyBase>(), number); });
}

/** Texts of all kinds. */
void WriteText(const CProperty& property, PyObject* self, PyObject* value, e_Write how)
{
    QString text;
    if (property.kind == e_Kind::Reference && value == Py_None)
    {
        text = QLatin1String("");
    }
    else if (property.kind == e_Kind::Reference &&
             PyObject_IsInstance(value, Registered().group) == 1)
    {
        text = Released([&] { return Of<CGroup>(value).node->GetPath(); });
    }
    else if (PyUnicode_Check(value))
    {
        text = TextOf(value);
    }
    else
    {
        RefuseType(property, value);
    }
    const bool isResult = how == e_Write::Deliver;
    Ask(self, value,
        [&]
        {
            switch (property.kind)
            {
            case e_Kind::String:
            {
                auto& handle = property.As<IKWStringProperty>();
                return isResult ? handle.SetResult(text) : handle.Set(text);
            }
            case e_Kind::Pattern:
            {
                auto& handle = property.As<IKWBitPatternProperty>();
                if (isResult)
                {
                    return handle.SetResult(text);
                }
                QString pattern;
                const KW_ACCEPTANCE code = KW_ParseValue(*property.node, text, pattern);
                return KW_IsAccepted(code) ? handle.Set(pattern) : code;
            }
            case e_Kind::FilePath:
                return property.As<IKWFilePathProperty>().Set(text);
            default:
                return property.As<IKWReferenceProperty>().Set(text);
            }
        });
}

void WriteBytes(const CProperty& property, PyObject* self, PyObject* value, e_Write how)
{
    if (!PyObject_CheckBuffer(value))
    {
        RefuseType(property, value);
    }
    Py_buffer view;
    if (PyObject_GetBuffer(value, &view, PyBUF_SIMPLE) != 0)
    {
        throw py::error_already_set();
    }
    // A block of more than a handle takes is cut to one byte more, which it refuses.
    const auto size = std::min<Py_ssize_t>(view.len, std::numeric_limits<int>::max() / 2);
    const QByteArray bytes(static_cast<const char*>(view.buf), static_cast<int>(size));
    PyBuffer_Release(&view);
    auto& handle = property.As<IKWBlobProperty>();
    Ask(self, value,
        [&] { return how == e_Write::Deliver ? handle.SetResult(bytes) : handle.Set(bytes); });
}

/** One of a number's attributes; None for other kinds. */
template <typename Get>
py::object OfNumber(const CProperty& property, Get&& get)
{
    PyObject* number = nullptr;
    property.WithNumber([&](auto& handle) { number = NewNumber(get(handle)); });
    return number != nullptr ? py::reinterpret_steal<py::object>(number) : py::none();
}

CProperty& Self(py::handle self)
{
    return Of<CProperty>(self.ptr());
}

/** A call of the property's node that takes the tree's lock. */
template <typename Work>
auto Locked(py::handle self, Work&& work)
{
    const CProperty& property = Self(self);
    return Released([&] { return work(*property.node); });
}

py::object GetLimit(py::handle self, bool isMaximum)
{
    const CProperty& property = Self(self);
    switch (property.kind)
    {
    case e_Kind::String: // the longest text
        return isMaximum ? py::cast(Released(
                               [&] { return property.As<IKWStringProperty>().GetMaxLength(); }))
                         : py::none();
    case e_Kind::Pattern:
        return isMaximum ? py::cast(Released(
                               [&] { return property.As<IKWBitPatternProperty>().GetMaxLength(); }))
                         : py::none();
    case e_Kind::Blob:
        return isMaximum
                   ? py::cast(Released([&] { return property.As<IKWBlobProperty>().GetMaxSize(); }))
                   : py::none();
    default:
        return OfNumber(property, [isMaximum](auto& handle)
                        { return isMaximum ? handle.GetMax() : handle.GetMin(); });
    }
}

py::object GetDefault(py::handle self)
{
    const CProperty& property = Self(self);
    if (property.kind == e_Kind::Enum)
    {
        const QString text = Locked(self, [](auto& node) { return node.GetDefaultText(); });
        INT32 value = 0;
        KW_ParseEnum(*property.node->GetEnumNameInfo(), text, value);
        return py::reinterpret_steal<py::object>(NewMember(property.Enumeration(), value));
    }
    if (property.kind == e_Kind::Blob)
    {
        const QString text = Locked(self, [](auto& node) { return node.GetDefaultText(); });
        const QByteArray bytes = QByteArray::fromBase64(text.toLatin1());
        return py::bytes(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    }
    const py::object number = OfNumber(property, [](auto& handle) { return handle.GetDefault(); });
    return number.is_none()
               ? py::cast(Locked(self, [](auto& node) { return node.GetDefaultText(); }))
               : number;
}

/** What can be selected now: members of an enumeration, entries of a value list. */
py::object GetValues(py::handle self)
{
    const CProperty& property = Self(self);
    py::list values;
    if (property.kind == e_Kind::Enum)
    {
        const t_Enumeration& enumeration = property.Enumeration();
        auto& handle = property.As<IKWEnumPropertyBase>();
        const auto count = static_cast<INT32>(PyTuple_GET_SIZE(enumeration.members));
        std::vector<INT32> selectable;
        Released(
            [&]
            {
                for (INT32 value = 0; value < count; ++value)
                {
                    if (handle.GetValueState(value) != eVALUESTATE_NOT_SELECTABLE)
                    {
                        selectable.push_back(value);
                    }
                }
            });
        for (const INT32 value : selectable)
        {
            values.append(py::reinterpret_steal<py::object>(NewMember(enumeration, value)));
        }
        return values;
    }
    const QStringList texts = Locked(self, [](auto& node) { return node.GetValueTexts(); });
    for (const QString& text : texts)
    {
        if (property.kind == e_Kind::Double)
        {
            values.append(text.toDouble());
        }
        else if (property.kind < e_Kind::Double)
        {
            values.append(py::reinterpret_steal<py::object>(
                PyLong_FromString(text.toUtf8().constData(), nullptr, 10)));
        }
        else
        {
            values.append(text);
        }
    }
    return values;
}

template <e_Write How>
void Write(py::handle self, py::handle value)
{
    const CProperty& property = Self(self);
    const bool isNumber = property.kind <= e_Kind::Double;
    if ((How == e_Write::Limited || How == e_Write::UserValue) && !isNumber)
    {
        RefuseCode(eKW_ACC_WRONG_KIND, self.ptr(), value.ptr());
    }
    if (How == e_Write::Deliver &&
        (property.kind == e_Kind::FilePath || property.kind == e_Kind::Reference))
    {
        RefuseCode(eKW_ACC_WRONG_KIND, self.ptr(), value.ptr());
    }
    WriteValue(property, self.ptr(), value.ptr(), How);
}

IKWFilePathProperty& FilePath(py::handle self)
{
    const CProperty& property = Self(self);
    if (property.kind != e_Kind::FilePath)
    {
        throw py::type_error("only paths of files have this");
    }
    return property.As<IKWFilePathProperty>();
}

py::bytes LoadFile(py::handle self)
{
    const auto& path = FilePath(self);
    QByteArray contents;
    Ask(self, py::none(), [&] { return path.Load(contents); });
    return {contents.constData(), static_cast<std::size_t>(contents.size())};
}

void WriteFile(py::handle self, const py::bytes& bytes)
{
    auto& path = FilePath(self);
    const std::string_view view = bytes;
    const QByteArray contents(view.data(), static_cast<int>(view.size()));
    Ask(self, bytes, [&] { return path.Write(contents); });
}
} // namespace

t_PropertySeed::t_PropertySeed(const std::shared_ptr<t_Tree>& ownTree,
                               std::shared_ptr<IDbProperty> property)
    : t_Node(ownTree, std::move(property)), handle(node->GetHandle()), kind(e_Kind::Enum),
      typed(dynamic_cast<IKWEnumPropertyBase*>(handle.get()))
{
    if (typed != nullptr)
    {
        return;
    }
    const QString name = node->GetTypeName();
    for (const t_KindName& known : kKinds)
    {
        if (name == QLatin1String(known.name))
        {
            kind = known.kind;
            typed = known.cast(handle);
        }
    }
}

const t_Enumeration& CProperty::Enumeration() const
{
    if (m_enumeration == nullptr)
    {
        m_enumeration = &EnumerationOf(
            *Released([this] { return &As<IKWEnumPropertyBase>().GetEnumNameInfo(); }));
    }
    return *m_enumeration;
}

PyObject* ReadValue(const CProperty& property)
{
    switch (property.kind)
    {
    case e_Kind::Enum:
        return NewMember(property.Enumeration(), property.As<IKWEnumPropertyBase>().GetAsInt());
    case e_Kind::String:
        return ReadText<IKWStringProperty>(property);
    case e_Kind::Pattern:
        return ReadText<IKWBitPatternProperty>(property);
    case e_Kind::FilePath:
        return ReadText<IKWFilePathProperty>(property);
    case e_Kind::Reference:
        return ReadText<IKWReferenceProperty>(property);
    case e_Kind::Blob:
        return NewBytes(property);
    default:
        PyObject* number = nullptr;
        property.WithNumber([&](auto& handle) { number = NewNumber(handle.Get()); });
        return number;
    }
}

void WriteValue(const CProperty& property, PyObject* self, PyObject* value, e_Write how)
{
    const bool isNumber =
        property.WithNumber([&](auto& handle) { WriteNumber(property, handle, self, value, how); });
    if (isNumber)
    {
        return;
    }
    switch (property.kind)
    {
    case e_Kind::Enum:
        return WriteEnum(property, self, value, how);
    case e_Kind::Blob:
        return WriteBytes(property, self, value, how);
    default:
        return WriteText(property, self, value, how);
    }
}

void AddProperty(py::module_& module)
{
    py::class_<t_PropertySeed>(module, "PropertySeed", "Makes a property.");
    py::class_<CProperty>(module, "Property", "A property of the tree in this process.")
        .def(py::init<const t_PropertySeed&>(), py::arg("seed"))
        .def_property(
            "value",
            [](py::handle self)
            {
                PyObject* const value = ReadValue(Self(self));
                if (value == nullptr)
                {
                    throw py::error_already_set();
                }
                return py::reinterpret_steal<py::object>(value);
            },
            Write<e_Write::Set>)
        .def("set", Write<e_Write::Set>, py::arg("value"))
        .def("set_limited", Write<e_Write::Limited>, py::arg("value"))
        .def("set_user_value", Write<e_Write::UserValue>, py::arg("value"))
        .def("deliver", Write<e_Write::Deliver>, py::arg("value"))
        .def("reset", [](py::handle self)
             { Ask(self, py::none(), [&] { return Self(self).node->SetToDefault(); }); })
        .def(
            "step",
            [](py::handle self, INT32 steps)
            { Ask(self, py::int_(steps), [&] { return Self(self).node->IncDec(steps); }); },
            py::arg("steps") = 1)
        .def_property_readonly("min", [](py::handle self) { return GetLimit(self, false); })
        .def_property_readonly("max", [](py::handle self) { return GetLimit(self, true); })
        .def_property_readonly(
            "step_size", [](py::handle self)
            { return OfNumber(Self(self), [](auto& handle) { return handle.GetStep(); }); })
        .def_property_readonly(
            "user_value", [](py::handle self)
            { return OfNumber(Self(self), [](auto& handle) { return handle.GetUserValue(); }); })
        .def_property_readonly("default", &GetDefault)
        .def_property_readonly("values", &GetValues)
        .def_property_readonly("unit", [](py::handle self)
                               { return Locked(self, [](auto& n) { return n.GetUnitCode(); }); })
        .def_property_readonly(
            "unit_text", [](py::handle self)
            { return Locked(self, [](auto& n) { return KW_GetUnitText(n.GetUnitCode()); }); })
        .def_property_readonly("type_name", [](py::handle self)
                               { return Locked(self, [](auto& n) { return n.GetTypeName(); }); })
        .def_property_readonly("text", [](py::handle self)
                               { return Locked(self, [](auto& n) { return n.GetText(); }); })
        .def_property_readonly(
            "shown", [](py::handle self)
            { return Locked(self, [](auto& n) { return KW_FormatValue(KW_GetValueText(n)); }); })
        .def_property_readonly("form", [](py::handle self)
                               { return Locked(self, [](auto& n) { return KW_GetFormText(n); }); })
        .def_property_readonly("is_valid", [](py::handle self)
                               { return Self(self).node->GetValidity() == eKW_VALIDITY_VALID; })
        .def_property_readonly("is_secret", [](py::handle self)
                               { return Locked(self, [](auto& n) { return KW_IsSecret(n); }); })
        .def_property_readonly(
            "is_result",
            [](py::handle self) {
                return Locked(self,
                              [](auto& n) { return n.GetObjectType() == eOBJECTTYPE_RESULT; });
            })
        .def_property_readonly("full_path",
                               [](py::handle self)
                               {
                                   const auto& path = FilePath(self);
                                   return Released([&] { return path.GetFullPath(); });
                               })
        .def("new_file_name",
             [](py::handle self)
             {
                 const auto& path = FilePath(self);
                 return Released([&] { return path.CreateNewFileName(); });
             })
        .def("load", &LoadFile)
        .def("write", &WriteFile, py::arg("contents"))
        .def_property_readonly("name", [](py::handle self)
                               { return Locked(self, [](auto& n) { return n.GetNodeName(); }); })
        .def_property_readonly("path", [](py::handle self)
                               { return Locked(self, [](auto& n) { return n.GetPath(); }); })
        .def_property_readonly("meaning", [](py::handle self)
                               { return Locked(self, [](auto& n) { return KW_GetMeaning(n); }); })
        .def_property_readonly(
            "remote_name", [](py::handle self)
            { return Locked(self, [](auto& n) { return KW_GetRemoteNames(n).mnemonic; }); })
        .def_property_readonly(
            "_saved_with", [](py::handle self)
            { return Locked(self, [](auto& n) { return n.GetSaveRecallType(); }); })
        .def_property_readonly("_availability",
                               [](py::handle self) {
                                   return static_cast<int>(
                                       Locked(self, [](auto& n) { return n.GetAvailability(); }));
                               });
}
