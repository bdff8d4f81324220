#pragma once

#include <algorithm>
#include <string_view>

#include "inspect/dump_layout.h"

namespace kolvane::inspect {

/// The dump with what its text box has besides: caret (the selection's start) and selection, both within the
/// text.
struct DumpView {
  std::string_view text;
  Position caret = 0;
  Position selected = 0;

  Position Length() const { return static_cast<Position>(text.size()); }

  /// The selection goes.
  void MoveTo(Position place) {
    caret = std::clamp<Position>(place, 0, Length());
    selected = 0;
  }

  void Select(Position start, Position length) {
    MoveTo(start);
    selected = std::clamp<Position>(length, 0, Length() - caret);
  }
};

}  // namespace kolvane::inspect
