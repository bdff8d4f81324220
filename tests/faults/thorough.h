#pragma once

#include <cstdlib>

namespace kolvane::faults {

/// Whether to try every call and every error, not only some; tests/faults/run does.
inline bool IsThorough() { return std::getenv("KOLVANE_FAULTS") != nullptr; }

}  // namespace kolvane::faults
