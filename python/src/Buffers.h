// SPDX-License-Identifier: MIT
#pragma once

#include "PythonCalls.h"

#include <span>

/** Numbers that were computed for Python, which takes them without a copy. */
template <typename T>
struct t_Numbers
{
    std::vector<T> numbers;
    py::ssize_t columns = 1; ///< numbers of a row

    py::buffer_info Info()
    {
        const auto size = static_cast<py::ssize_t>(sizeof(T));
        const auto rows = static_cast<py::ssize_t>(numbers.size()) / columns;
        if (columns == 1)
        {
            return {numbers.data(), size, py::format_descriptor<T>::format(), 1, {rows}, {size}};
        }
        return {numbers.data(),        size, py::format_descriptor<T>::format(), 2, {rows, columns},
                {size * columns, size}};
    }
};

/** An array over an object of the buffer protocol: of numpy where it is installed, else a
    memoryview. It keeps the object. */
inline py::object ArrayOf(const py::object& buffer)
{
    return py::handle(Registered().view)(buffer);
}

/** The contiguous bytes of a Python object, good as long as this. */
class CBytes
{
public:
    explicit CBytes(py::handle object)
    {
        if (PyObject_GetBuffer(object.ptr(), &m_view, PyBUF_C_CONTIGUOUS | PyBUF_FORMAT) != 0)
        {
            throw py::error_already_set();
        }
    }
    ~CBytes() { PyBuffer_Release(&m_view); }
    CBytes(const CBytes&) = delete;
    CBytes& operator=(const CBytes&) = delete;

    std::span<const std::byte> Get() const
    {
        return {static_cast<const std::byte*>(m_view.buf), static_cast<std::size_t>(m_view.len)};
    }
    /** Size of an element, and its format as the module struct writes it. */
    ///@{
    std::size_t ItemSize() const { return static_cast<std::size_t>(m_view.itemsize); }
    std::string_view Format() const { return m_view.format != nullptr ? m_view.format : "B"; }
    ///@}

private:
    Py_buffer m_view;
};
