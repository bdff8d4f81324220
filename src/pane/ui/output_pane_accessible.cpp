#include "pane/ui/output_pane_accessible.h"

#include <algorithm>

#include "base/ui/qt_look.h"
#include "pane/pane_moves.h"
#include "pane/ui/output_pane.h"

namespace kolvane::pane {

PaneAnnouncer::PaneAnnouncer() { QAccessible::installActivationObserver(this); }

PaneAnnouncer::~PaneAnnouncer() { QAccessible::removeActivationObserver(this); }

void PaneAnnouncer::Appended(OutputPane& pane, std::size_t from) {
  Replaced(pane, QString(), {from, pane.text().Length()});
  CaretMoved(pane);
}

void PaneAnnouncer::Replaced(OutputPane& pane, const QString& before, PaneRange range) {
  if (!active_ || (before.isEmpty() && range.empty())) return;
  const int begin = pane.ToUnits(range.begin);
  const QString text = pane.TextBetween(range);
  if (before.isEmpty()) {
    QAccessibleTextInsertEvent event(&pane, begin, text);
    Send(event);
  } else if (text.isEmpty()) {
    QAccessibleTextRemoveEvent event(&pane, begin, before);
    Send(event);
  } else {
    QAccessibleTextUpdateEvent event(&pane, begin, before, text);
    Send(event);
  }
}

void PaneAnnouncer::CaretMoved(OutputPane& pane) {
  if (!active_) return;
  const int caret = pane.ToUnits(pane.text().caret());
  const PaneRange selection = pane.text().Selection();
  QAccessibleTextSelectionEvent selected(&pane, pane.ToUnits(selection.begin), pane.ToUnits(selection.end));
  selected.setCursorPosition(caret);
  Send(selected);
  QAccessibleTextCursorEvent moved(&pane, caret);
  Send(moved);
}

namespace {

// The special positions of the text interfaces: the end, and the caret.
constexpr int kAtEnd = -1;
constexpr int kAtCaret = -2;

QAccessibleInterface* Create(const QString&, QObject* object) {
  auto* pane = qobject_cast<OutputPane*>(object);
  return pane ? new OutputPaneAccessible(pane) : nullptr;
}

QString Rgb(const QColor& color) {
  return QStringLiteral("rgb(%1,%2,%3)").arg(color.red()).arg(color.green()).arg(color.blue());
}

}  // namespace

void InstallPaneAccessibility() { QAccessible::installFactory(Create); }

OutputPaneAccessible::OutputPaneAccessible(OutputPane* pane)
    : QAccessibleWidget(pane, QAccessible::EditableText) {}

OutputPane& OutputPaneAccessible::pane() const { return *static_cast<OutputPane*>(widget()); }

QAccessible::State OutputPaneAccessible::state() const {
  QAccessible::State state = QAccessibleWidget::state();
  state.multiLine = true;
  state.selectableText = true;
  state.readOnly = pane().isReadOnly();
  state.editable = !pane().isReadOnly();
  return state;
}

QString OutputPaneAccessible::text(QAccessible::Text kind) const {
  if (kind == QAccessible::Value) return pane().plainText();
  if (kind == QAccessible::Description && pane().text().Length() == 0) return pane().placeholderText();
  return QAccessibleWidget::text(kind);
}

void OutputPaneAccessible::setText(QAccessible::Text kind, const QString& text) {
  if (kind == QAccessible::Value && !pane().isReadOnly()) pane().setPlainText(text);
}

void* OutputPaneAccessible::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
  if (type == QAccessible::EditableTextInterface && !pane().isReadOnly()) {
    return static_cast<QAccessibleEditableTextInterface*>(this);
  }
  return QAccessibleWidget::interface_cast(type);
}

std::size_t OutputPaneAccessible::OffsetOf(int offset) const {
  if (offset == kAtEnd) return pane().text().Length();
  return offset == kAtCaret ? pane().text().caret() : pane().FromUnits(offset);
}

void OutputPaneAccessible::selection(int index, int* begin, int* end) const {
  const PaneRange range = pane().text().Selection();
  const bool exists = index == 0 && !range.empty();
  *begin = exists ? pane().ToUnits(range.begin) : 0;
  *end = exists ? pane().ToUnits(range.end) : 0;
}

int OutputPaneAccessible::selectionCount() const { return pane().text().Selection().empty() ? 0 : 1; }

void OutputPaneAccessible::addSelection(int begin, int end) { setSelection(0, begin, end); }

void OutputPaneAccessible::removeSelection(int index) {
  if (index == 0) setCursorPosition(cursorPosition());
}

void OutputPaneAccessible::setSelection(int index, int begin, int end) {
  if (index == 0) pane().Select(OffsetOf(begin), OffsetOf(end));
}

int OutputPaneAccessible::cursorPosition() const { return pane().ToUnits(pane().text().caret()); }

void OutputPaneAccessible::setCursorPosition(int position) {
  pane().Select(OffsetOf(position), OffsetOf(position));
}

QString OutputPaneAccessible::text(int begin, int end) const {
  return pane().TextBetween({OffsetOf(begin), OffsetOf(end)});
}

// A range beyond either end of the text is empty and reported as -1.
QString OutputPaneAccessible::Report(PaneRange range, int* begin, int* end) const {
  *begin = range.empty() ? -1 : pane().ToUnits(range.begin);
  *end = range.empty() ? -1 : pane().ToUnits(range.end);
  return pane().TextBetween(range);
}

PaneRange OutputPaneAccessible::Piece(std::size_t offset, QAccessible::TextBoundaryType type) const {
  const PaneStore& store = pane().text().store();
  const std::size_t next = NextCharacter(store, offset);
  switch (type) {
    case QAccessible::CharBoundary:
      return {offset, next};
    case QAccessible::WordBoundary: {
      const PaneRange word = WordAround(store, offset);
      return offset < word.end || offset == next ? word : PaneRange{offset, next};
    }
    case QAccessible::LineBoundary: {
      const PaneRow row = pane().RowAround(offset);
      return {row.begin, row.ends_line ? std::min(row.end + 1, store.Length()) : row.end};
    }
    case QAccessible::SentenceBoundary:
    case QAccessible::ParagraphBoundary:
      return LineAround(store, offset);
    case QAccessible::NoBoundary:
      break;
  }
  return {0, store.Length()};
}

QString OutputPaneAccessible::textBeforeOffset(int offset, QAccessible::TextBoundaryType type, int* begin,
                                               int* end) const {
  const std::size_t at = Piece(OffsetOf(offset), type).begin;
  const std::size_t before = PreviousCharacter(pane().text().store(), at);
  return Report(at == 0 ? PaneRange{0, 0} : Piece(before, type), begin, end);
}

QString OutputPaneAccessible::textAfterOffset(int offset, QAccessible::TextBoundaryType type, int* begin,
                                              int* end) const {
  const std::size_t at = Piece(OffsetOf(offset), type).end;
  return Report(at == pane().text().Length() ? PaneRange{at, at} : Piece(at, type), begin, end);
}

QString OutputPaneAccessible::textAtOffset(int offset, QAccessible::TextBoundaryType type, int* begin,
                                           int* end) const {
  return Report(Piece(OffsetOf(offset), type), begin, end);
}

int OutputPaneAccessible::characterCount() const { return pane().ToUnits(pane().text().Length()); }

QRect OutputPaneAccessible::characterRect(int offset) const {
  const QRect rect = pane().CharacterRect(OffsetOf(offset));
  return {pane().viewport()->mapToGlobal(rect.topLeft()), rect.size()};
}

int OutputPaneAccessible::offsetAtPoint(const QPoint& point) const {
  const QPoint local = pane().viewport()->mapFromGlobal(point);
  return pane().viewport()->rect().contains(local) ? pane().ToUnits(pane().OffsetAt(local)) : -1;
}

void OutputPaneAccessible::scrollToSubstring(int begin, int end) {
  pane().EnsureVisible(OffsetOf(end));
  pane().EnsureVisible(OffsetOf(begin));
}

QString OutputPaneAccessible::attributes(int offset, int* begin, int* end) const {
  const ColorStretch stretch = StretchAt(pane().text().store(), OffsetOf(offset));
  *begin = pane().ToUnits(stretch.begin);
  *end = pane().ToUnits(stretch.end);
  const bool own = base::WithoutBold(stretch.color) == kNoColor;
  const QColor color = own ? pane().textColor() : base::ToQColor(stretch.color);
  const QFont font = pane().font();
  const bool bold = font.bold() || base::IsBold(stretch.color);
  return QStringLiteral(
             "color:%1;background-color:%2;font-family:\"%3\";font-size:%4pt;font-weight:%5;font-style:%6;")
      .arg(Rgb(color), Rgb(pane().backgroundColor()), font.family(), QString::number(font.pointSizeF()),
           bold ? QStringLiteral("bold") : QStringLiteral("normal"),
           font.italic() ? QStringLiteral("italic") : QStringLiteral("normal"));
}

void OutputPaneAccessible::deleteText(int begin, int end) { replaceText(begin, end, QString()); }

void OutputPaneAccessible::insertText(int offset, const QString& text) { replaceText(offset, offset, text); }

void OutputPaneAccessible::replaceText(int begin, int end, const QString& text) {
  pane().ReplaceRange({OffsetOf(begin), OffsetOf(end)}, text);
}

}  // namespace kolvane::pane
