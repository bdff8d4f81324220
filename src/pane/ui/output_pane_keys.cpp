#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "base/ui/fields.h"
#include "pane/pane_moves.h"
#include "pane/ui/output_pane.h"

namespace kolvane::pane {

std::optional<int> ZoomOf(const QKeyEvent& event) {
  if ((event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) != Qt::ControlModifier) return {};
  switch (event.key()) {
    case Qt::Key_Plus:
      return 1;
    case Qt::Key_Minus:
      return -1;
    case Qt::Key_0:
      return event.modifiers().testFlag(Qt::ShiftModifier) ? std::optional<int>() : 0;
    default:
      return {};
  }
}

namespace {

struct KeyMove {
  QKeySequence::StandardKey move;
  QKeySequence::StandardKey select;
  std::size_t (*target)(const PaneStore&, std::size_t);
};

constexpr std::array kKeyMoves = {
    KeyMove{QKeySequence::MoveToNextChar, QKeySequence::SelectNextChar, NextCharacter},
    KeyMove{QKeySequence::MoveToPreviousChar, QKeySequence::SelectPreviousChar, PreviousCharacter},
    KeyMove{QKeySequence::MoveToNextWord, QKeySequence::SelectNextWord, NextWord},
    KeyMove{QKeySequence::MoveToPreviousWord, QKeySequence::SelectPreviousWord, PreviousWord},
    KeyMove{QKeySequence::MoveToStartOfDocument, QKeySequence::SelectStartOfDocument,
            [](const PaneStore&, std::size_t) { return std::size_t{0}; }},
    KeyMove{QKeySequence::MoveToEndOfDocument, QKeySequence::SelectEndOfDocument,
            [](const PaneStore& store, std::size_t) { return store.Length(); }},
};

bool IsTyped(const QKeyEvent& event) {
  const auto modifiers = event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
  // AltGr arrives as Ctrl and Alt together on some platforms.
  const bool plain = modifiers == Qt::NoModifier || modifiers == (Qt::ControlModifier | Qt::AltModifier) ||
                     modifiers == Qt::GroupSwitchModifier;
  return plain && !event.text().isEmpty() && event.text().front().isPrint();
}

// Not a standard key on every platform.
bool IsBackspace(const QKeyEvent& event) {
  return event.key() == Qt::Key_Backspace && (event.modifiers() & ~Qt::ShiftModifier) == Qt::NoModifier;
}

constexpr std::array kEditKeys = {QKeySequence::Copy,
                                  QKeySequence::Cut,
                                  QKeySequence::Paste,
                                  QKeySequence::Undo,
                                  QKeySequence::SelectAll,
                                  QKeySequence::Delete,
                                  QKeySequence::DeleteStartOfWord,
                                  QKeySequence::DeleteEndOfWord};

bool IsOwnKey(QKeyEvent& event) {
  const auto matches = [&event](QKeySequence::StandardKey key) { return event.matches(key); };
  return IsTyped(event) || IsBackspace(event) || ZoomOf(event) ||
         std::any_of(kEditKeys.begin(), kEditKeys.end(), matches) ||
         std::any_of(kKeyMoves.begin(), kKeyMoves.end(),
                     [&matches](const KeyMove& key) { return matches(key.move) || matches(key.select); });
}

}  // namespace

bool OutputPane::event(QEvent* event) {
  if (event->type() == QEvent::Paint && hasFocus()) {
    const bool done = QAbstractScrollArea::event(event);
    PaintFocus();
    return done;
  }
  // While the pane has the focus, its keys take precedence over the window's shortcuts.
  if (event->type() == QEvent::ShortcutOverride) {
    auto& key = static_cast<QKeyEvent&>(*event);
    if (IsOwnKey(key)) {
      key.accept();
      return true;
    }
  }
  return QAbstractScrollArea::event(event);
}

void OutputPane::keyPressEvent(QKeyEvent* event) {
  if (ZoomByKey(event) || SelectRememberedBlock(event) || MoveByKey(event) || EditByKey(event)) {
    event->accept();
  } else {
    // Not passed to the scroll area, which would scroll without moving the caret.
    event->ignore();
  }
}

// Right and Left turn the remembered block into a selection. If none is remembered, they end the selection at
// its end or its start, as in any text.
bool OutputPane::SelectRememberedBlock(QKeyEvent* event) {
  const bool right = event->key() == Qt::Key_Right;
  if (!right && event->key() != Qt::Key_Left) return false;
  if (remembered_block_ < 1) {
    const bool ends = !text_.Selection().empty();
    if (ends && event->matches(QKeySequence::MoveToPreviousChar))
      MoveCaret(text_.Selection().begin, false);
    else if (ends && event->matches(QKeySequence::MoveToNextChar))
      MoveCaret(text_.Selection().end, false);
    else
      return false;
    return true;
  }
  Flush();
  text_.LeaveReselected();
  if (right) text_.MoveBack(remembered_block_);
  text_.SelectForward(std::exchange(remembered_block_, 0));
  CaretMoved();
  return true;
}

bool OutputPane::ZoomByKey(QKeyEvent* event) {
  const std::optional<int> steps = ZoomOf(*event);
  if (steps) SetZoom(*steps == 0 ? 0 : zoom_ + *steps);
  return steps.has_value();
}

void OutputPane::wheelEvent(QWheelEvent* event) {
  if (!event->modifiers().testFlag(Qt::ControlModifier)) return QAbstractScrollArea::wheelEvent(event);
  const int turned = event->angleDelta().y();
  SetZoom(zoom_ + (turned > 0) - (turned < 0));
  event->accept();
}

bool OutputPane::MoveByKey(QKeyEvent* event) {
  for (const KeyMove& key : kKeyMoves) {
    const bool select = event->matches(key.select);
    if (!select && !event->matches(key.move)) continue;
    MoveCaret(key.target(text_.store(), text_.caret()), select);
    return true;
  }
  const int page = std::max(1, VisibleRows() - 1);
  const auto either = [event](QKeySequence::StandardKey move, QKeySequence::StandardKey select) {
    return event->matches(move) || event->matches(select);
  };
  const bool keep = event->modifiers().testFlag(Qt::ShiftModifier);
  if (either(QKeySequence::MoveToPreviousLine, QKeySequence::SelectPreviousLine)) {
    MoveByRows(-1, keep);
  } else if (either(QKeySequence::MoveToNextLine, QKeySequence::SelectNextLine)) {
    MoveByRows(1, keep);
  } else if (either(QKeySequence::MoveToPreviousPage, QKeySequence::SelectPreviousPage)) {
    MoveByRows(-page, keep);
  } else if (either(QKeySequence::MoveToNextPage, QKeySequence::SelectNextPage)) {
    MoveByRows(page, keep);
  } else if (either(QKeySequence::MoveToStartOfLine, QKeySequence::SelectStartOfLine)) {
    MoveCaret(RowStart(), keep);
  } else if (either(QKeySequence::MoveToEndOfLine, QKeySequence::SelectEndOfLine)) {
    MoveCaret(RowEnd(), keep);
  } else {
    return false;
  }
  return true;
}

bool OutputPane::EditByKey(QKeyEvent* event) {
  if (event->matches(QKeySequence::SelectAll)) {
    selectAll();
  } else if (event->matches(QKeySequence::Copy)) {
    copy();
  } else if (event->matches(QKeySequence::Cut)) {
    cut();
  } else if (event->matches(QKeySequence::Paste)) {
    paste();
  } else if (event->matches(QKeySequence::Undo)) {
    undo();
  } else if (event->matches(QKeySequence::Delete)) {
    EraseTowards(NextCharacter);
  } else if (IsBackspace(*event)) {
    EraseTowards(PreviousCharacter);
  } else if (event->matches(QKeySequence::DeleteEndOfWord)) {
    EraseTowards(NextWord);
  } else if (event->matches(QKeySequence::DeleteStartOfWord)) {
    EraseTowards(PreviousWord);
  } else if (base::IsEnter(*event)) {
    Replace(QStringLiteral("\n"));
  } else if (IsTyped(*event)) {
    Replace(event->text());
  } else {
    return false;
  }
  return true;
}

void OutputPane::MoveByRows(int rows, bool keep_anchor) {
  Flush();
  const std::size_t caret = text_.caret();
  const PaneRow from = Rows().RowAt(rows_.RowOf(caret));
  const qreal x = goal_x_ >= 0 ? goal_x_ : metrics_.X(TextOf(from), caret - from.begin);
  const int last = static_cast<int>(rows_.Total()) - 1;
  const int target = std::clamp(static_cast<int>(rows_.RowOf(caret)) + rows, 0, last);
  MoveCaret(OffsetInRow(rows_.RowAt(static_cast<std::size_t>(target)), x), keep_anchor);
  goal_x_ = x;
}

std::size_t OutputPane::RowStart() const { return RowAround(text_.caret()).begin; }

std::size_t OutputPane::RowEnd() const {
  const PaneRow row = RowAround(text_.caret());
  return row.ends_line ? row.end : PreviousCharacter(text_.store(), row.end);
}

void OutputPane::contextMenuEvent(QContextMenuEvent* event) {
  // With the mouse the release of the right button requests the menu, as a separate event.
  if (event->reason() == QContextMenuEvent::Keyboard) {
    const QPoint point = CharacterRect(text_.caret()).bottomLeft();
    Q_EMIT popupRequested(viewport()->mapToGlobal(point));
  }
  event->accept();
}

}  // namespace kolvane::pane
