#pragma once

#include <pybind11/pybind11.h>

#include <string>

#include "kolvane/Variant.h"

namespace kolvane::python {

/// None becomes nothing, a str a text, a sequence of elements in memory bytes. Everything that is a Boolean
/// or a number by its type, __index__ or __float__ becomes one, including scalars of ctypes and NumPy. An int
/// beyond 32 bits becomes a float, so that its conversion overflows like that of any other number. Throws
/// RuntimeError (kTypeMismatch) for every other value.
Variant ToVariant(const pybind11::handle& value);

/// Converts a str to UTF-8; lone surrogates become "?".
std::string ToUtf8(const pybind11::str& text);

/// Converts UTF-8 to a str; malformed bytes become U+FFFD.
pybind11::str ToStr(const std::string& text);

pybind11::bytes ToPythonBytes(const Bytes& bytes);

}  // namespace kolvane::python
