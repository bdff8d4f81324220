#pragma once

#include <pybind11/pybind11.h>

namespace kolvane::python {

/// Runs command lists and lists ports for kolvane/headless.py.
void DefineCommandRun(pybind11::module_& module);

}  // namespace kolvane::python
