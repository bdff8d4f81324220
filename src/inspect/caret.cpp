#include "inspect/caret.h"

#include <algorithm>

namespace kolvane::inspect {

BoxPositions::BoxPositions(std::string_view dump) {
  for (std::size_t at = dump.find("\r\n"); at != std::string_view::npos; at = dump.find("\r\n", at + 2))
    line_feeds_.push_back(static_cast<Position>(at + 1));
}

Position BoxPositions::ToBox(Position place) const {
  const auto next = std::lower_bound(line_feeds_.begin(), line_feeds_.end(), place);
  return place - (next - line_feeds_.begin());
}

Position BoxPositions::FromBox(Position place) const {
  // The nth line feed shares the box's position with the place after it: its own less the n before it.
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

void EnsureValidCaretPos(DumpView& view) {
  const Position column = ColumnOf(view.caret);
  if (column < kOffsetWidth - 1) {
    view.MoveTo(view.caret + kFirstByte - column);
  } else if (column >= kHexEnd) {
    view.MoveTo(view.caret + (kLineText - column) + (kLineLength - kLineText) + kFirstByte);
  } else if (!IsByteColumn(column)) {
    view.MoveTo(view.caret + (column == kHexEnd - 1 ? -1 : 1));
  }
}

void PressKey(int key_code, DumpView& view) {
  if (key_code == key::kRight && view.caret < view.Length() - 1) {
    view.MoveTo(view.caret + 2);
  } else if (key_code == key::kLeft && view.caret >= 3) {
    view.MoveTo(view.caret - 2);
  }
}

}  // namespace kolvane::inspect
