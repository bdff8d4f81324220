#include "values.h"

#include <cstdint>
#include <limits>
#include <string>

namespace py = pybind11;

namespace kolvane::python {
namespace {

Variant FromInt(const py::handle& value) {
  int overflow = 0;
  const long long number = PyLong_AsLongLongAndOverflow(value.ptr(), &overflow);
  using Limits = std::numeric_limits<std::int32_t>;
  if (overflow == 0 && number >= Limits::min() && number <= Limits::max())
    return static_cast<std::int32_t>(number);
  if (overflow == 0) return static_cast<double>(number);
  return overflow * std::numeric_limits<double>::infinity();
}

Variant FromBuffer(const py::handle& value) {
  const auto bytes = py::reinterpret_steal<py::bytes>(PyBytes_FromObject(value.ptr()));
  if (!bytes) throw py::error_already_set();
  const auto view = static_cast<std::string_view>(bytes);
  return Bytes(view.begin(), view.end());
}

}  // namespace

Variant ToVariant(const py::handle& value) {
  if (value.is_none()) return {};
  if (PyBool_Check(value.ptr()) != 0) return value.cast<bool>();
  if (PyLong_Check(value.ptr()) != 0) return FromInt(value);
  if (PyFloat_Check(value.ptr()) != 0) return value.cast<double>();
  if (PyUnicode_Check(value.ptr()) != 0) return value.cast<std::string>();
  if (PyObject_CheckBuffer(value.ptr()) != 0) return FromBuffer(value);
  throw RuntimeError(RuntimeError::Kind::kTypeMismatch);
}

py::str ToStr(const std::string& text) {
  const auto result = py::reinterpret_steal<py::str>(
      PyUnicode_DecodeUTF8(text.data(), static_cast<py::ssize_t>(text.size()), "replace"));
  if (!result) throw py::error_already_set();
  return result;
}

py::bytes ToPythonBytes(const Bytes& bytes) {
  const std::string text(bytes.begin(), bytes.end());
  return py::bytes(text);
}

}  // namespace kolvane::python
