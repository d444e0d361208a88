// SPDX-License-Identifier: MIT
#include "Shared.h"

void CheckCode(KW_ACCEPTANCE code, const std::vector<QString>& texts, PyObject* value)
{
    if (!Answer(code, texts, Py_None, value))
    {
        throw py::error_already_set();
    }
}

void CheckFile(KW_ACCEPTANCE code, const QString& file, const std::vector<KW_LabelReport>& reports,
               py::handle node)
{
    std::vector<QString> texts;
    for (const KW_LabelReport& report : reports)
    {
        texts.push_back(file.isEmpty() ? report.text : KW_FormatLabelReport(file, report));
    }
    const py::object asked = file.isEmpty() ? py::none() : py::cast(file);
    if (!Answer(code, texts, node.ptr(), asked.ptr()))
    {
        throw py::error_already_set();
    }
}

void CheckTrace(const CKWRecord& record, UINT32 trace)
{
    if (trace >= record.GetTraceCount())
    {
        throw py::index_error("the record has no trace of this place");
    }
}

void CheckPoints(const CBytes& bytes, KW_SAMPLE_FORMAT format)
{
    const bool isKnown = format >= 0 && format < eKW_SAMPLES_COUNT;
    const std::size_t point = isKnown ? KW_GetPointSize(format) : 0;
    const std::size_t item = format == eKW_SAMPLES_MINMAX ? 2 : point;
    if (bytes.ItemSize() != item || (bytes.Format() == "f") != (format == eKW_SAMPLES_FLOAT) ||
        bytes.Get().size() % std::max(point, std::size_t(1)) != 0)
    {
        throw py::type_error("samples of another type than the trace's format");
    }
}
