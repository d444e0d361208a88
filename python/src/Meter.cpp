// SPDX-License-Identifier: MIT
#include "Shared.h"

#include "MeterBase/MeterMeasurementBaseData.h"

namespace
{
/** What the catalogue says of each type of measurement: its name for remote control, input and
    converter path, and its ranges. */
py::dict Catalogue()
{
    py::dict found;
    const CMeterMeasurementBaseData catalogue;
    for (const auto& [type, block] : catalogue.GetMeasurementBlocks())
    {
        py::dict ranges;
        for (const auto& [range, settings] : block->GetRangeTable())
        {
            ranges[py::cast(range)] = py::cast(settings);
        }
        const auto [input, path] = block->GetMeasurementSettings();
        found[py::cast(type)] = py::make_tuple(block->GetName(), input, path, ranges);
    }
    return found;
}

template <typename Work>
auto Reporting(Work&& work)
{
    CReports reports;
    const auto found = work();
    CheckCode(eKW_ACC_OK, reports.Texts());
    return found;
}
} // namespace

void AddMeter(py::module_& module)
{
    py::class_<t_RangeSettings>(module, "MeterRange", "How the path is set up in a range.")
        .def_readonly("range", &t_RangeSettings::range)
        .def_readonly("lower_limit", &t_RangeSettings::lowerLimit)
        .def_readonly("upper_limit", &t_RangeSettings::upperLimit)
        .def_readonly("divider", &t_RangeSettings::divider)
        .def_readonly("gain", &t_RangeSettings::gain)
        .def_readonly("gain_stage", &t_RangeSettings::gainStage)
        .def_readonly("range_factor", &t_RangeSettings::rangeFactor)
        .def_readonly("current", &t_RangeSettings::currentSource);
    module.def("meter_catalogue", &Catalogue)
        .def(
            "meter_range_value",
            [](KW_ZEL_METER_RANGE range) {
                return Reporting(
                    [&] { return CMeterMeasurementBaseData::GetRangeAsDoubleValue(range); });
            },
            py::arg("range"))
        .def(
            "meter_range_of",
            [](double value) {
                return Reporting([&]
                                 { return CMeterMeasurementBaseData::GetRangeAsEnumValue(value); });
            },
            py::arg("value"));
}
