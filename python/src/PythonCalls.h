// SPDX-License-Identifier: MIT
#pragma once

#include "EnumNameInfo.h"
#include "KWAcceptance.h"

#include <pybind11/pybind11.h>

#include <QString>
#include <QStringList>
#include <memory>
#include <string>
#include <vector>

namespace py = pybind11;

/**
 * What the sources of the module share: Python's lock, what the library reports, answers as
 * exceptions and warnings, texts.
 *
 * The order of locks is: the tree's, then Python's. Who holds Python's lock gives it back before
 * any call that may wait for the tree's, as the thread that has the tree may be a Python thread
 * inside a bracket. Numbers, enumerations, limits and counters are read without a lock, so these
 * calls keep Python's.
 */

/** Gives Python's lock back while it lives. */
class CPythonReleased
{
public:
    CPythonReleased() : m_state(PyEval_SaveThread()) {}
    ~CPythonReleased() { TakeBack(m_state); }
    CPythonReleased(const CPythonReleased&) = delete;
    CPythonReleased& operator=(const CPythonReleased&) = delete;

private:
    /** Ends the thread's work where the interpreter has ended meanwhile. */
    static void TakeBack(PyThreadState* state);

    PyThreadState* m_state;
};

/** What the library reports in this thread while it lives; other reports go where they went. */
class CReports
{
public:
    CReports();
    ~CReports();
    CReports(const CReports&) = delete;
    CReports& operator=(const CReports&) = delete;

    const std::vector<QString>& Texts() const { return m_texts; }

    /** Puts the collection into the place of the present error handler. Once. */
    static void Install();

private:
    CReports* m_outer;
    std::vector<QString> m_texts;
};

/** Runs `work` without Python's lock. */
template <typename Work>
auto Released(Work&& work)
{
    const CPythonReleased released;
    return work();
}

/** Lets go of a part of a tree, which may wait for the tree's lock; with or without Python's. */
template <typename T>
void LetGo(std::shared_ptr<T>& part)
{
    if (!part)
    {
        return;
    }
    // Whoever looks at the part meanwhile finds it gone, not going.
    std::shared_ptr<T> last = std::move(part);
    if (PyGILState_Check() == 0)
    {
        last.reset();
        return;
    }
    Released([&last] { last.reset(); });
}

/** A part of a tree that a call holds: whoever holds the last one waits for the tree's lock. */
template <typename T>
class CHeld
{
public:
    CHeld(std::shared_ptr<T> part) : m_part(std::move(part)) {}
    CHeld(const CHeld&) = default;
    CHeld(CHeld&&) = default;
    CHeld& operator=(const CHeld&) = delete;
    ~CHeld() { LetGo(m_part); }

    explicit operator bool() const { return m_part != nullptr; }
    T* operator->() const { return m_part.get(); }
    const std::shared_ptr<T>& Get() const { return m_part; }

private:
    std::shared_ptr<T> m_part;
};

/** Turns an answer into nothing, a warning or an exception.
    @param node  what was asked, a Python object
    @param value what was asked for, or null
    @return false: a Python exception is set */
bool Answer(KW_ACCEPTANCE code, const CReports& reports, PyObject* node, PyObject* value = nullptr);

/** The same with texts of another source. */
bool Answer(KW_ACCEPTANCE code, const std::vector<QString>& texts, PyObject* node,
            PyObject* value = nullptr);

/** Throws a refusal that the library need not be asked for. */
[[noreturn]] void ThrowRefusal(KW_ACCEPTANCE code, PyObject* node = Py_None,
                               PyObject* value = nullptr);

/** Runs a call that answers a code, without Python's lock. Throws what Answer sets. */
template <typename Work>
void Ask(py::handle node, py::handle value, Work&& work)
{
    CReports reports;
    const KW_ACCEPTANCE code = Released(work);
    if (!Answer(code, reports, node.ptr(), value.ptr()))
    {
        throw py::error_already_set();
    }
}

/** Texts in both directions; lone surrogates pass. */
///@{
PyObject* NewText(const QString& text);
QString TextOf(PyObject* text);
///@}

namespace pybind11::detail
{
/** QString as str. */
template <>
struct type_caster<QString>
{
    PYBIND11_TYPE_CASTER(QString, const_name("str"));

    bool load(handle source, bool)
    {
        if (!PyUnicode_Check(source.ptr()))
        {
            return false;
        }
        value = TextOf(source.ptr());
        return true;
    }
    static handle cast(const QString& text, return_value_policy, handle) { return NewText(text); }
};

/** QStringList as a list of str. */
template <>
struct type_caster<QStringList>
{
    PYBIND11_TYPE_CASTER(QStringList, const_name("list[str]"));

    bool load(handle, bool) { return false; }
    static handle cast(const QStringList& texts, return_value_policy, handle)
    {
        list result;
        for (const QString& text : texts)
        {
            result.append(text);
        }
        return result.release();
    }
};
} // namespace pybind11::detail

/** Python objects that the package hands to the module when it is imported; they live as long as
    the process. */
struct t_Registered
{
    PyObject* property = nullptr;        ///< classes of nodes
    PyObject* action = nullptr;          ///< likewise
    PyObject* group = nullptr;           ///< likewise
    PyObject* array = nullptr;           ///< likewise
    PyObject* map = nullptr;             ///< likewise
    PyObject* root = nullptr;            ///< likewise
    PyObject* refusal = nullptr;         ///< makes an exception
    PyObject* warn = nullptr;            ///< warns of code 1 and of reports
    PyObject* makeEnumeration = nullptr; ///< makes a class of a table
    PyObject* view = nullptr;            ///< makes an array of what has the buffer protocol
};
t_Registered& Registered();

/** Parts of the module. */
///@{
void AddEnumerations(py::module_& module);
void AddProperty(py::module_& module);
void AddGroup(py::module_& module);
void AddHelpers(py::module_& module);
void AddLabels(py::module_& module);
void AddStreams(py::module_& module);
void AddAcquisition(py::module_& module);
void AddMasks(py::module_& module);
void AddMathematics(py::module_& module);
void AddMeter(py::module_& module);
///@}
