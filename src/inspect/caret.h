#pragma once

#include "inspect/dump_view.h"

namespace kolvane::inspect {

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
