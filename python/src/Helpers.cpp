// SPDX-License-Identifier: MIT
#include "PythonCalls.h"
void AddHelpers(py::module_&) {}
void AddLabels(py::module_&) {}
void AddStreams(py::module_&) {}
