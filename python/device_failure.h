#pragma once

#include <pybind11/pybind11.h>

#include <exception>
#include <stdexcept>
#include <utility>

namespace kolvane::python {

/// A Python exception while it passes through the component: what() is only its text, which the terminal
/// shows; Raise rethrows it to Python with its type and traceback.
class DeviceFailure : public std::runtime_error {
 public:
  /// To be called with the interpreter lock held.
  explicit DeviceFailure(pybind11::error_already_set raised);

  void Raise() const { throw exception_; }

  /// Passes the traceback to the logger "kolvane"; during the session nothing else shows it.
  void Log(const char* operation) const;

 private:
  pybind11::error_already_set exception_;
};

/// Logs a result that cannot be converted or has another form.
void LogMismatch(const char* operation, const std::exception& error);

}  // namespace kolvane::python
