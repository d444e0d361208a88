// SPDX-License-Identifier: MIT
#include "PythonCalls.h"

#include "KWErrorReport.h"

#include <unistd.h>

namespace
{
thread_local CReports* t_reports = nullptr;

py::list ListOf(const std::vector<QString>& from)
{
    py::list texts;
    for (const QString& text : from)
    {
        texts.append(text);
    }
    return texts;
}
} // namespace

void CPythonReleased::TakeBack(PyThreadState* state)
{
    // At its end the interpreter ends the threads that ask for its lock, by unwinding their stack:
    // through destructors that may not throw, and objects that need the lock. Waiting is all that
    // is left to do; the process is about to go.
    try
    {
        PyEval_RestoreThread(state);
    }
    catch (...) // of no type that a sanitizer would let be named
    {
        for (;;)
        {
            pause();
        }
    }
}

CReports::CReports() : m_outer(std::exchange(t_reports, this)) {}

CReports::~CReports()
{
    t_reports = m_outer;
}

void CReports::Install()
{
    // Never destroyed: other threads may report while the process ends.
    static auto& before = *new KW_ErrorHandler;
    before = KW_SetErrorHandler(
        [](const KW_ErrorReport& report)
        {
            if (t_reports != nullptr)
            {
                t_reports->m_texts.push_back(report.message);
            }
            else if (before)
            {
                before(report);
            }
            else
            {
                // What a handler reports goes to the default.
                _KW_ProcessErrorString(report.message, report.line, report.file.toUtf8(),
                                       report.function.toUtf8(), report.type);
            }
        });
}

t_Registered& Registered()
{
    static t_Registered registered;
    return registered;
}

bool Answer(KW_ACCEPTANCE code, const CReports& reports, PyObject* node, PyObject* value)
{
    return Answer(code, reports.Texts(), node, value);
}

bool Answer(KW_ACCEPTANCE code, const std::vector<QString>& texts, PyObject* node, PyObject* value)
{
    if (code == eKW_ACC_OK && texts.empty())
    {
        return true;
    }
    PyObject* const asked = value != nullptr ? value : Py_None;
    PyObject* const make = KW_IsAccepted(code) ? Registered().warn : Registered().refusal;
    PyObject* const result =
        PyObject_CallFunction(make, "IOOO", code, node, asked, ListOf(texts).ptr());
    if (result == nullptr)
    {
        return false;
    }
    if (!KW_IsAccepted(code))
    {
        PyErr_SetObject(reinterpret_cast<PyObject*>(Py_TYPE(result)), result);
    }
    Py_DECREF(result);
    return KW_IsAccepted(code);
}

void ThrowRefusal(KW_ACCEPTANCE code, PyObject* node, PyObject* value)
{
    Answer(code, std::vector<QString>(), node, value);
    throw py::error_already_set();
}

PyObject* NewText(const QString& text)
{
    int order = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? -1 : 1;
    return PyUnicode_DecodeUTF16(reinterpret_cast<const char*>(text.utf16()),
                                 static_cast<Py_ssize_t>(text.size()) * 2, "surrogatepass", &order);
}

QString TextOf(PyObject* text)
{
    const auto length = static_cast<int>(PyUnicode_GET_LENGTH(text));
    switch (PyUnicode_KIND(text))
    {
    case PyUnicode_1BYTE_KIND:
        return QString::fromLatin1(reinterpret_cast<const char*>(PyUnicode_1BYTE_DATA(text)),
                                   length);
    case PyUnicode_2BYTE_KIND:
        return QString(reinterpret_cast<const QChar*>(PyUnicode_2BYTE_DATA(text)), length);
    default:
        return QString::fromUcs4(reinterpret_cast<const char32_t*>(PyUnicode_4BYTE_DATA(text)),
                                 length);
    }
}
