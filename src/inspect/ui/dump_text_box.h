#pragma once

#include <QPlainTextEdit>
#include <optional>
#include <string>
#include <vector>

#include "inspect/hex_dump.h"

namespace kolvane::inspect {

/// Bytes of the dump.
struct ByteRange {
  std::size_t first = 0;
  std::size_t count = 0;

  bool operator==(const ByteRange&) const = default;
};

/// The text box `txtBinData`: shows a dump, reports each click and each released key. Right and
/// Left move the caret, the page keys the view; keys that leave the box or the dialog go on to them, and no
/// other does anything. A click means the byte under the pointer; dragging selects bytes, apart from the
/// selection, which is the decoded value's.
class DumpTextBox final : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit DumpTextBox(QWidget* parent = nullptr);

  void SetDump(std::string dump);
  /// The dump with caret and selection as they stand; valid until the next SetDump.
  DumpView View() const;
  /// Puts caret and selection there and shows the caret's place.
  void Show(const DumpView& view);

  /// What the user has dragged over, or ShowMark was given last; a click takes it away.
  const std::optional<ByteRange>& mark() const { return mark_; }
  /// Marks the bytes and brings them into view; the caret stays.
  void ShowMark(const ByteRange& range);
  /// Colours the bytes of fields, each in FieldColor of its number.
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
  Position PlaceAt(const QPoint& pointer) const;
  void SetMark(std::optional<ByteRange> mark);
  QTextEdit::ExtraSelection Stretch(Position from, Position to, const QColor& color) const;
  void AppendStretches(const ByteRange& range, const QColor& color,
                       QList<QTextEdit::ExtraSelection>& stretches) const;
  void PaintStretches();

  std::string dump_;
  BoxPositions positions_;
  Position caret_ = 0;       // of the last Show,
  Position box_caret_ = 0;   // and the box's place that it became: two of the dump's may share one
  std::size_t pressed_ = 0;  // the byte on which the mouse button went down
  std::optional<ByteRange> mark_;
  std::vector<ByteRange> fields_;
};

}  // namespace kolvane::inspect
