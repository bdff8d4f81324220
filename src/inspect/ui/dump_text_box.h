#pragma once

#include <QPlainTextEdit>
#include <optional>
#include <string>
#include <vector>

#include "inspect/hex_dump.h"

namespace kolvane::inspect {

/// A range of bytes of the dump.
struct ByteRange {
  std::size_t first = 0;
  std::size_t count = 0;

  bool operator==(const ByteRange&) const = default;
};

/// The text box `txtBinData`: shows a dump, reports each click and each released key. Right and Left move the
/// caret, the page keys the view; keys that leave the box or the dialog are passed on, any other does
/// nothing. A click means the byte under the pointer; dragging highlights bytes, apart from the selection,
/// which is the decoded value's.
class DumpTextBox final : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit DumpTextBox(QWidget* parent = nullptr);

  void SetDump(std::string dump);
  /// The dump with the current caret and selection; valid until the next SetDump.
  DumpView View() const;
  /// Sets caret and selection; if the caret has moved, removes the highlight and scrolls to the caret.
  void Show(const DumpView& view);

  /// The bytes that the user dragged over, or those of the last ShowHighlight; a click removes the highlight.
  const std::optional<ByteRange>& highlight() const { return highlight_; }
  /// Highlights the bytes and scrolls to them; the caret stays.
  void ShowHighlight(const ByteRange& range);
  /// Colours the bytes of fields, field n in FieldColor(n).
  void SetFields(std::vector<ByteRange> fields);
  QColor FieldColor(std::size_t number) const;

  QSize sizeHint() const override;

 Q_SIGNALS:
  void Click();
  void KeyUp();

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  Position PositionAt(const QPoint& pointer) const;
  void SetHighlight(std::optional<ByteRange> highlight);
  QTextEdit::ExtraSelection Stretch(Position from, Position to, const QColor& color) const;
  void AppendStretches(const ByteRange& range, const QColor& color,
                       QList<QTextEdit::ExtraSelection>& stretches) const;
  void PaintStretches();

  std::string dump_;
  BoxPositions positions_;
  Position caret_ = 0;       // of the last Show,
  Position box_caret_ = 0;   // and its position in the box: two of the dump's may share one
  std::size_t pressed_ = 0;  // the byte on which the mouse button was pressed
  std::optional<ByteRange> highlight_;
  std::vector<ByteRange> fields_;
};

}  // namespace kolvane::inspect
