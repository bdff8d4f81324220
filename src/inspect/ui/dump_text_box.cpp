#include "inspect/ui/dump_text_box.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "inspect/hex_dump.h"
#include "inspect/ui/byte_text.h"

namespace kolvane::inspect {
namespace {

constexpr int kFontPoints = 11;
constexpr int kPreferredLines = 20;

// Pixels; this far left of a digit still counts as on it, because a caret's position is rounded.
constexpr double kTolerance = 1.5;
constexpr int kFieldColors = 6;
constexpr int kContextLines = 2;  // around a shown highlight

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
  // Not read-only, since some styles would hide the caret; without TextEditable nothing can be changed.
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setTabStopDistance(fontMetrics().horizontalAdvance(QLatin1Char(' ')));
  setAcceptDrops(false);
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
  highlight_.reset();
  fields_.clear();
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
  const bool moved = view.caret != caret_;
  const int top = verticalScrollBar()->value();
  caret_ = view.caret;
  box_caret_ = positions_.ToBox(caret_);
  QTextCursor cursor = textCursor();
  cursor.setPosition(static_cast<int>(positions_.ToBox(caret_ + view.selected)));
  cursor.setPosition(static_cast<int>(box_caret_), QTextCursor::KeepAnchor);
  setTextCursor(cursor);
  if (moved) {
    SetHighlight(std::nullopt);
    ensureCursorVisible();
  } else {
    verticalScrollBar()->setValue(top);
  }
}

void DumpTextBox::ShowHighlight(const ByteRange& range) {
  SetHighlight(range);
  const int line = static_cast<int>(PositionOfByte(range.first) / kLineLength);
  QScrollBar* bar = verticalScrollBar();
  if (line < bar->value()) bar->setValue(line - kContextLines);
  if (line >= bar->value() + bar->pageStep()) bar->setValue(line - bar->pageStep() + 1 + kContextLines);
}

void DumpTextBox::SetHighlight(std::optional<ByteRange> highlight) {
  if (highlight == highlight_) return;
  highlight_ = highlight;
  PaintStretches();
}

void DumpTextBox::SetFields(std::vector<ByteRange> fields) {
  if (fields == fields_) return;
  fields_ = std::move(fields);
  PaintStretches();
}

QColor DumpTextBox::FieldColor(std::size_t number) const {
  const bool dark = palette().color(QPalette::Base).lightness() < palette().color(QPalette::Text).lightness();
  const int hue = static_cast<int>(number % kFieldColors) * 360 / kFieldColors;
  return dark ? QColor::fromHsl(hue, 110, 75) : QColor::fromHsl(hue, 170, 205);
}

QTextEdit::ExtraSelection DumpTextBox::Stretch(Position from, Position to, const QColor& color) const {
  QTextEdit::ExtraSelection stretch;
  stretch.format.setBackground(color);
  stretch.cursor = QTextCursor(document());
  stretch.cursor.setPosition(static_cast<int>(positions_.ToBox(from)));
  stretch.cursor.setPosition(static_cast<int>(positions_.ToBox(to)), QTextCursor::KeepAnchor);
  return stretch;
}

// Two stretches for each line: its digits and its characters.
void DumpTextBox::AppendStretches(const ByteRange& range, const QColor& color,
                                  QList<QTextEdit::ExtraSelection>& stretches) const {
  constexpr auto kLine = static_cast<std::size_t>(kBytesPerLine);
  for (std::size_t first = range.first; first < range.first + range.count;) {
    const std::size_t last = std::min(range.first + range.count, (first / kLine + 1) * kLine) - 1;
    const Position digits = PositionOfByte(first);
    const Position line = digits - ColumnOf(digits);
    if (line + kLineText > static_cast<Position>(dump_.size())) return;
    stretches << Stretch(digits, PositionOfByte(last) + 2, color);
    const auto in_line = static_cast<Position>(first % kLine);
    const auto count = static_cast<Position>(last - first + 1);
    stretches << Stretch(line + kCharacters + in_line, line + kCharacters + in_line + count, color);
    first = last + 1;
  }
}

// Over colours of fields the selection is translucent.
void DumpTextBox::PaintStretches() {
  QPalette colors = palette();
  const QPalette application = QApplication::palette(this);
  QColor overlay = application.color(QPalette::Active, QPalette::Highlight);
  if (!fields_.empty()) overlay.setAlpha(60);
  const auto text = fields_.empty() ? QPalette::HighlightedText : QPalette::Text;
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    colors.setColor(group, QPalette::Highlight, overlay);
    colors.setColor(group, QPalette::HighlightedText, application.color(QPalette::Active, text));
  }
  setPalette(colors);
  QList<QTextEdit::ExtraSelection> stretches;
  for (std::size_t i = 0; i < fields_.size(); ++i) AppendStretches(fields_[i], FieldColor(i), stretches);
  if (highlight_) AppendStretches(*highlight_, QColor(255, 200, 60, 190), stretches);
  setExtraSelections(stretches);
}

QSize DumpTextBox::sizeHint() const {
  const QFontMetrics metrics(font());
  const int frame = 2 * (frameWidth() + static_cast<int>(document()->documentMargin()));
  const int bar = verticalScrollBar()->sizeHint().width();
  return {metrics.horizontalAdvance(QString(kLineText + 1, QLatin1Char('0'))) + frame + bar,
          metrics.lineSpacing() * kPreferredLines + frame};
}

bool DumpTextBox::event(QEvent* event) {
  // The dialog's shortcuts take precedence over the box's own keys.
  if (event->type() == QEvent::ShortcutOverride) {
    event->ignore();
    return true;
  }
  return QPlainTextEdit::event(event);
}

void DumpTextBox::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return event->ignore();
  if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown) {
    const bool down = event->key() == Qt::Key_PageDown;
    verticalScrollBar()->triggerAction(down ? QAbstractSlider::SliderPageStepAdd
                                            : QAbstractSlider::SliderPageStepSub);
  }
  DumpView view = View();
  const Position before = view.caret;
  PressKey(KeyCode(event->key()), view);
  if (view.caret != before) Show(view);
  event->accept();
}

void DumpTextBox::keyReleaseEvent(QKeyEvent* event) {
  // A key that is held down has not been released.
  if (!event->isAutoRepeat()) Q_EMIT KeyUp();
}

void DumpTextBox::mousePressEvent(QMouseEvent* event) {
  // Otherwise a slight movement would drag the selected text, and the click would be lost.
  if (event->button() == Qt::LeftButton) {
    QTextCursor cursor = textCursor();
    cursor.clearSelection();
    setTextCursor(cursor);
    pressed_ = ByteAtPosition(PositionAt(event->position().toPoint()));
    SetHighlight(std::nullopt);
  }
  QPlainTextEdit::mousePressEvent(event);
}

void DumpTextBox::mouseDoubleClickEvent(QMouseEvent* event) {
  // Handled as a second click, so that no word is selected.
  QMouseEvent press(QEvent::MouseButtonPress, event->position(), event->globalPosition(), event->button(),
                    event->buttons(), event->modifiers(), event->pointingDevice());
  mousePressEvent(&press);
}

void DumpTextBox::mouseReleaseEvent(QMouseEvent* event) {
  QPlainTextEdit::mouseReleaseEvent(event);
  if (event->button() != Qt::LeftButton) return;
  const Position position = PositionAt(event->position().toPoint());
  const std::size_t byte = ByteAtPosition(position);
  DumpView view = View();
  view.MoveTo(byte == pressed_ ? position : PositionOfByte(std::min(byte, pressed_)));
  Show(view);
  if (byte != pressed_)
    SetHighlight(
        ByteRange{std::min(byte, pressed_), std::max(byte, pressed_) - std::min(byte, pressed_) + 1});
  Q_EMIT Click();
}

// For a byte, the position of its first digit, whichever digit is under the pointer.
Position DumpTextBox::PositionAt(const QPoint& pointer) const {
  QTextCursor cursor = cursorForPosition(pointer);
  const int in_line = cursor.positionInBlock();
  cursor.movePosition(QTextCursor::StartOfBlock);
  const double width = QFontMetricsF(font()).horizontalAdvance(QLatin1Char('0'));
  const double left = cursorRect(cursor).left();
  const auto under = static_cast<Position>((std::max(0.0, pointer.x() - left) + kTolerance) / width);
  const Position line = positions_.FromBox(cursor.position());
  if (line % kLineLength != 0 || under >= kHexEnd || under < kFirstByte)
    return positions_.FromBox(cursor.position() + in_line);
  return line + (IsByteColumn(under - 1) ? under - 1 : under);
}

}  // namespace kolvane::inspect
