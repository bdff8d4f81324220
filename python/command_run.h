#pragma once

#include <pybind11/pybind11.h>

namespace kolvane::python {

/// Runs of command lists and the list of ports, as kolvane/headless.py calls them.
void DefineCommandRun(pybind11::module_& module);

}  // namespace kolvane::python
