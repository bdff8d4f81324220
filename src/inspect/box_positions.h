#pragma once

#include <string_view>
#include <vector>

#include "inspect/dump_layout.h"

namespace kolvane::inspect {

/// Translates between positions in the dump, where CR LF counts two, and those of a text box that counts one
/// for it.
class BoxPositions {
 public:
  BoxPositions() = default;
  explicit BoxPositions(std::string_view dump);

  /// A place inside CR LF is the begin of the line behind it.
  Position ToBox(Position place) const;
  Position FromBox(Position place) const;

 private:
  std::vector<Position> line_feeds_;  // those behind a CR, in the dump
};

}  // namespace kolvane::inspect
