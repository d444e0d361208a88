// SPDX-License-Identifier: MIT
#include "Shared.h"

#include "IKWFunctionLabelListSettings.h"
#include "LabelList/FrameLog.h"
#include "LabelList/LabelListDecoder.h"
#include "LabelList/LabelListTree.h"

#include <pybind11/stl.h>

namespace
{
/** Texts of label lists are UTF-8; what a damaged file brought is shown all the same. */
py::object Text(std::string_view text)
{
    return py::reinterpret_steal<py::object>(
        PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "replace"));
}

py::list Texts(const std::vector<std::string>& texts)
{
    py::list result;
    for (const std::string& text : texts)
    {
        result.append(Text(text));
    }
    return result;
}

KW_LabelList Read(const QString& file, bool skipBadMessages)
{
    KW_LabelList list;
    std::vector<KW_LabelReport> reports;
    const KW_ACCEPTANCE code =
        Released([&] { return KW_ReadLabelFile(file, list, reports, {skipBadMessages}); });
    CheckFile(code, file, reports);
    return list;
}

void Write(const QString& file, const KW_LabelList& list)
{
    std::vector<KW_LabelReport> reports;
    const KW_ACCEPTANCE code = Released([&] { return KW_WriteLabelFile(file, list, reports); });
    CheckFile(code, file, reports);
}

/** Calls `work` with the label list of a group of the tree. */
template <typename Work>
void WithSettings(py::handle group, Work&& work)
{
    const auto settings = HandleOf<IKWFunctionLabelListSettings>(group, "LabelListSettings");
    std::vector<KW_LabelReport> reports;
    const KW_ACCEPTANCE code = Released([&] { return work(*settings.operator->(), reports); });
    CheckFile(code, QString(), reports, group);
}

KW_LabelList FromTree(py::handle group)
{
    KW_LabelList list;
    WithSettings(group, [&](auto& settings, auto& reports)
                 { return KW_GetLabels(settings, list, reports); });
    return list;
}

void IntoTree(py::handle group, const KW_LabelList& list)
{
    WithSettings(group, [&](auto& settings, auto& reports)
                 { return KW_PutLabels(settings, list, reports); });
}

/** A signal, apart from its list. */
struct t_ListedSignal
{
    CLabelListSignal signal;
    KW_LabelSignalDetails details;
};

py::list SignalsOf(const KW_LabelEntry& entry)
{
    py::list result;
    for (const KW_LabelSignal& signal : KW_GetSignals(entry))
    {
        result.append(t_ListedSignal{*signal.signal, *signal.details});
    }
    return result;
}

py::dict LabelsOf(const t_ListedSignal& signal)
{
    py::dict labels;
    for (const auto& [raw, text] : signal.signal.getSignalEnumValues())
    {
        labels[py::int_(raw)] = Text({text.constData(), static_cast<std::size_t>(text.size())});
    }
    for (const auto& [raw, text] : signal.details.furtherLabels)
    {
        labels[py::int_(raw)] = Text(text);
    }
    return labels;
}

t_ListedSignal MakeSignal(const std::string& name, UINT32 startBit, UINT32 bitLength,
                          KW_ENDIANNESS endianness, KW_SIGNAL_TRANSLATION_VALUE_TYPE valueType,
                          double factor, double offset, double minimum, double maximum,
                          const std::string& unit, const std::map<INT64, std::string>& labels,
                          const std::string& multiplexor,
                          const std::vector<std::pair<UINT64, UINT64>>& selectedBy,
                          const std::vector<std::string>& receivers, const std::string& comment)
{
    t_ListedSignal made{
        {name, startBit, bitLength, endianness, valueType, factor, offset, minimum, maximum, unit},
        {}};
    for (const auto& [raw, text] : labels)
    {
        if (raw >= 0 && raw <= UINT32_MAX)
        {
            made.signal.addSignalEnumValue(
                {static_cast<UINT32>(raw), QByteArray::fromStdString(text)});
        }
        else
        {
            made.details.furtherLabels[raw] = text;
        }
    }
    made.details.multiplexor = multiplexor;
    for (const auto& [first, last] : selectedBy)
    {
        made.details.selectedBy.push_back({first, last});
    }
    made.details.receivers = receivers;
    made.details.comment = comment;
    return made;
}

KW_LabelEntry MakeMessage(const std::string& name, UINT32 identifier, UINT32 identifierLength,
                          UINT32 length, const std::vector<t_ListedSignal>& listed, bool isFd,
                          std::optional<double> cycleTime, const std::vector<std::string>& senders,
                          const std::string& comment)
{
    KW_LabelEntry made;
    made.message.setParameters(name, std::to_string(identifierLength), identifier, length);
    made.details.isFd = isFd;
    made.details.cycleTime = cycleTime;
    made.details.senders = senders;
    made.details.comment = comment;
    const auto selects = [&listed](const std::string& signal)
    {
        return std::any_of(listed.begin(), listed.end(),
                           [&signal](const t_ListedSignal& other)
                           { return other.details.multiplexor == signal; });
    };
    for (t_ListedSignal one : listed)
    {
        one.details.isMultiplexor = selects(one.signal.getName());
        KW_AddSignal(made, one.signal, one.details);
    }
    return made;
}

std::vector<std::pair<UINT64, UINT64>> SelectionOf(const t_ListedSignal& signal)
{
    std::vector<std::pair<UINT64, UINT64>> ranges;
    for (const KW_RawRange& range : signal.details.selectedBy)
    {
        ranges.emplace_back(range.first, range.last);
    }
    return ranges;
}

void AddSignals(py::module_& module)
{
    py::class_<t_ListedSignal> signal(module, "LabelSignal", "A signal of a message.");
    signal.def(py::init(&MakeSignal), py::arg("name"), py::arg("start_bit"), py::arg("bit_length"),
               py::kw_only(), py::arg("endianness") = "LITTLE_ENDIAN", py::arg("value_type") = 0,
               py::arg("factor") = 1.0, py::arg("offset") = 0.0, py::arg("minimum") = 0.0,
               py::arg("maximum") = 0.0, py::arg("unit") = "", py::arg("labels") = py::dict(),
               py::arg("multiplexor") = "", py::arg("selected_by") = py::list(),
               py::arg("receivers") = py::list(), py::arg("comment") = "");
    const auto text = [](const std::string& (CLabelListSignal::*get)() const)
    { return [get](const t_ListedSignal& s) { return Text((s.signal.*get)()); }; };
    const auto value = [](auto get)
    { return [get](const t_ListedSignal& s) { return (s.signal.*get)(); }; };
    signal.def_property_readonly("name", text(&CLabelListSignal::getName))
        .def_property_readonly("unit", text(&CLabelListSignal::getUnit))
        .def_property_readonly("start_bit", value(&CLabelListSignal::getStartBit))
        .def_property_readonly("bit_length", value(&CLabelListSignal::getBitLength))
        .def_property_readonly("endianness", value(&CLabelListSignal::getEndianness))
        .def_property_readonly("value_type", value(&CLabelListSignal::getValueType))
        .def_property_readonly("factor", value(&CLabelListSignal::getFactor))
        .def_property_readonly("offset", value(&CLabelListSignal::getOffset))
        .def_property_readonly("minimum", value(&CLabelListSignal::getMinimum))
        .def_property_readonly("maximum", value(&CLabelListSignal::getMaximum))
        .def_property_readonly("labels", &LabelsOf)
        .def_property_readonly("comment",
                               [](const t_ListedSignal& s) { return Text(s.details.comment); })
        .def_property_readonly("multiplexor",
                               [](const t_ListedSignal& s) { return Text(s.details.multiplexor); })
        .def_property_readonly("selected_by", &SelectionOf)
        .def_property_readonly("receivers",
                               [](const t_ListedSignal& s) { return Texts(s.details.receivers); });
}

void AddLists(py::module_& module)
{
    AddSignals(module);
    py::class_<KW_LabelEntry>(module, "LabelMessage", "A message of a bus.")
        .def(py::init(&MakeMessage), py::arg("name"), py::arg("identifier"),
             py::arg("identifier_length") = 11, py::arg("length") = 8,
             py::arg("signals") = py::list(), py::kw_only(), py::arg("is_fd") = false,
             py::arg("cycle_time") = py::none(), py::arg("senders") = py::list(),
             py::arg("comment") = "")
        .def_property_readonly("name",
                               [](const KW_LabelEntry& e) { return Text(e.message.getName()); })
        .def_property_readonly("identifier",
                               [](const KW_LabelEntry& e) { return e.message.getIdentifier(); })
        .def_property_readonly("identifier_format", [](const KW_LabelEntry& e)
                               { return Text(e.message.getIdentifierFormat()); })
        .def_property_readonly("length",
                               [](const KW_LabelEntry& e) { return e.message.getLength(); })
        .def_property_readonly("is_fd", [](const KW_LabelEntry& e) { return e.details.isFd; })
        .def_property_readonly("comment",
                               [](const KW_LabelEntry& e) { return Text(e.details.comment); })
        .def_property_readonly("senders",
                               [](const KW_LabelEntry& e) { return Texts(e.details.senders); })
        .def_property_readonly("cycle_time",
                               [](const KW_LabelEntry& e) { return e.details.cycleTime; })
        .def_property_readonly("signals", &SignalsOf);
    py::class_<KW_LabelList>(module, "LabelList", "The messages and signals of a bus.")
        .def(py::init(
                 [](const std::vector<KW_LabelEntry>& messages, const std::string& name,
                    KW_ZEL_SERIALBUS_PROTOCOL protocol, const std::string& comment)
                 {
                     KW_LabelList list;
                     list.protocol = protocol;
                     list.name = name;
                     list.comment = comment;
                     list.messages = messages;
                     return list;
                 }),
             py::arg("messages") = py::list(), py::arg("name") = "",
             py::arg("protocol") = static_cast<int>(eKW_ZEL_SERIALBUS_PROTOCOL_CAN),
             py::arg("comment") = "")
        .def_property_readonly("name", [](const KW_LabelList& list) { return Text(list.name); })
        .def_property_readonly("comment",
                               [](const KW_LabelList& list) { return Text(list.comment); })
        .def_property_readonly("protocol", [](const KW_LabelList& list) { return list.protocol; })
        .def_property_readonly("messages", [](const KW_LabelList& list) { return list.messages; })
        .def(
            "write", [](const KW_LabelList& list, const QString& file) { Write(file, list); },
            py::arg("file"))
        .def(
            "put", [](const KW_LabelList& list, py::handle group) { IntoTree(group, list); },
            py::arg("settings"));
    module.def("read_labels", &Read, py::arg("file"), py::arg("skip_bad_messages") = false)
        .def("get_labels", &FromTree, py::arg("settings"));
}

/** Signals of a frame as tuples: name, value, unit, label or None, raw value; with the name of the
    message before them. None where the list has no such message. */
py::object Decode(const CLabelListDecoder& decoder, UINT32 identifier, py::handle payload,
                  UINT32 identifierLength)
{
    const auto* const message = decoder.Find(identifierLength, identifier);
    if (message == nullptr)
    {
        return py::none();
    }
    const CBytes bytes(payload);
    std::vector<CLabelListDecoder::t_Value> values(CLabelListDecoder::SignalsOf(*message).size());
    const auto given = bytes.Get();
    values.resize(CLabelListDecoder::Decode(
        *message, {reinterpret_cast<const UINT8*>(given.data()), given.size()}, values));
    py::list signals;
    for (const auto& value : values)
    {
        signals.append(
            py::make_tuple(Text(value.signal->name), value.value, Text(value.signal->unit),
                           value.label != nullptr ? Text(*value.label) : py::none(), value.raw));
    }
    return py::make_tuple(Text(CLabelListDecoder::NameOf(*message)), signals);
}

/** None for a line that holds no frame, False for one that is not understood, else a tuple. */
py::object ReadLine(CFrameLogReader& reader, std::string_view line)
{
    KW_LoggedFrame frame;
    switch (reader.Read(line, frame))
    {
    case CFrameLogReader::e_Line::Nothing:
        return py::none();
    case CFrameLogReader::e_Line::NotUnderstood:
        return py::bool_(false);
    default:
        break;
    }
    const auto payload = frame.Payload();
    return py::make_tuple(frame.hasTime ? py::object(py::int_(frame.nanoseconds)) : py::none(),
                          Text(frame.bus), frame.identifier, frame.isExtended, frame.isFd,
                          frame.isRemote, frame.isError,
                          py::bytes(reinterpret_cast<const char*>(payload.data()), payload.size()));
}
} // namespace

void AddLabels(py::module_& module)
{
    AddLists(module);
    py::class_<CLabelListDecoder>(module, "Decoder", "A label list, compiled.")
        .def(py::init<const KW_LabelList&>(), py::arg("labels"))
        .def("decode", &Decode, py::arg("identifier"), py::arg("payload"),
             py::arg("identifier_length") = 11);
    py::class_<CFrameLogReader>(module, "LogReader", "Reads one log of a bus, line by line.")
        .def(py::init<>())
        .def("read", &ReadLine, py::arg("line"));
}
