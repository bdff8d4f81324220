#pragma once

#include <cstdint>

namespace kolvane::inspect {

/// The bits of a value that a field line names. A single bit is moved down to 0 or 1, several stay where they
/// are; bits from 15 on and below 0 never enter the mask. A range without bits has divisor 0.
struct BitRange {
  std::int16_t mask = 0;
  std::int16_t divisor = 0;
};

BitRange BitsFromTo(std::int16_t first, std::int16_t last);

}  // namespace kolvane::inspect
