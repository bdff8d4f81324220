#pragma once

#include <cstdlib>

namespace kolvane::faults {

/// Every place and every error instead of a choice of them: for tests/faults/run.
inline bool Thorough() { return std::getenv("KOLVANE_FAULTS") != nullptr; }

}  // namespace kolvane::faults
