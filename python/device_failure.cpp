#include "device_failure.h"

#include <string>
#include <utility>

#include "values.h"

namespace py = pybind11;

namespace kolvane::python {
namespace {

// The exception's name, such as "ValueError", if it has no text or none is available.
std::string TextOf(const py::error_already_set& raised) {
  const std::string name = ToUtf8(raised.type().attr("__name__"));
  try {
    const std::string text = ToUtf8(py::str(raised.value()));
    return text.empty() ? name : text;
  } catch (const py::error_already_set&) {
    return name;
  }
}

// A failure to log must not become a failure of the device.
template <typename... Arguments>
void LogError(Arguments&&... arguments) {
  try {
    py::module_::import("logging").attr("getLogger")("kolvane").attr("error")(
        std::forward<Arguments>(arguments)...);
  } catch (py::error_already_set& failure) {
    failure.discard_as_unraisable("kolvane: log");
  }
}

}  // namespace

DeviceFailure::DeviceFailure(py::error_already_set raised)
    : std::runtime_error(TextOf(raised)), exception_(std::move(raised)) {}

void DeviceFailure::Log(const char* operation) const {
  const py::gil_scoped_acquire lock;
  // An exception raised in C code has no traceback.
  const py::object traceback = exception_.trace() ? exception_.trace() : py::none();
  LogError("%s failed", operation,
           py::arg("exc_info") = py::make_tuple(exception_.type(), exception_.value(), traceback));
}

void LogMismatch(const char* operation, const std::exception& error) {
  const py::gil_scoped_acquire lock;
  LogError("%s failed: %s", operation, ToStr(error.what()));
}

}  // namespace kolvane::python
