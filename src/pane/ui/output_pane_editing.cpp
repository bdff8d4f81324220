#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QStringDecoder>
#include <algorithm>
#include <limits>
#include <utility>

#include "base/ui/qt_text.h"
#include "pane/pane_moves.h"
#include "pane/ui/output_pane.h"

// The text as others read and change it: properties, selection, clipboard, input methods.

namespace kolvane::pane {

QString OutputPane::plainText() const { return TextBetween({0, text_.Length()}); }

void OutputPane::setPlainText(const QString& text) {
  EndAside();
  Flush();
  const QString before = announcer_->IsActive() ? plainText() : QString();
  text_.SetText(base::FromQt(text));
  announcer_->Replaced(*this, before, {0, text_.Length()});
  CaretMoved();
}

void OutputPane::SetText(PaneText text) {
  session_.reset();
  text.ForgetEdits();
  Exchange(std::move(text));
}

void OutputPane::ShowAside(PaneText text) {
  text.ForgetEdits();
  PaneText before = Exchange(std::move(text));
  if (!session_) session_ = std::move(before);
}

void OutputPane::EndAside() {
  if (session_) Exchange(*std::exchange(session_, std::nullopt));
}

// Returns the text shown before.
PaneText OutputPane::Exchange(PaneText text) {
  Flush();
  const QString before = announcer_->IsActive() ? plainText() : QString();
  PaneText old = std::exchange(text_, std::move(text));
  rows_.Forget();
  Q_EMIT TextExchanged();
  announcer_->Replaced(*this, before, {0, text_.Length()});
  CaretMoved();
  return old;
}

QString OutputPane::selectedText() const { return TextBetween(text_.Selection()); }

// Decoded chunk by chunk into the result, so that a large text is in memory only once more.
QString OutputPane::TextBetween(PaneRange range) const {
  if (range.begin >= range.end) return QString();
  const PaneStore& store = text_.store();
  const std::size_t units = store.ToUnits(range.end) - store.ToUnits(range.begin);
  QString out(static_cast<qsizetype>(units), Qt::Uninitialized);
  QStringDecoder decoder(QStringDecoder::Utf8,
                         QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
  QChar* to = out.data();
  for (std::size_t chunk = store.ChunkOfOffset(range.begin); range.begin < range.end; ++chunk) {
    const std::size_t start = store.ChunkStart(chunk).bytes;
    const std::string_view text = store.Chunk(chunk).text();
    const std::size_t until = std::min(range.end, start + text.size());
    const auto size = static_cast<qsizetype>(until - range.begin);
    to = decoder.appendToBuffer(to, QByteArrayView(text.data() + (range.begin - start), size));
    range.begin = until;
  }
  return out;
}

int OutputPane::ToUnits(std::size_t offset) const {
  constexpr auto kMaxInt = static_cast<std::size_t>(std::numeric_limits<int>::max());
  return static_cast<int>(std::min(kMaxInt, text_.store().ToUnits(offset)));
}

std::size_t OutputPane::FromUnits(int units) const {
  return text_.store().FromUnits(static_cast<std::size_t>(std::max(units, 0)));
}

void OutputPane::SetSelectionColor(Color color) {
  text_.SetSelectionColor(color);
  viewport()->update();
}

void OutputPane::InsertComment(const QString& text) {
  Flush();
  text_.LeaveReselected();
  const std::size_t begin = text_.Selection().begin;
  const QString before = announcer_->IsActive() ? selectedText() : QString();
  text_.InsertComment(base::FromQt(text));
  announcer_->Replaced(*this, before, {begin, text_.caret()});
  CaretMoved();
}

void OutputPane::MoveCaret(std::size_t offset, bool keep_anchor) {
  Select(keep_anchor ? text_.anchor() : offset, offset);
}

void OutputPane::Select(std::size_t anchor, std::size_t caret) {
  Flush();
  text_.Select(anchor, caret);
  CaretMoved();
}

void OutputPane::CaretMoved() {
  EnsureVisible(text_.caret());
  goal_x_ = -1;
  updateMicroFocus();
  announcer_->CaretMoved(*this);
}

void OutputPane::ReplaceRange(PaneRange range, const QString& text) {
  Flush();
  range.end = std::max(range.begin, range.end);
  const std::size_t rest = text_.Length() - range.end;
  const QString before = announcer_->IsActive() ? TextBetween(range) : QString();
  text_.Erase(range);
  if (!text.isEmpty()) text_.Insert(range.begin, base::FromQt(text));
  announcer_->Replaced(*this, before, {range.begin, text_.Length() - rest});
  Changed();
}

void OutputPane::Replace(const QString& text) {
  if (read_only_ || (text.isEmpty() && text_.Selection().empty())) return;
  Flush();
  if (!text.isEmpty()) text_.LeaveReselected();
  const std::size_t begin = text_.Selection().begin;
  const QString before = announcer_->IsActive() ? selectedText() : QString();
  text_.ReplaceSelection(base::FromQt(text));
  announcer_->Replaced(*this, before, {begin, text_.caret()});
  CaretMoved();
}

void OutputPane::EraseTowards(std::size_t (*step)(const PaneStore&, std::size_t)) {
  if (read_only_) return;
  Flush();
  if (text_.Selection().empty()) text_.MoveTo(step(text_.store(), text_.caret()), true);
  Replace(QString());
}

void OutputPane::selectAll() {
  // Unlike Select, this does not move the view.
  Flush();
  text_.Select(0, text_.Length());
  goal_x_ = -1;
  viewport()->update();
  announcer_->CaretMoved(*this);
}

void OutputPane::copy() const {
  if (!text_.Selection().empty()) QGuiApplication::clipboard()->setText(selectedText());
}

void OutputPane::cut() {
  if (read_only_) return;
  copy();
  deleteSelection();
}

void OutputPane::paste() { Replace(QGuiApplication::clipboard()->text()); }

void OutputPane::deleteSelection() { Replace(QString()); }

void OutputPane::deleteAll() {
  EndAside();
  ReplaceRange({0, text_.Length()}, QString());
  CaretMoved();
}

void OutputPane::undo() {
  if (read_only_ || !text_.Undoable()) return;
  Flush();
  const PaneRange range = *text_.Undoable();
  const QString before = announcer_->IsActive() ? TextBetween(range) : QString();
  text_.Undo();
  announcer_->Replaced(*this, before, {range.begin, text_.caret()});
  CaretMoved();
}

void OutputPane::inputMethodEvent(QInputMethodEvent* event) {
  if (read_only_) {
    event->ignore();
    return;
  }
  preedit_ = event->preeditString();
  if (event->replacementLength() > 0) {
    const int begin = ToUnits(text_.caret()) + event->replacementStart();
    Select(FromUnits(begin), FromUnits(begin + event->replacementLength()));
  }
  if (!event->commitString().isEmpty() || event->replacementLength() > 0) Replace(event->commitString());
  viewport()->update();
  event->accept();
}

QVariant OutputPane::inputMethodQuery(Qt::InputMethodQuery query) const {
  const PaneRange line = LineAround(text_.store(), text_.caret());
  switch (query) {
    case Qt::ImEnabled:
      return !read_only_;
    case Qt::ImReadOnly:
      return read_only_;
    case Qt::ImCursorRectangle:
      return CharacterRect(text_.caret()).translated(viewport()->pos());
    case Qt::ImFont:
      return font();
    case Qt::ImSurroundingText:
      return TextBetween(line);
    case Qt::ImCursorPosition:
      return ToUnits(text_.caret()) - ToUnits(line.begin);
    case Qt::ImAnchorPosition:
      // An anchor in another line counts as the nearer end of this line, the only one the input method knows.
      return ToUnits(std::clamp(text_.anchor(), line.begin, line.end)) - ToUnits(line.begin);
    case Qt::ImCurrentSelection:
      return selectedText();
    default:
      return QAbstractScrollArea::inputMethodQuery(query);
  }
}

}  // namespace kolvane::pane
