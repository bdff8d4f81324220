#pragma once

#include <pybind11/pybind11.h>

#include <stdexcept>
#include <utility>

#include "kolvane/RuntimeError.h"

namespace kolvane::python {

/// A Python exception on its way through the component: what() is only its text, as the terminal shows it;
/// Raise gives it back to Python with its type and traceback.
class DeviceFailure : public std::runtime_error {
 public:
  /// With the interpreter lock held.
  explicit DeviceFailure(pybind11::error_already_set raised);

  void Raise() const { throw exception_; }

  /// Hands the traceback to the logger "kolvane": in the session nobody else gets it.
  void Log(const char* operation) const;

 private:
  pybind11::error_already_set exception_;
};

/// The same for a result that does not convert.
void LogMismatch(const char* operation, const RuntimeError& error);

}  // namespace kolvane::python
