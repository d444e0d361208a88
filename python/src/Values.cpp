// SPDX-License-Identifier: MIT
#include "Nodes.h"

#include <cmath>
#include <limits>

namespace
{
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
                ThrowRefusal(eKW_ACC_ABOVE_MAXIMUM, self, value);
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
                ThrowRefusal(std::isnan(number) ? eKW_ACC_NOT_A_NUMBER : eKW_ACC_BAD_TEXT, self,
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
            ThrowRefusal(eKW_ACC_BELOW_MINIMUM, self, value);
        }
        if (overflow > 0 || std::cmp_greater(number, std::numeric_limits<T>::max()))
        {
            ThrowRefusal(eKW_ACC_ABOVE_MAXIMUM, self, value);
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
        // A member of another enumeration is a number too, but never what was meant.
        if (PyLong_Check(value) && Py_TYPE(value) != own && !PyLong_CheckExact(value) &&
            !PyBool_Check(value))
        {
            ThrowRefusal(eKW_ACC_WRONG_KIND, self, value);
        }
        const auto whole = py::reinterpret_steal<py::object>(PyNumber_Index(value));
        if (!whole)
        {
            PyErr_Clear();
            RefuseType(property, value);
        }
        int overflow = 0;
        const long long wide = PyLong_AsLongLongAndOverflow(whole.ptr(), &overflow);
        if (overflow != 0 || wide < INT32_MIN || wide > INT32_MAX)
        {
            ThrowRefusal(eKW_ACC_UNKNOWN_VALUE, self, value);
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
} // namespace

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
