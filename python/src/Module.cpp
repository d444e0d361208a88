// SPDX-License-Identifier: MIT
#include "Nodes.h"
#include "PythonCalls.h"

#include "KWSettingsFile.h"

namespace
{
/** The package hands over what the module makes objects of. */
void Register(const py::dict& objects)
{
    t_Registered& registered = Registered();
    const std::pair<const char*, PyObject**> places[] = {
        {"property", &registered.property},
        {"action", &registered.action},
        {"group", &registered.group},
        {"array", &registered.array},
        {"map", &registered.map},
        {"root", &registered.root},
        {"refusal", &registered.refusal},
        {"warn", &registered.warn},
        {"enumeration", &registered.makeEnumeration},
        {"view", &registered.view}};
    for (const auto& [name, place] : places)
    {
        *place = py::object(objects[name]).release().ptr();
    }
}
} // namespace

PYBIND11_MODULE(_core, module)
{
    module.doc() = "The tree of this process.";
    CReports::Install();
    module.def("register", &Register, py::arg("objects"), "What objects are made of.");
    module.def("acceptance_text", &KW_GetAcceptanceText, py::arg("code"));
    module.def(
        "empty", [] {}, "Does nothing: what a call costs.");
    module.def(
        "seal",
        [](const QString& name)
        { Ask(py::none(), py::cast(name), [&] { return KW_SealSettingsFile(name); }); },
        py::arg("name"));
    AddEnumerations(module);
    AddProperty(module);
    AddGroup(module);
    AddHelpers(module);
    AddLabels(module);
    AddStreams(module);
    AddMasks(module);
    AddAcquisition(module);
    AddMathematics(module);
    AddMeter(module);
}
