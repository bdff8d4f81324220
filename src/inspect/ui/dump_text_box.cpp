#include "inspect/ui/dump_text_box.h"

#include <QKeyEvent>
#include <QScrollBar>

#include "inspect/caret.h"
#include "inspect/ui/text.h"

namespace kolvane::inspect {
namespace {

constexpr int kFontPoints = 11;
constexpr int kLinesWanted = 20;

int KeyCode(int qt_key) {
  if (qt_key == Qt::Key_Right) return key::kRight;
  return qt_key == Qt::Key_Left ? key::kLeft : 0;
}

}  // namespace

DumpTextBox::DumpTextBox(QWidget* parent) : QPlainTextEdit(parent) {
  setObjectName(QStringLiteral("txtBinData"));
  setAccessibleName(QStringLiteral("Binärdaten"));
  setFont(ByteFont(kFontPoints));
  setLineWrapMode(NoWrap);
  setUndoRedoEnabled(false);
  // Not read-only, which would hide the caret of some styles; without TextEditable nothing can be changed.
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setTabChangesFocus(true);
  setTabStopDistance(fontMetrics().horizontalAdvance(QLatin1Char(' ')));
  // The bytes of the value stay visible while the formats have the focus.
  QPalette colors = palette();
  for (const auto role : {QPalette::Highlight, QPalette::HighlightedText})
    colors.setColor(QPalette::Inactive, role, colors.color(QPalette::Active, role));
  setPalette(colors);
}

void DumpTextBox::SetDump(std::string dump) {
  dump_ = std::move(dump);
  positions_ = BoxPositions(dump_);
  caret_ = 0;
  box_caret_ = 0;
  setPlainText(FromBytes(dump_));
}

DumpView DumpTextBox::View() const {
  const QTextCursor cursor = textCursor();
  const Position start = cursor.selectionStart();
  DumpView view{dump_};
  view.MoveTo(start == box_caret_ ? caret_ : positions_.FromBox(start));
  view.selected = positions_.FromBox(cursor.selectionEnd()) - positions_.FromBox(start);
  return view;
}

void DumpTextBox::Show(const DumpView& view) {
  caret_ = view.caret;
  box_caret_ = positions_.ToBox(caret_);
  QTextCursor cursor = textCursor();
  cursor.setPosition(static_cast<int>(positions_.ToBox(caret_ + view.selected)));
  cursor.setPosition(static_cast<int>(box_caret_), QTextCursor::KeepAnchor);
  setTextCursor(cursor);
  ensureCursorVisible();
}

QSize DumpTextBox::sizeHint() const {
  const QFontMetrics metrics(font());
  const int frame = 2 * (frameWidth() + static_cast<int>(document()->documentMargin()));
  const int bar = verticalScrollBar()->sizeHint().width();
  return {metrics.horizontalAdvance(QString(kLineText + 1, QLatin1Char('0'))) + frame + bar,
          metrics.lineSpacing() * kLinesWanted + frame};
}

bool DumpTextBox::event(QEvent* event) {
  // The dialog's shortcuts go before what the box would do with their keys.
  if (event->type() == QEvent::ShortcutOverride) {
    event->ignore();
    return true;
  }
  return QPlainTextEdit::event(event);
}

void DumpTextBox::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return event->ignore();
  DumpView view = View();
  const Position before = view.caret;
  PressKey(KeyCode(event->key()), view);
  if (view.caret != before) Show(view);
  event->accept();
}

void DumpTextBox::keyReleaseEvent(QKeyEvent* event) {
  // A key that is held down has not been let go.
  if (!event->isAutoRepeat()) Q_EMIT KeyUp();
}

void DumpTextBox::mousePressEvent(QMouseEvent* event) {
  // Marked bytes would be dragged away by a hand that is not steady, and the click be lost.
  if (event->button() == Qt::LeftButton) {
    QTextCursor cursor = textCursor();
    cursor.clearSelection();
    setTextCursor(cursor);
  }
  QPlainTextEdit::mousePressEvent(event);
}

void DumpTextBox::mouseDoubleClickEvent(QMouseEvent* event) {
  // A second click, which marks no word.
  QMouseEvent press(QEvent::MouseButtonPress, event->position(), event->globalPosition(), event->button(),
                    event->buttons(), event->modifiers(), event->pointingDevice());
  mousePressEvent(&press);
}

void DumpTextBox::mouseReleaseEvent(QMouseEvent* event) {
  QPlainTextEdit::mouseReleaseEvent(event);
  if (event->button() == Qt::LeftButton) Q_EMIT Click();
}

}  // namespace kolvane::inspect
