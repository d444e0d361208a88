// SPDX-License-Identifier: MIT
#include "Acquisition.h"

#include "Streams/Frames.h"
#include "Streams/RecordFile.h"

#include <pybind11/stl.h>

#include <cstring>

namespace
{
/** The points of a trace, which keep their record. */
struct t_Samples
{
    CKWRecord record;
    KW_SAMPLE_FORMAT format;
    std::span<const std::byte> bytes;

    py::buffer_info Info() const
    {
        const bool isPair = format == eKW_SAMPLES_MINMAX;
        const auto point = static_cast<py::ssize_t>(KW_GetPointSize(format));
        const py::ssize_t size = isPair ? point / 2 : point;
        // An empty span has no address, which a buffer must have.
        static std::byte none{};
        std::byte* const data = bytes.empty() ? &none : const_cast<std::byte*>(bytes.data());
        const auto points = static_cast<py::ssize_t>(bytes.size()) / point;
        if (isPair)
        {
            return {data, size, Code(), 2, {points, py::ssize_t(2)}, {point, size}, true};
        }
        return {data, size, Code(), 1, {points}, {size}, true};
    }

private:
    /** Of a point, as the module struct writes it; of a frame with the names of its fields. */
    const char* Code() const
    {
        switch (format)
        {
        case eKW_SAMPLES_FLOAT:
            return "f";
        case eKW_SAMPLES_LINES:
            return "B";
        case eKW_SAMPLES_FRAMES:
            return "T{d:time:d:duration:I:identifier:I:flags:i:protocol:B:identifier_length:B:bus:"
                   "B:length:B:reserved:(64)B:bytes:}";
        default:
            return "h";
        }
    }
};

py::object SamplesOf(const CKWRecord& record, UINT32 trace)
{
    CheckTrace(record, trace);
    return ArrayOf(
        py::cast(t_Samples{record, record.GetTrace(trace).format, record.GetSamples(trace)}));
}

/** Who draws asks for as many columns as a screen has; more would only ask for memory. */
void CheckColumns(std::size_t columns)
{
    if (columns > (1U << 24U))
    {
        throw py::value_error("at most 2^24 columns");
    }
}

py::object ColumnsOf(const CKWRecord& record, UINT32 trace, std::size_t columns, double first,
                     std::optional<double> count, KW_ZEL_INTERPOLATION_MODE interpolation)
{
    CheckTrace(record, trace);
    CheckColumns(columns);
    std::vector<KW_MinMax> found(columns);
    const double points = count.value_or(record.GetTrace(trace).count);
    const KW_ACCEPTANCE code =
        Released([&] { return record.GetColumns(trace, first, points, found, interpolation); });
    CheckCode(code);
    t_Numbers<double> numbers{std::vector<double>(2 * columns), 2};
    static_assert(sizeof(KW_MinMax) == 2 * sizeof(double));
    std::memcpy(numbers.numbers.data(), found.data(), columns * sizeof(KW_MinMax));
    return ArrayOf(py::cast(std::move(numbers)));
}

py::object LinesOf(const CKWRecord& record, UINT32 trace, std::size_t columns, double first,
                   std::optional<double> count)
{
    CheckTrace(record, trace);
    CheckColumns(columns);
    std::vector<KW_LineStates> found(columns);
    const double points = count.value_or(record.GetTrace(trace).count);
    CheckCode(Released([&] { return record.GetLines(trace, first, points, found); }));
    t_Numbers<UINT8> numbers{std::vector<UINT8>(2 * columns), 2};
    static_assert(sizeof(KW_LineStates) == 2);
    std::memcpy(numbers.numbers.data(), found.data(), columns * sizeof(KW_LineStates));
    return ArrayOf(py::cast(std::move(numbers)));
}

/** Bytes of the traces, which must have the format that is said of them. */
std::vector<std::unique_ptr<CBytes>> BytesOf(const std::vector<KW_TraceInfo>& traces,
                                             const py::list& samples)
{
    std::vector<std::unique_ptr<CBytes>> bytes;
    if (traces.size() != samples.size())
    {
        ThrowRefusal(eKW_ACC_BAD_INDEX);
    }
    for (std::size_t i = 0; i < traces.size(); ++i)
    {
        bytes.push_back(std::make_unique<CBytes>(samples[i]));
        CheckPoints(*bytes.back(), traces[i].format);
    }
    return bytes;
}

CKWRecord Make(const KW_RecordInfo& info, std::vector<KW_TraceInfo> traces, const py::list& samples)
{
    const auto bytes = BytesOf(traces, samples);
    std::vector<std::span<const std::byte>> spans;
    for (std::size_t i = 0; i < traces.size(); ++i)
    {
        spans.push_back(bytes[i]->Get());
        traces[i].count = static_cast<UINT32>(spans[i].size() / KW_GetPointSize(traces[i].format));
    }
    KW_ACCEPTANCE code = eKW_ACC_OK;
    CKWRecord record = Released([&] { return KW_MakeRecord(info, traces, spans, &code); });
    CheckCode(code);
    return record;
}

void CheckRecordFile(KW_ACCEPTANCE code, const QString& file, const KW_RecordReport& report)
{
    std::vector<QString> texts;
    if (!report.text.isEmpty())
    {
        texts.push_back(file.isEmpty() ? report.text : KW_FormatRecordReport(file, report));
    }
    const py::object asked = file.isEmpty() ? py::none() : py::cast(file);
    CheckCode(code, texts, asked.ptr());
}

CKWRecord ReadFile(const QString& file)
{
    CKWRecord record;
    KW_RecordReport report;
    const auto code = Released([&] { return KW_ReadRecordFile(file, record, report); });
    CheckRecordFile(code, file, report);
    return record;
}

void WriteFile(const CKWRecord& record, const QString& file)
{
    KW_RecordReport report;
    const auto code = Released([&] { return KW_WriteRecordFile(file, record, report); });
    CheckRecordFile(code, file, report);
}

CKWRecord FromBytes(py::handle object)
{
    const CBytes bytes(object);
    const auto given = bytes.Get();
    if (given.size() > INT32_MAX)
    {
        ThrowRefusal(eKW_ACC_FILE_NOT_UNDERSTOOD);
    }
    const auto contents = QByteArray::fromRawData(reinterpret_cast<const char*>(given.data()),
                                                  static_cast<int>(given.size()));
    CKWRecord record;
    KW_RecordReport report;
    const auto code = Released([&] { return KW_ReadRecordBytes(contents, record, report); });
    CheckRecordFile(code, QString(), report);
    return record;
}

py::bytes ToBytes(const CKWRecord& record)
{
    QByteArray bytes;
    KW_RecordReport report;
    const auto code = Released([&] { return KW_WriteRecordBytes(record, bytes, report); });
    CheckRecordFile(code, QString(), report);
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

struct t_Writer
{
    std::unique_ptr<IKWStreamWriter> writer;

    void Configure(const std::vector<std::pair<int, UINT32>>& places, UINT32 depth, UINT64 bytes)
    {
        std::vector<KW_TraceLayout> layouts;
        for (const auto& [format, points] : places)
        {
            layouts.push_back({static_cast<KW_SAMPLE_FORMAT>(format), points});
        }
        CheckCode(writer->Configure(layouts, depth, bytes));
    }

    /** Fills a record and shows it. False: it found no room and was dropped. */
    bool Publish(const KW_RecordInfo& info, std::vector<KW_TraceInfo> traces,
                 const py::list& samples)
    {
        const auto bytes = BytesOf(traces, samples);
        for (UINT32 i = 0; i < traces.size(); ++i)
        {
            const auto from = bytes[i]->Get();
            const auto to = writer->Reserve(i);
            if (to.empty() && !from.empty())
            {
                writer->Discard();
                return false;
            }
            if (from.size() > to.size())
            {
                writer->Discard();
                ThrowRefusal(eKW_ACC_ABOVE_MAXIMUM);
            }
            std::memcpy(to.data(), from.data(), from.size());
            traces[i].count = static_cast<UINT32>(from.size() / KW_GetPointSize(traces[i].format));
            writer->Advance(i, traces[i].count);
        }
        const KW_ACCEPTANCE code = writer->Publish(info, traces);
        if (!KW_IsAccepted(code))
        {
            writer->Discard();
        }
        CheckCode(code);
        writer->Wake();
        return true;
    }
};

KW_TraceInfo MakeTrace(KW_ZEL_CHANNEL channel, int format, KW_UNIT unit, double interval,
                       double start, double scale, double offset, UINT32 settlingPoints,
                       UINT32 flags)
{
    KW_TraceInfo trace;
    trace.channel = channel;
    trace.format = static_cast<KW_SAMPLE_FORMAT>(format);
    trace.unit = unit;
    trace.interval = interval;
    trace.start = start;
    trace.scale = scale;
    trace.offset = offset;
    trace.settlingPoints = settlingPoints;
    trace.flags = flags;
    return trace;
}

KW_RecordInfo InfoOf(UINT64 number, INT64 triggerTime)
{
    KW_RecordInfo info;
    info.number = number;
    info.triggerTime = triggerTime;
    return info;
}

void AddRecords(py::module_& module)
{
    py::class_<t_Samples>(module, "Samples", "Points of a trace, by the buffer protocol.",
                          py::buffer_protocol())
        .def_buffer([](const t_Samples& samples) { return samples.Info(); });
    py::class_<t_Numbers<UINT8>>(module, "Bytes", "Numbers, by the buffer protocol.",
                                 py::buffer_protocol())
        .def_buffer(&t_Numbers<UINT8>::Info);
    py::class_<KW_TraceInfo>(module, "TraceInfo", "What is said of one trace.")
        .def(py::init(&MakeTrace), py::arg("channel") = 0, py::arg("format") = 0,
             py::arg("unit") = static_cast<int>(eKW_UNIT_NOT_DEFINED), py::arg("interval") = 1.0,
             py::arg("start") = 0.0, py::arg("scale") = 1.0, py::arg("offset") = 0.0,
             py::arg("settling_points") = 0, py::arg("flags") = 0)
        .def_readonly("channel", &KW_TraceInfo::channel)
        .def_readonly("unit", &KW_TraceInfo::unit)
        .def_readonly("flags", &KW_TraceInfo::flags)
        .def_readonly("count", &KW_TraceInfo::count)
        .def_readonly("settling_points", &KW_TraceInfo::settlingPoints)
        .def_readonly("interval", &KW_TraceInfo::interval)
        .def_readonly("start", &KW_TraceInfo::start)
        .def_readonly("scale", &KW_TraceInfo::scale)
        .def_readonly("offset", &KW_TraceInfo::offset)
        .def_property_readonly("format",
                               [](const KW_TraceInfo& t) { return static_cast<int>(t.format); });
    py::class_<CKWRecord>(module, "Record", "What one trigger caught: the traces of all channels.")
        .def("__len__", &CKWRecord::GetTraceCount)
        .def_property_readonly("number", [](const CKWRecord& r) { return r.GetInfo().number; })
        .def_property_readonly("trigger_time",
                               [](const CKWRecord& r) { return r.GetInfo().triggerTime; })
        .def_property_readonly("source", [](const CKWRecord& r) { return r.GetInfo().source; })
        .def_property_readonly("settings_counter",
                               [](const CKWRecord& r) { return r.GetInfo().settingsCounter; })
        .def_property_readonly("mask_result", [](const CKWRecord& r)
                               { return static_cast<int>(r.GetInfo().maskResult); })
        .def(
            "trace",
            [](const CKWRecord& r, UINT32 trace)
            {
                CheckTrace(r, trace);
                return r.GetTrace(trace);
            },
            py::arg("trace"))
        .def("samples", &SamplesOf, py::arg("trace"))
        .def("columns", &ColumnsOf, py::arg("trace"), py::arg("columns"), py::arg("first") = 0.0,
             py::arg("count") = py::none(), py::arg("interpolation") = 0)
        .def("write", &WriteFile, py::arg("file"))
        .def("to_bytes", &ToBytes)
        .def(py::pickle(&ToBytes, [](const py::bytes& bytes) { return FromBytes(bytes); }))
        .def("lines", &LinesOf, py::arg("trace"), py::arg("columns"), py::arg("first") = 0.0,
             py::arg("count") = py::none());
    module.def(
        "make_record",
        [](const std::vector<KW_TraceInfo>& traces, const py::list& samples, UINT64 number,
           INT64 triggerTime) { return Make(InfoOf(number, triggerTime), traces, samples); },
        py::arg("traces"), py::arg("samples"), py::arg("number") = 1, py::arg("trigger_time") = 0);
    module.def("read_record", &ReadFile, py::arg("file"))
        .def("record_from_bytes", &FromBytes, py::arg("data"));
    module.attr("COUNTS_PER_DIVISION") = KW_COUNTS_PER_DIVISION;
}

} // namespace

void AddStreams(py::module_& module)
{
    AddRecords(module);
    py::class_<t_Reader>(module, "Reader", "Fetches records of a stream.")
        .def("has_new", [](t_Reader& r) { return r.Get().HasNew(); })
        .def("latest", [](t_Reader& r) { return OrNone(r.Get().GetLatest()); })
        .def("next", [](t_Reader& r) { return OrNone(r.Get().GetNext()); })
        .def(
            "history", [](t_Reader& r, INT32 trace) { return OrNone(r.Get().GetHistory(trace)); },
            py::arg("back"))
        .def_property_readonly("available", [](t_Reader& r) { return r.Get().GetAvailable(); })
        .def_property_readonly("missed", [](t_Reader& r) { return r.Get().GetMissed(); })
        .def("wait", &t_Reader::Wait, py::arg("timeout") = py::none());
    py::class_<t_Writer>(module, "Writer", "Fills records of a stream.")
        .def("configure", &t_Writer::Configure, py::arg("traces"), py::arg("depth") = 100,
             py::arg("bytes") = static_cast<UINT64>(eKW_STREAM_BYTES))
        .def(
            "publish",
            [](t_Writer& w, const std::vector<KW_TraceInfo>& traces, const py::list& samples,
               INT64 triggerTime) { return w.Publish(InfoOf(0, triggerTime), traces, samples); },
            py::arg("traces"), py::arg("samples"), py::arg("trigger_time") = 0)
        .def("clear", [](t_Writer& w) { w.writer->Clear(); })
        .def_property_readonly("dropped", [](t_Writer& w) { return w.writer->GetDropped(); })
        .def_property_readonly("lost", [](t_Writer& w) { return w.writer->GetLost(); });
    py::class_<IKWStream, std::shared_ptr<IKWStream>>(module, "Stream", "A stream of records.")
        .def(py::init(
                 [](UINT64 bytes)
                 {
                     auto stream = Released([&] { return KW_MakeStream(bytes); });
                     if (!stream)
                     {
                         throw std::bad_alloc();
                     }
                     return stream;
                 }),
             py::arg("bytes") = static_cast<UINT64>(16U << 20U))
        .def("reader",
             [](IKWStream& stream)
             {
                 auto reader = stream.MakeReader();
                 if (!reader)
                 {
                     ThrowRefusal(eKW_ACC_OPERATION_FAILED);
                 }
                 return std::make_unique<t_Reader>(t_Reader{std::move(reader)});
             })
        .def("writer",
             [](IKWStream& stream)
             {
                 auto writer = stream.MakeWriter();
                 if (!writer)
                 {
                     ThrowRefusal(eKW_ACC_OPERATION_FAILED);
                 }
                 return std::make_unique<t_Writer>(t_Writer{std::move(writer)});
             });
}
