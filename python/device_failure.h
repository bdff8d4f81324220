#pragma once

#include <pybind11/pybind11.h>

#include <stdexcept>
#include <utility>

namespace kolvane::python {

/// A Python exception on its way through the component: what() is its text alone, as the terminal shows it;
/// Raise gives it back to Python with its type and traceback.
class DeviceFailure : public std::runtime_error {
 public:
  /// With the interpreter lock held.
  explicit DeviceFailure(pybind11::error_already_set raised);

  void Raise() const { throw exception_; }

 private:
  pybind11::error_already_set exception_;
};

}  // namespace kolvane::python
