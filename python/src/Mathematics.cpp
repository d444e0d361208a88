// SPDX-License-Identifier: MIT
#include "Shared.h"

#include "Mathematics/MathematicsTree.h"

#include <pybind11/stl.h>

namespace
{
/** Why a text is no expression, with its column. */
void CheckExpression(KW_ACCEPTANCE code, const QString& text, const KW_MathError& error)
{
    std::vector<QString> texts;
    if (!error.text.isEmpty())
    {
        texts.push_back(QStringLiteral("column %1: %2").arg(error.column).arg(error.text));
    }
    const py::object asked = py::cast(text);
    CheckCode(code, texts, asked.ptr());
}

CKWMathExpression Read(const QString& text)
{
    CKWMathExpression expression;
    KW_MathError error;
    const KW_ACCEPTANCE code = expression.Read(text, error);
    CheckExpression(code, text, error);
    return expression;
}

/** What is given of channels, by their number; of the others `none`. */
template <typename T>
std::array<T, eKW_MATH_CHANNELS> ByChannel(const py::dict& given, T none)
{
    std::array<T, eKW_MATH_CHANNELS> values;
    values.fill(none);
    for (const std::pair<py::handle, py::handle> one : given)
    {
        const auto channel = static_cast<std::size_t>(one.first.cast<KW_ZEL_CHANNEL>());
        if (channel >= values.size())
        {
            throw py::key_error("expressions have the channels C1 to C4 and R1");
        }
        values[channel] = one.second.cast<T>();
    }
    return values;
}

double Evaluate(const CKWMathExpression& expression, const py::dict& values)
{
    return expression.Evaluate(ByChannel(values, std::numeric_limits<double>::quiet_NaN()));
}

KW_UNIT UnitOf(const CKWMathExpression& expression, const py::dict& units)
{
    return expression.GetUnit(ByChannel(units, eKW_UNIT_NOT_DEFINED));
}

/** For one thread at a time. */
struct t_Mathematics
{
    CKWMathematics mathematics;
    bool isInUse = false;

    explicit t_Mathematics(UINT32 records) : mathematics(records) {}
};

std::unique_ptr<t_Mathematics> Make(UINT32 records)
{
    if (records < 1 || records > 64)
    {
        throw py::value_error("1 to 64 records");
    }
    return std::make_unique<t_Mathematics>(records);
}

void Configure(t_Mathematics& self, const std::optional<QString>& expression,
               KW_ZEL_MATHEMATICS_TYPE operation, KW_ZEL_CHANNEL a, KW_ZEL_CHANNEL b,
               double filterFrequency, double integralStart, int format,
               std::optional<double> scale, double position)
{
    const CInUse computing(self.isInUse);
    KW_MathSettings settings;
    settings.usesExpression = expression.has_value();
    settings.expression = expression.value_or(QString());
    settings.type = operation;
    settings.sourceA = a;
    settings.sourceB = b;
    settings.filterFrequency = filterFrequency;
    settings.integralStart = integralStart;
    settings.format = static_cast<KW_SAMPLE_FORMAT>(format);
    settings.autoScale = !scale.has_value();
    settings.scale = {scale.value_or(1.0), position};
    KW_MathError error;
    const KW_ACCEPTANCE code = self.mathematics.Configure(settings, error);
    CheckExpression(code, settings.expression, error);
}

CKWRecord Compute(t_Mathematics& self, const CKWRecord& record,
                  const std::optional<CKWRecord>& reference)
{
    const CInUse computing(self.isInUse);
    CKWRecord result;
    CheckCode(Released(
        [&] {
            return self.mathematics.Compute(record, result, reference ? *reference : CKWRecord());
        }));
    return result;
}

/** The mathematics channel of the tree. What it keeps of the tree is let go without Python's lock.
 */
struct t_Curve
{
    std::shared_ptr<IKWMathematicsCurve> curve;
    bool isInUse = false;

    explicit t_Curve(std::shared_ptr<IKWMathematicsCurve> made) : curve(std::move(made)) {}
    t_Curve(const t_Curve&) = delete;
    t_Curve& operator=(const t_Curve&) = delete;
    ~t_Curve() { LetGoUnlessEnding(curve); }
};

std::unique_ptr<t_Curve> MakeCurve(py::handle root, UINT32 records)
{
    const auto tree = RootOf(root);
    auto made = Released([&] { return KW_MakeMathematicsCurve(tree.Get(), records); });
    if (!made)
    {
        throw std::bad_alloc();
    }
    return std::make_unique<t_Curve>(std::move(made));
}

/** None while the channel is off. */
std::optional<CKWRecord> ComputeCurve(t_Curve& self, const CKWRecord& record,
                                      const std::optional<CKWRecord>& reference)
{
    const CInUse computing(self.isInUse);
    CKWRecord curve;
    CReports reports;
    const KW_ACCEPTANCE code = Released(
        [&] { return self.curve->Compute(record, curve, reference ? *reference : CKWRecord()); });
    if (code == eKW_ACC_NOTHING_TO_ACT_ON)
    {
        return std::nullopt;
    }
    CheckCode(code, reports.Texts());
    return curve;
}

void DeliverCurve(t_Curve& self)
{
    const CInUse computing(self.isInUse);
    CReports reports;
    Released([&] { self.curve->Deliver(); });
    CheckCode(eKW_ACC_OK, reports.Texts());
}

std::optional<std::pair<double, double>> FindScale(double lowest, double highest)
{
    KW_MathScale found;
    return KW_FindMathScale({lowest, highest}, found)
               ? std::optional(std::pair(found.scale, found.position))
               : std::nullopt;
}

void AddExpression(py::module_& module)
{
    py::class_<CKWMathExpression>(module, "Expression", "An expression of channels.")
        .def(py::init(&Read), py::arg("text"))
        .def("__str__", [](const CKWMathExpression& expression)
             { return KW_WriteMathElements(expression.GetElements()); })
        .def_property_readonly("sources", &CKWMathExpression::GetSources)
        .def("unit", &UnitOf, py::arg("units"))
        .def("evaluate", &Evaluate, py::arg("values"));
}
} // namespace

void AddMathematics(py::module_& module)
{
    AddExpression(module);
    py::class_<t_Mathematics>(module, "Mathematics", "Computes curves of records.")
        .def(py::init(&Make), py::arg("records") = 4)
        .def("configure", &Configure, py::arg("expression") = py::none(), py::kw_only(),
             py::arg("operation") = "ADD", py::arg("a") = "C1", py::arg("b") = "C2",
             py::arg("filter_frequency") = 1e6, py::arg("integral_start") = 0.0,
             py::arg("format") = static_cast<int>(eKW_SAMPLES_INT16), py::arg("scale") = py::none(),
             py::arg("position") = 0.0)
        .def("compute", &Compute, py::arg("record"), py::arg("reference") = py::none())
        .def_property_readonly("scale",
                               [](const t_Mathematics& self)
                               {
                                   const KW_MathScale scale = self.mathematics.GetScale();
                                   return std::pair(scale.scale, scale.position);
                               });
    py::class_<t_Curve>(module, "MathematicsCurve", "The mathematics channel of the tree.")
        .def(py::init(&MakeCurve), py::arg("root"), py::arg("records") = 4)
        .def("compute", &ComputeCurve, py::arg("record"), py::arg("reference") = py::none())
        .def_property_readonly("has_changed",
                               [](const t_Curve& self) { return self.curve->HasChanged(); })
        .def("deliver", &DeliverCurve);
    module.def("find_math_scale", &FindScale, py::arg("lowest"), py::arg("highest"));
}
