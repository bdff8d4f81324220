#pragma once

#include <string_view>
#include <vector>

#include "inspect/hex_dump.h"

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

/// Virtual key codes of the keys that move the caret.
namespace key {
inline constexpr int kLeft = 37;
inline constexpr int kRight = 39;
}  // namespace key

/// Moves the caret off the offset field and the characters onto a byte's first digit. Between digits it goes
/// one position alone, so from the second digit of a group's last byte onto the blank behind it.
void EnsureValidCaretPos(DumpView& view);

/// What the text box does with a key press: Right and Left go two positions, no other key does anything.
void PressKey(int key_code, DumpView& view);

}  // namespace kolvane::inspect
