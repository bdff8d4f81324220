#pragma once

#include <pybind11/pybind11.h>

#include "kolvane/Variant.h"

namespace kolvane::python {

/// None is nothing; bool, int, float, str and bytes-like values are themselves. An int beyond 32 bits becomes
/// a float, so that its conversion overflows as any other number's does. Throws RuntimeError (kTypeMismatch)
/// for every other type.
Variant ToVariant(const pybind11::handle& value);

/// Text in UTF-8 as a str; what is no UTF-8 is replaced by U+FFFD.
pybind11::str ToStr(const std::string& text);

pybind11::bytes ToPythonBytes(const Bytes& bytes);

}  // namespace kolvane::python
