#include "pane/ui/output_pane.h"

#include <QDateTime>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimerEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "pane/pane_moves.h"
#include "pane/ui/output_pane_accessible.h"
#include "pane/ui/output_pane_paint.h"
#include "pane/ui/time_margin.h"

namespace kolvane::pane {
namespace {

constexpr int kFrameMs = 33;
constexpr int kMargin = 4;
constexpr int kCaretWidth = 2;
constexpr int kFocusWidth = 2;
constexpr float kPlaceholderAlpha = 0.6f;
constexpr int kPlaceholderMargin = 16;
constexpr int kMaxZoom = 16;
constexpr double kZoomStep = 1.1;
constexpr double kSmallestPoints = 4;

QFont DefaultFont() {
  QFont font(QStringLiteral("Courier New"), 10);
  font.setStyleHint(QFont::TypeWriter);
  return font;
}

}  // namespace

OutputPane::OutputPane(QWidget* parent, std::unique_ptr<PaneAnnouncer> announcer)
    : QAbstractScrollArea(parent),
      base_font_(DefaultFont()),
      metrics_(DefaultFont()),
      rows_(text_.store(), metrics_),
      announcer_(std::move(announcer)),
      bar_(new base::MarkedScrollBar) {
  InstallPaneAccessibility();
  setObjectName(QStringLiteral("TermWin"));
  setFont(DefaultFont());
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_InputMethodEnabled);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  // Always shown: a bar that appears and disappears would make every line wrap again.
  setVerticalScrollBar(bar_);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  viewport()->setCursor(Qt::IBeamCursor);
  setAcceptDrops(true);
  PlaceTimeMargin();
  setBackgroundRole(QPalette::Base);
  setAutoFillBackground(true);
  frame_shown_ = clock_.Seconds();
}

void OutputPane::AppendLine(LineKind kind, std::string_view line) {
  const Color color = kind == LineKind::kCommand ? base::kCommandColor : kNoColor;
  AppendBy(kind, [&](PaneText& text) { text.AppendLine(line, color); });
}

void OutputPane::AppendText(LineKind kind, std::string_view text, int back) {
  AppendBy(kind, [&](PaneText& to) { to.AppendText(text, back); });
}

template <typename Append>
void OutputPane::AppendBy(LineKind kind, const Append& append) {
  const LineOrigin origin(QDateTime::currentMSecsSinceEpoch(), kind == LineKind::kError);
  text_.SetOrigin(origin);
  if (session_) session_->SetOrigin(origin);
  NoteAppended(text_.Length());
  const std::size_t anchor = text_.anchor();
  const std::size_t caret = text_.caret();
  append(text_);
  if (selecting_ || anchor != caret) text_.Reselect(anchor, caret);
  if (session_) append(*session_);
  Changed();
}

void OutputPane::Clear() { setPlainText(QString()); }

void OutputPane::NoteAppended(std::size_t from) {
  if (!appended_from_) appended_from_ = from;
  // Counting the rows of each chunk as soon as it is full leaves little work for the frame, however many
  // lines arrive.
  if (text_.store().ChunkCount() != rows_.ChunkCount()) rows_.Sync();
  goal_x_ = -1;
}

void OutputPane::Changed() {
  if (stale_) return;
  stale_ = true;
  frame_timer_.start(kFrameMs, this);
}

void OutputPane::Refresh() {
  if (stale_ && clock_.Seconds() - frame_shown_ >= kFrameMs * 1e-3) ShowFrame();
}

void OutputPane::ShowFrame() {
  Flush();
  // Not update(): lines must also appear while a caller waits for an answer without serving events.
  viewport()->repaint();
  frame_shown_ = clock_.Seconds();
}

void OutputPane::Flush() {
  if (!stale_) return;
  stale_ = false;
  frame_timer_.stop();
  updating_bar_ = true;
  QScrollBar& bar = *verticalScrollBar();
  bar.setPageStep(VisibleRows());
  bar.setMaximum(std::max(0, static_cast<int>(Rows().Total()) - VisibleRows()));
  if (!selecting_) {
    if (follows_) bar.setValue(bar.maximum());
    follows_ = bar.value() == bar.maximum();
  }
  updating_bar_ = false;
  // The bar stays as it is while all lines fit.
  viewport()->update();
  if (appended_from_) announcer_->Appended(*this, *std::exchange(appended_from_, std::nullopt));
  Q_EMIT TextShown();
}

const OutputPaneRows& OutputPane::Rows() const {
  rows_.Sync();
  return rows_;
}

std::string_view OutputPane::TextOf(const PaneRow& row) const {
  const PaneStore& store = text_.store();
  const std::size_t chunk = store.ChunkOfOffset(row.begin);
  return store.Chunk(chunk).text().substr(row.begin - store.ChunkStart(chunk).bytes, row.end - row.begin);
}

std::size_t OutputPane::TopRow() const { return static_cast<std::size_t>(verticalScrollBar()->value()); }

int OutputPane::VisibleRows() const { return std::max(1, viewport()->height() / metrics_.row_height()); }

// Keeps the text at the top in place when the layout changes.
void OutputPane::Relayout() {
  const std::size_t row = std::min(TopRow(), Rows().Total() - 1);
  const std::size_t top = rows_.RowAt(row).begin;
  if (metrics_.cluster_font() != font()) metrics_ = OutputPaneMetrics(font());
  rows_.SetLayout(metrics_, std::max(0, viewport()->width() - 2 * kMargin));
  stale_ = true;
  Flush();
  if (!follows_) verticalScrollBar()->setValue(static_cast<int>(rows_.RowOf(top)));
  viewport()->update();
}

void OutputPane::SetBaseFont(const QFont& font) {
  base_font_ = font;
  SetZoom(zoom_);
}

void OutputPane::SetZoom(int steps) {
  zoom_ = std::clamp(steps, -kMaxZoom, kMaxZoom);
  QFont zoomed = base_font_;
  if (zoom_ != 0)
    zoomed.setPointSizeF(std::max(kSmallestPoints, base_font_.pointSizeF() * std::pow(kZoomStep, zoom_)));
  setFont(zoomed);
}

void OutputPane::setTextColor(const QColor& color) {
  QPalette changed = palette();
  changed.setColor(QPalette::Text, color);
  setPalette(changed);
}

void OutputPane::setBackgroundColor(const QColor& color) {
  QPalette changed = palette();
  changed.setColor(QPalette::Base, color);
  setPalette(changed);
}

QRect OutputPane::CharacterRect(std::size_t offset) const {
  const std::size_t index = Rows().RowOf(offset);
  const PaneRow row = rows_.RowAt(index);
  const std::string_view text = TextOf(row);
  const qreal left = metrics_.X(text, offset - row.begin);
  const std::size_t next = NextCharacter(text_.store(), offset);
  const qreal right =
      next <= row.end && next > offset ? metrics_.X(text, next - row.begin) : left + metrics_.space_width();
  const int y = (static_cast<int>(index) - static_cast<int>(TopRow())) * metrics_.row_height();
  return QRectF(kMargin + left, y, right - left, metrics_.row_height()).toRect();
}

std::size_t OutputPane::OffsetAt(QPoint point) const {
  const int height = metrics_.row_height();
  const int below = point.y() >= 0 ? point.y() / height : (point.y() + 1) / height - 1;
  const int last = static_cast<int>(Rows().Total()) - 1;
  const int row = std::clamp(static_cast<int>(TopRow()) + below, 0, last);
  return OffsetInRow(rows_.RowAt(static_cast<std::size_t>(row)), point.x() - kMargin);
}

// The end of a row that does not end its line is the start of the next row; the last position is before it.
std::size_t OutputPane::OffsetInRow(const PaneRow& row, qreal x) const {
  const std::size_t offset = row.begin + metrics_.ByteAt(TextOf(row), x);
  return offset == row.end && !row.ends_line ? PreviousCharacter(text_.store(), offset) : offset;
}

void OutputPane::EnsureVisible(std::size_t offset) {
  Changed();
  Flush();
  const int row = static_cast<int>(rows_.RowOf(offset));
  QScrollBar& bar = *verticalScrollBar();
  bar.setValue(std::clamp(bar.value(), row - VisibleRows() + 1, row));
  viewport()->update();
}

// Does not move the scroll bar: that would request another paint, in each turn of the event loop.
void OutputPane::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.fillRect(event->rect(), palette().base());
  const PaneColors colors{textColor(), palette().color(QPalette::HighlightedText),
                          palette().color(QPalette::Highlight),
                          base::HitBackground(palette().color(QPalette::Base))};
  OutputPanePainter rows(painter, text_.store(), metrics_, colors, text_.Selection(), search_);
  const int height = metrics_.row_height();
  const std::size_t total = Rows().Total();
  for (int below = event->rect().top() / height; below * height <= event->rect().bottom(); ++below) {
    const std::size_t row = TopRow() + static_cast<std::size_t>(below);
    if (row >= total) break;
    rows.PaintRow(rows_.RowAt(row), QPointF(kMargin, below * height));
  }
  if (text_.Length() == 0 && preedit_.isEmpty()) PaintPlaceholder(painter);
  if (hasFocus()) PaintCaret(painter);
  if (time_margin_ != nullptr) time_margin_->update();
}

void OutputPane::ShowHits(const PaneSearch* search) {
  search_ = search;
  MarkHits();
}

void OutputPane::MarkHits() {
  std::vector<double> positions;
  const std::size_t chunks = search_ == nullptr ? 0 : std::min(search_->ChunkCount(), Rows().ChunkCount());
  for (std::size_t chunk = 0; chunk < chunks; ++chunk) {
    if (search_->CountIn(chunk) == 0) continue;
    for (std::size_t part = 0; part < PaneSearch::kParts; ++part) {
      if (search_->PartsIn(chunk)[part])
        positions.push_back(rows_.Share(chunk, static_cast<double>(part) / PaneSearch::kParts));
    }
  }
  bar_->SetMarks(positions);
  viewport()->update();
}

// Shows that the pane has the keyboard focus.
void OutputPane::PaintFocus() {
  QPainter painter(this);
  painter.setPen(
      QPen(palette().color(QPalette::Highlight), kFocusWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
  const qreal inside = kFocusWidth / 2.0;
  painter.drawRect(QRectF(rect()).adjusted(inside, inside, -inside, -inside));
}

void OutputPane::setPlaceholderText(const QString& text) {
  placeholder_ = text;
  viewport()->update();
}

void OutputPane::PaintPlaceholder(QPainter& painter) {
  QColor pale = textColor();
  pale.setAlphaF(kPlaceholderAlpha);
  painter.setPen(pale);
  painter.setFont(QGuiApplication::font());
  const QMargins around(kPlaceholderMargin, kPlaceholderMargin, kPlaceholderMargin, kPlaceholderMargin);
  painter.drawText(viewport()->rect().marginsRemoved(around), Qt::AlignLeft | Qt::TextWordWrap, placeholder_);
}

// Does not blink, so that an idle window does nothing at all.
void OutputPane::PaintCaret(QPainter& painter) {
  const QRect rect = CharacterRect(text_.caret());
  const int left = std::min(rect.left(), viewport()->width() - kCaretWidth);
  if (!preedit_.isEmpty()) {
    QFont underlined = metrics_.cluster_font();
    underlined.setUnderline(true);
    const qreal width = QFontMetricsF(underlined).horizontalAdvance(preedit_);
    painter.fillRect(QRectF(left, rect.top(), width, rect.height()), palette().base());
    painter.setFont(underlined);
    painter.setPen(textColor());
    painter.drawText(QPointF(left, rect.top() + metrics_.ascent()), preedit_);
  }
  painter.fillRect(QRect(left, rect.top(), kCaretWidth, rect.height()), textColor());
}

void OutputPane::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  PlaceTimeMargin();
  Relayout();
}

void OutputPane::showEvent(QShowEvent* event) {
  QAbstractScrollArea::showEvent(event);
  Flush();
}

void OutputPane::changeEvent(QEvent* event) {
  QAbstractScrollArea::changeEvent(event);
  if (event->type() == QEvent::FontChange) {
    PlaceTimeMargin();
    Relayout();
  }
  if (event->type() == QEvent::PaletteChange) viewport()->update();
}

bool OutputPane::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QAbstractScrollArea::viewportEvent(event);
  const auto& help = static_cast<const QHelpEvent&>(*event);
  ShowFailureHelp(help.pos(), help.globalPos());
  return true;
}

void OutputPane::scrollContentsBy(int, int) {
  if (!updating_bar_) follows_ = verticalScrollBar()->value() == verticalScrollBar()->maximum();
  viewport()->update();
}

void OutputPane::FollowEnd() {
  follows_ = true;
  Changed();
  Flush();
  viewport()->update();
}

void OutputPane::focusInEvent(QFocusEvent* event) {
  if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) Q_EMIT Touched();
  QAbstractScrollArea::focusInEvent(event);
  update();
  viewport()->update();
}

void OutputPane::focusOutEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusOutEvent(event);
  // The button may be released without this widget being notified.
  EndSelecting();
  update();
  viewport()->update();
}

void OutputPane::timerEvent(QTimerEvent* event) {
  if (event->timerId() == frame_timer_.timerId()) {
    ShowFrame();
  } else if (event->timerId() == drag_timer_.timerId()) {
    DragTo(drag_point_);
  } else {
    QAbstractScrollArea::timerEvent(event);
  }
}

}  // namespace kolvane::pane
