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

  /// A place inside CR LF is the start of the line after it.
  Position ToBox(Position place) const;
  Position FromBox(Position place) const;

 private:
  std::vector<Position> line_feeds_;  // those after a CR, in the dump
};

/// Virtual key codes of the keys that move the caret.
namespace key {
inline constexpr int kLeft = 37;
inline constexpr int kRight = 39;
}  // namespace key

/// Moves the caret off the offset field and the characters onto a byte's first digit. Between digits it goes
/// one position only, so from the second digit of a group's last byte onto the space after it.
void EnsureValidCaretPos(DumpView& view);

/// What the text box does with a key press: Right and Left go two positions, no other key does anything.
void PressKey(int key_code, DumpView& view);

}  // namespace kolvane::inspect
