#pragma once

#include <cstddef>

#include "terminal/pane_store.h"

namespace kolvane::terminal {

/// Where the caret goes from `offset`; at either end of the text it stays.
std::size_t NextCharacter(const PaneStore& store, std::size_t offset);
std::size_t PreviousCharacter(const PaneStore& store, std::size_t offset);
/// Begin of the next word, number or sign, and of the one before; a line's end is a stop of its own.
std::size_t NextWord(const PaneStore& store, std::size_t offset);
std::size_t PreviousWord(const PaneStore& store, std::size_t offset);

/// Bytes [begin, end) of a text.
struct PaneRange {
  std::size_t begin;
  std::size_t end;
  bool empty() const { return begin == end; }
};

/// The word, run of blanks or run of signs around `offset`, within its line.
PaneRange WordAround(const PaneStore& store, std::size_t offset);
/// The line with its break.
PaneRange LineAround(const PaneStore& store, std::size_t offset);

}  // namespace kolvane::terminal
