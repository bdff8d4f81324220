#pragma once

#include <cstdlib>

namespace kolvane::faults {

/// Every place and every error instead of a choice of them: for tests/faults/run.
inline bool Thorough() { return std::getenv("KOLVANE_FAULTS") != nullptr; }

/// The program's sanitizer makes calls and takes memory of its own, so that none of them can be counted or
/// refused.
inline bool Sanitized() { return std::getenv("KOLVANE_SANITIZED") != nullptr; }
inline constexpr char kSanitized[] = "the sanitizer's own calls are in the way";

}  // namespace kolvane::faults
