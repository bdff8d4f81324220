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

// A sequence in memory; scalars of ctypes and NumPy are buffers too, but without a dimension.
bool IsArray(const py::handle& value) {
  if (PyObject_CheckBuffer(value.ptr()) == 0) return false;
  return py::memoryview(py::reinterpret_borrow<py::object>(value)).attr("ndim").cast<int>() > 0;
}

// If the module has not been imported, no value can have its types.
bool IsInstance(const py::handle& value, const char* module, const char* type) {
  const py::object imported = py::module_::import("sys").attr("modules").attr("get")(module);
  return py::hasattr(imported, type) && py::isinstance(value, imported.attr(type));
}

// The value of a ctypes or NumPy scalar; any other value unchanged.
py::object Unpacked(const py::handle& value) {
  if (IsInstance(value, "_ctypes", "_SimpleCData")) return value.attr("value");
  if (IsInstance(value, "numpy", "generic")) return value.attr("item")();
  return py::reinterpret_borrow<py::object>(value);
}

// Null if `value` does not have or support the method `slot`.
py::object Converted(const py::handle& value, unaryfunc slot, unaryfunc convert) {
  if (slot == nullptr) return {};
  auto result = py::reinterpret_steal<py::object>(convert(value.ptr()));
  if (!result && PyErr_ExceptionMatches(PyExc_TypeError) == 0) throw py::error_already_set();
  PyErr_Clear();
  return result;
}

// An int or a float; null if `value` is neither.
py::object Number(const py::handle& value) {
  const PyNumberMethods* methods = Py_TYPE(value.ptr())->tp_as_number;
  if (methods == nullptr) return {};
  py::object number = Converted(value, methods->nb_index, &PyNumber_Index);
  if (!number) number = Converted(value, methods->nb_float, &PyNumber_Float);
  return number;
}

Variant FromConvertible(const py::handle& value) {
  const py::object unpacked = Unpacked(value);
  if (Py_TYPE(unpacked.ptr()) != Py_TYPE(value.ptr())) return ToVariant(unpacked);
  if (const py::object number = Number(value)) return ToVariant(number);
  if (PyObject_CheckBuffer(value.ptr()) != 0) return FromBuffer(value);
  throw RuntimeError(RuntimeError::Kind::kTypeMismatch);
}

}  // namespace

Variant ToVariant(const py::handle& value) {
  if (value.is_none()) return {};
  if (PyBool_Check(value.ptr()) != 0) return value.cast<bool>();
  if (PyLong_Check(value.ptr()) != 0) return FromInt(value);
  if (PyFloat_Check(value.ptr()) != 0) return value.cast<double>();
  if (PyUnicode_Check(value.ptr()) != 0) return ToUtf8(py::reinterpret_borrow<py::str>(value));
  return IsArray(value) ? FromBuffer(value) : FromConvertible(value);
}

std::string ToUtf8(const py::str& text) {
  const auto encoded =
      py::reinterpret_steal<py::bytes>(PyUnicode_AsEncodedString(text.ptr(), "utf-8", "replace"));
  if (!encoded) throw py::error_already_set();
  return encoded;
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
