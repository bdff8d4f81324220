#include "device_failure.h"

#include <string>

#include "values.h"

namespace py = pybind11;

namespace kolvane::python {
namespace {

// "ValueError" where the exception has no text of its own, or none that can be had.
std::string TextOf(const py::error_already_set& raised) {
  const auto name = py::str(raised.type().attr("__name__")).cast<std::string>();
  try {
    const auto text = py::str(raised.value()).cast<std::string>();
    return text.empty() ? name : text;
  } catch (const py::error_already_set&) {
    return name;
  }
}

}  // namespace

DeviceFailure::DeviceFailure(py::error_already_set raised)
    : std::runtime_error(TextOf(raised)), exception_(std::move(raised)) {}

}  // namespace kolvane::python
