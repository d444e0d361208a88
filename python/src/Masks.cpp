// SPDX-License-Identifier: MIT
#include "Shared.h"

#include "IKWFunctionMaskChannelSetup.h"
#include "Masks/MaskFile.h"
#include "Masks/MaskTree.h"

#include <pybind11/operators.h>
#include <pybind11/stl.h>

namespace
{
using t_Point = std::tuple<double, double, bool>;

std::vector<t_Point> PointsOf(const KW_MaskLine& line)
{
    std::vector<t_Point> points;
    for (const KW_MaskPoint& point : line)
    {
        points.emplace_back(point.x, point.y, point.isEnd);
    }
    return points;
}

/** A line of points: x, y and, where a gap follows, true. Refused as KW_CheckMaskLine says. */
KW_MaskLine LineOf(const py::iterable& points)
{
    KW_MaskLine line;
    for (const py::handle item : points)
    {
        const auto point = py::reinterpret_borrow<py::object>(item).cast<py::sequence>();
        if (point.size() < 2 || point.size() > 3)
        {
            throw py::type_error("a point is x, y and whether a gap follows");
        }
        line.push_back({point[0].cast<double>(), point[1].cast<double>(),
                        point.size() == 3 && point[2].cast<bool>()});
    }
    CheckCode(KW_CheckMaskLine(line));
    return line;
}

KW_Mask MakeMask(const py::iterable& upper, const py::iterable& lower, const KW_MaskFrame& frame)
{
    KW_Mask mask{frame, LineOf(upper), LineOf(lower)};
    CheckCode(KW_CheckMask(mask));
    return mask;
}

KW_Mask MaskAround(const CKWRecord& record, UINT32 trace, const KW_MaskFrame& frame, double widthX,
                   double widthY)
{
    KW_Mask mask;
    CheckCode(Released([&] { return KW_MakeMask(record, trace, frame, widthX, widthY, mask); }));
    return mask;
}

KW_Mask Placed(KW_Mask mask, double positionY, double stretchY)
{
    CheckCode(KW_PlaceMask(mask, positionY, stretchY));
    return mask;
}

KW_Mask MovedTo(KW_Mask mask, const KW_MaskFrame& frame)
{
    CheckCode(KW_MoveMaskToFrame(mask, frame));
    return mask;
}

KW_Mask ReadMask(const QString& file)
{
    KW_Mask mask;
    std::vector<KW_LabelReport> reports;
    const KW_ACCEPTANCE code = Released([&] { return KW_ReadMaskFile(file, mask, reports); });
    CheckFile(code, file, reports);
    return mask;
}

void WriteMask(const KW_Mask& mask, const QString& file)
{
    std::vector<KW_LabelReport> reports;
    const KW_ACCEPTANCE code = Released([&] { return KW_WriteMaskFile(file, mask, reports); });
    CheckFile(code, file, reports);
}

KW_Mask FromTree(py::handle group)
{
    const auto setup = HandleOf<IKWFunctionMaskChannelSetup>(group, "MaskChannelSetup");
    return Released([&] { return KW_GetMask(*setup.Get()); });
}

void IntoTree(const KW_Mask& mask, py::handle group)
{
    const auto setup = HandleOf<IKWFunctionMaskChannelSetup>(group, "MaskChannelSetup");
    Ask(group, py::none(), [&] { return KW_PutMask(*setup.Get(), mask); });
}

/** In the picture of `frame`, or without one in that of the mask. */
KW_ZEL_LIMIT TestTrace(const KW_Mask& mask, const CKWRecord& record, UINT32 trace,
                       const std::optional<KW_MaskFrame>& frame, UINT32 first)
{
    KW_ZEL_LIMIT line = eKW_ZEL_LIMIT_INSIDE;
    CheckCode(Released(
        [&] { return KW_TestMask(record, trace, mask, frame.value_or(mask.frame), first, line); }));
    return line;
}

std::vector<KW_MaskViolation> ViolationsOf(const KW_Mask& mask, const CKWRecord& record,
                                           UINT32 trace, const std::optional<KW_MaskFrame>& frame)
{
    std::vector<KW_MaskViolation> found;
    UINT32 count = 0;
    const auto find = [&] {
        return KW_FindMaskViolations(record, trace, mask, frame.value_or(mask.frame), found, count);
    };
    CheckCode(Released(find));
    if (count > 0)
    {
        found.resize(count);
        CheckCode(Released(find));
        found.resize(std::min<std::size_t>(count, found.size()));
    }
    return found;
}

KW_MaskFrame MakeFrame(KW_UNIT unit, double left, double timeScale, double middle,
                       double levelScale)
{
    const KW_MaskFrame frame{unit, left, timeScale, middle, levelScale};
    if (!KW_IsMaskFrame(frame))
    {
        ThrowRefusal(eKW_ACC_NOT_A_NUMBER);
    }
    return frame;
}

void AddFrame(py::module_& module)
{
    py::class_<KW_MaskFrame>(module, "MaskFrame", "What a division is.")
        .def(py::init(&MakeFrame), py::arg("unit") = static_cast<int>(eKW_UNIT_NOT_DEFINED),
             py::arg("left") = 0.0, py::arg("time_scale") = 1.0, py::arg("middle") = 0.0,
             py::arg("level_scale") = 1.0)
        .def_readonly("unit", &KW_MaskFrame::unit)
        .def_readonly("left", &KW_MaskFrame::left)
        .def_readonly("time_scale", &KW_MaskFrame::timeScale)
        .def_readonly("middle", &KW_MaskFrame::middle)
        .def_readonly("level_scale", &KW_MaskFrame::levelScale)
        .def(py::self == py::self);
    py::class_<KW_MaskViolation>(module, "MaskViolation", "Points that are beyond a line.")
        .def_readonly("line", &KW_MaskViolation::line)
        .def_readonly("first", &KW_MaskViolation::first)
        .def_readonly("last", &KW_MaskViolation::last)
        .def_readonly("worst", &KW_MaskViolation::worst)
        .def_readonly("excess", &KW_MaskViolation::excess);
}
} // namespace

void AddMasks(py::module_& module)
{
    AddFrame(module);
    py::class_<KW_Mask>(module, "Mask", "A line above and a line below a trace.")
        .def(py::init(&MakeMask), py::arg("upper") = py::tuple(), py::arg("lower") = py::tuple(),
             py::arg("frame") = KW_MaskFrame())
        .def_readonly("frame", &KW_Mask::frame)
        .def_property_readonly("upper", [](const KW_Mask& mask) { return PointsOf(mask.upper); })
        .def_property_readonly("lower", [](const KW_Mask& mask) { return PointsOf(mask.lower); })
        .def_property_readonly("is_empty", &KW_Mask::IsEmpty)
        .def(py::self == py::self)
        .def(
            "limits",
            [](const KW_Mask& mask, double x)
            {
                const KW_MinMax limits = KW_GetMaskLimits(mask, x);
                return std::pair(limits.minimum, limits.maximum);
            },
            py::arg("x"))
        .def("placed", &Placed, py::arg("position") = 0.0, py::arg("stretch") = 1.0)
        .def("moved_to", &MovedTo, py::arg("frame"))
        .def("test", &TestTrace, py::arg("record"), py::arg("trace") = 0,
             py::arg("frame") = py::none(), py::arg("first") = 0)
        .def("violations", &ViolationsOf, py::arg("record"), py::arg("trace") = 0,
             py::arg("frame") = py::none())
        .def("write", &WriteMask, py::arg("file"))
        .def("put", &IntoTree, py::arg("setup"));
    module
        .def("make_mask", &MaskAround, py::arg("record"), py::arg("trace"), py::arg("frame"),
             py::arg("width_x"), py::arg("width_y"))
        .def("read_mask", &ReadMask, py::arg("file"))
        .def("get_mask", &FromTree, py::arg("setup"));
}
