#pragma once

#include <functional>

#include "base/runtime_error.h"

namespace kolvane::terminal {

using Kind = base::RuntimeError::Kind;

/// The kind of RuntimeError that `step` throws; kOther if it throws none.
inline Kind ThrownBy(const std::function<void()>& step) {
  try {
    step();
  } catch (const base::RuntimeError& error) {
    return error.kind();
  }
  return Kind::kOther;
}

}  // namespace kolvane::terminal
