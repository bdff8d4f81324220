#pragma once

#include <pybind11/pybind11.h>

#include <string>

#include "kolvane/Variant.h"

namespace kolvane::python {

/// None is nothing; a str is a text, what lies in memory as a sequence of elements is bytes, and everything
/// that counts as a Boolean or a number by its type, __index__ or __float__ is one, scalars of ctypes and
/// NumPy included. An int beyond 32 bits becomes a float, so that its conversion overflows as any other
/// number's does. Throws RuntimeError (kTypeMismatch) for every other value.
Variant ToVariant(const pybind11::handle& value);

/// A str in UTF-8; lone surrogates, which stand for no character, become "?".
std::string ToUtf8(const pybind11::str& text);

/// Text in UTF-8 as a str; what is no UTF-8 is replaced by U+FFFD.
pybind11::str ToStr(const std::string& text);

pybind11::bytes ToPythonBytes(const Bytes& bytes);

}  // namespace kolvane::python
