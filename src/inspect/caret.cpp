#include "inspect/caret.h"

namespace kolvane::inspect {

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
