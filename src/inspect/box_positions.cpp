#include "inspect/box_positions.h"

#include <algorithm>

namespace kolvane::inspect {

BoxPositions::BoxPositions(std::string_view dump) {
  for (std::size_t at = dump.find("\r\n"); at != std::string_view::npos; at = dump.find("\r\n", at + 2))
    line_feeds_.push_back(static_cast<Position>(at + 1));
}

Position BoxPositions::ToBox(Position place) const {
  const auto behind = std::lower_bound(line_feeds_.begin(), line_feeds_.end(), place);
  return place - (behind - line_feeds_.begin());
}

Position BoxPositions::FromBox(Position place) const {
  // The nth line feed shares the box's position with the place behind it: its own less the n before it.
  Position before = 0;
  Position after = static_cast<Position>(line_feeds_.size());
  while (before < after) {
    const Position middle = before + (after - before) / 2;
    if (line_feeds_[static_cast<std::size_t>(middle)] - middle <= place) {
      before = middle + 1;
    } else {
      after = middle;
    }
  }
  return place + before;
}

}  // namespace kolvane::inspect
