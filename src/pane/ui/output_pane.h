#pragma once

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QElapsedTimer>
#include <functional>
#include <memory>
#include <optional>

#include "base/clock.h"
#include "base/ui/marked_scroll_bar.h"
#include "pane/pane.h"
#include "pane/pane_search.h"
#include "pane/pane_text.h"
#include "pane/ui/output_pane_accessible.h"
#include "pane/ui/output_pane_metrics.h"
#include "pane/ui/output_pane_rows.h"

namespace kolvane::pane {

class TimeMargin;

/// The zoom steps that the key requests of the pane, 0 for the base size; no value for any other key.
std::optional<int> ZoomOf(const QKeyEvent& event);

/// The output pane `TermWin`: shows a PaneText, lets the user select, copy and edit it, and accepts lines at
/// any rate. The text is always up to date; rows, scroll bar and display are updated at most about thirty
/// times a second. Lines wrap at the window's edge. New text scrolls the view only if it was at the end, and
/// changes neither view nor selection while the user selects with the mouse. Offsets are PaneText's.
class OutputPane : public QAbstractScrollArea, public Pane {
  Q_OBJECT
  Q_PROPERTY(QString plainText READ plainText WRITE setPlainText)
  Q_PROPERTY(QString selectedText READ selectedText)
  Q_PROPERTY(bool readOnly READ isReadOnly WRITE setReadOnly)
  Q_PROPERTY(QString placeholderText READ placeholderText WRITE setPlaceholderText)
  Q_PROPERTY(bool timeStamps READ timeStamps WRITE setTimeStamps)

 public:
  explicit OutputPane(QWidget* parent = nullptr,
                      std::unique_ptr<PaneAnnouncer> announcer = std::make_unique<PaneAnnouncer>());

  void AppendLine(LineKind kind, std::string_view line) override;
  void AppendText(LineKind kind, std::string_view text, int back) override;
  void Clear() override;
  /// Shows new text: at once if the last update is at least a frame ago, else at the end of the frame.
  void Refresh() override;
  /// Updates rows and scroll bar from the text, which itself is always up to date.
  void Flush();

  const PaneText& text() const { return text_; }
  /// Lines end in "\n".
  QString plainText() const;
  void setPlainText(const QString& text);
  /// Replaces the text by `text`, with its caret and colours.
  void SetText(PaneText text);
  /// Shows `text` until EndAside restores the old one. Lines appended in between go to the end of both;
  /// setting another text ends this and keeps that text.
  void ShowAside(PaneText text);
  bool ShowsAside() const { return session_.has_value(); }
  void EndAside();
  /// Scrolls to the end, where the view follows new lines.
  void FollowEnd();
  QString selectedText() const;
  /// Empty if `range` ends before it begins.
  QString TextBetween(PaneRange range) const;

  /// The user can move, select and copy, but not edit.
  bool isReadOnly() const { return read_only_; }
  void setReadOnly(bool read_only) { read_only_ = read_only; }

  /// A margin with the time of each line.
  bool timeStamps() const { return time_margin_ != nullptr; }
  void setTimeStamps(bool shown);
  /// "HH:mm:ss.zzz", local time; empty for a line without an origin. Lines count from 0, as in plainText.
  Q_INVOKABLE QString lineTime(int line) const;
  /// The selection with the time before each line.
  QString SelectedTextWithTimes() const;

  /// Sets the tool tip of lines that report a failure; an empty text shows none.
  void SetFailureHelp(std::function<QString(const QString& line)> help) { failure_help_ = std::move(help); }

  /// Shown pale while the text is empty; not part of it.
  const QString& placeholderText() const { return placeholder_; }
  void setPlaceholderText(const QString& text);

  /// Colours of the background and of text without its own colour.
  QColor textColor() const { return palette().color(QPalette::Text); }
  void setTextColor(const QColor& color);
  QColor backgroundColor() const { return palette().color(QPalette::Base); }
  void setBackgroundColor(const QColor& color);

  Color SelectionColor() const { return text_.SelectionColor(); }
  void SetSelectionColor(Color color);
  void InsertComment(const QString& text);

  /// The length that the next Right or Left key selects, in characters, a line break counting as two.
  int RememberedBlockLength() const { return remembered_block_; }
  void SetRememberedBlockLength(int length) { remembered_block_ = length; }

  /// Convert between offsets and UTF-16 units, a line break counting as one.
  int ToUnits(std::size_t offset) const;
  std::size_t FromUnits(int units) const;

  /// Selects from `anchor` to `caret` and scrolls to the caret.
  void Select(std::size_t anchor, std::size_t caret);
  /// Caret and selection keep their position in the surrounding text.
  void ReplaceRange(PaneRange range, const QString& text);

  /// The rectangle of the character at `offset` in the viewport, and the offset nearest to a point in it.
  QRect CharacterRect(std::size_t offset) const;
  std::size_t OffsetAt(QPoint point) const;
  PaneRow RowAround(std::size_t offset) const { return Rows().RowAt(rows_.RowOf(offset)); }
  void EnsureVisible(std::size_t offset);

  /// The font at zoom 0.
  void SetBaseFont(const QFont& font);
  /// Zoom steps of a tenth of the size; 0 is the base font's size.
  int zoom() const { return zoom_; }
  void SetZoom(int steps);

  /// Highlights the hits of `search`, which must search the pane's text; null: none.
  void ShowHits(const PaneSearch* search);
  /// Updates the marks in the scroll bar from the search.
  void MarkHits();

  QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

 public Q_SLOTS:
  void selectAll();
  void copy() const;
  void cut();
  void paste();
  void deleteSelection();
  /// Counts as the user's edit: undo() restores the text.
  void deleteAll();
  /// Undoes what the user typed, pasted or deleted last.
  void undo();
  void clear() { Clear(); }

 Q_SIGNALS:
  /// Rows and scroll bar now match the text.
  void TextShown();
  /// Another text has replaced the old one.
  void TextExchanged();
  /// The user has moved to the pane by Tab.
  void Touched();
  /// The user requests the popup menu at this screen position.
  void popupRequested(const QPoint& global);
  /// The user has dropped a file on the pane.
  void fileDropped(const QString& path);

 protected:
  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void showEvent(QShowEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  bool viewportEvent(QEvent* event) override;

 private:
  friend class TimeMargin;

  enum class Unit { kCharacter, kWord, kLine };
  static constexpr int kFrameMargin = 1;  // for the frame that shows the focus

  PaneText Exchange(PaneText text);
  template <typename Append>
  void AppendBy(LineKind kind, const Append& append);
  void NoteAppended(std::size_t from);
  void Changed();
  void ShowFrame();
  void Relayout();
  void PaintFocus();
  void PlaceTimeMargin();
  void ShowFailureHelp(const QPoint& point, const QPoint& global);
  void PaintPlaceholder(QPainter& painter);
  void PaintCaret(QPainter& painter);
  const OutputPaneRows& Rows() const;
  std::string_view TextOf(const PaneRow& row) const;
  std::size_t TopRow() const;
  int VisibleRows() const;

  void MoveCaret(std::size_t offset, bool keep_anchor);
  void CaretMoved();
  void Replace(const QString& text);
  void EraseTowards(std::size_t (*step)(const PaneStore&, std::size_t));
  bool MoveByKey(QKeyEvent* event);
  bool EditByKey(QKeyEvent* event);
  bool ZoomByKey(QKeyEvent* event);
  bool SelectRememberedBlock(QKeyEvent* event);
  void MoveByRows(int rows, bool keep_anchor);
  std::size_t RowStart() const;
  std::size_t RowEnd() const;
  std::size_t OffsetInRow(const PaneRow& row, qreal x) const;

  PaneRange Around(std::size_t offset) const;
  void DragTo(QPoint point);
  void EndSelecting();

  PaneText text_;
  std::optional<PaneText> session_;  // while another text is shown instead
  QFont base_font_;
  int zoom_ = 0;
  OutputPaneMetrics metrics_;
  mutable OutputPaneRows rows_;
  std::unique_ptr<PaneAnnouncer> announcer_;
  base::MarkedScrollBar* bar_;
  const PaneSearch* search_ = nullptr;
  TimeMargin* time_margin_ = nullptr;
  std::function<QString(const QString& line)> failure_help_;
  QString placeholder_;
  bool read_only_ = false;
  int remembered_block_ = 0;

  QBasicTimer frame_timer_;
  base::CoarseClock clock_;  // read for each line
  double frame_shown_ = 0;
  bool stale_ = false;                        // rows, scroll bar and display are out of date
  bool follows_ = true;                       // the view is at the end
  bool updating_bar_ = false;                 // the pane itself is moving the scroll bar
  std::optional<std::size_t> appended_from_;  // start of the text not yet announced

  bool selecting_ = false;  // with the mouse, until its button is released
  QBasicTimer drag_timer_;
  QPoint drag_point_;
  Unit drag_unit_ = Unit::kCharacter;
  PaneRange drag_origin_{0, 0};
  QElapsedTimer since_double_click_;
  qreal goal_x_ = -1;  // the x that Up and Down aim for; negative: the caret's
  QString preedit_;
};

}  // namespace kolvane::pane
