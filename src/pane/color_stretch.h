#pragma once

#include <cstddef>

#include "pane/pane_store.h"

namespace kolvane::pane {

/// Bytes [begin, end) of a text, all in one colour, and as many as there are.
struct ColorStretch {
  std::size_t begin;
  std::size_t end;
  Color color;
};

/// The stretch around `offset`, the colour of the character that begins there.
ColorStretch StretchAt(const PaneStore& store, std::size_t offset);

}  // namespace kolvane::pane
