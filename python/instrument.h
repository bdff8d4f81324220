#pragma once

#include <pybind11/pybind11.h>

namespace kolvane::python {

/// The class Connection, which kolvane/instrument.py wraps: commands and answers are bytes.
void DefineInstrument(pybind11::module_& module);

}  // namespace kolvane::python
