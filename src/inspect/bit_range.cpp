#include "inspect/bit_range.h"

#include <algorithm>

namespace kolvane::inspect {

BitRange BitsFromTo(std::int16_t first, std::int16_t last) {
  constexpr std::int16_t kHighestBit = 14;
  int mask = 0;
  for (int bit = std::max<std::int16_t>(first, 0); bit <= std::min(last, kHighestBit); ++bit)
    mask |= 1 << bit;
  const auto bits = static_cast<std::int16_t>(mask);
  return {bits, last <= first ? bits : std::int16_t{1}};
}

}  // namespace kolvane::inspect
