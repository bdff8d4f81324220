#pragma once

#include <QImage>
#include <QWidget>
#include <optional>

#include "values/curve_list.h"
#include "values/plot_view.h"
#include "values/ui/plot_painter.h"

namespace kolvane::values {

/// The plot `ValuesPlot`: the curves that a list shows, over time or over the row number. The user zooms with
/// the wheel, moves and selects with the mouse or the keys, and reads the values at the cursor. The picture
/// is painted again only if something has changed.
class ValuesPlot final : public QWidget {
  Q_OBJECT

 public:
  /// What dragging with the left button does; Ctrl makes it kZoom, Shift kSelect.
  enum class Tool { kPan, kZoom, kSelect };

  /// Store and list must outlive the plot.
  ValuesPlot(const Store& store, const CurveList& curves, std::string decimal_sign,
             QWidget* parent = nullptr);

  /// Shows the first `rows` rows of the store and the curves as they are now.
  void ShowRows(std::size_t rows);
  void SetAxis(Axis axis);
  void SetTool(Tool tool);
  void SetSelection(RowRanges selection);
  void ShowAll();
  void Follow(bool follow);
  void SetAutoScale(bool on);

  const PlotView& view() const { return view_; }
  PlotRows Rows() const { return {store_, rows_, axis_}; }
  /// The visible rows.
  RowRange VisibleRows() const;
  /// The position on the x axis where values are read.
  std::optional<double> cursor() const { return cursor_; }
  /// Where the curves are, in pixels.
  QRectF Area();

  /// What is visible, for a picture on a light or dark background.
  PlotScene Scene(bool on_dark) const;

  QSize sizeHint() const override { return {640, 320}; }
  QSize minimumSizeHint() const override { return {160, 100}; }

 Q_SIGNALS:
  /// The visible range has changed, or whether it follows the end or scales itself.
  void ViewChanged();
  void CursorMoved();
  /// The user has selected the rows from `first` to before `last`; none if they are equal.
  void RowsSelected(std::size_t first, std::size_t last);

 protected:
  void changeEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  struct Drag {
    Tool tool;
    QPointF from;
    QPointF to;
    PlotView before;
  };

  void Changed();
  void FitY();
  void Render();
  void PaintDrag(QPainter& painter) const;
  void PaintCursor(QPainter& painter);

  Tool ToolFor(const QMouseEvent& event) const;
  QPointF FractionsAt(QPointF pixel);
  void EndDrag();
  void SelectBetween(double x1, double x2);
  void SetReadingPosition(std::optional<double> x);

  bool MoveByKey(const QKeyEvent& event);
  bool ZoomByKey(const QKeyEvent& event);
  bool ReadByKey(const QKeyEvent& event);
  std::optional<std::size_t> RowWithValue(std::size_t from, bool forward) const;
  std::size_t RowNear(double x) const;
  void EnsureVisible(double x);

  const Store& store_;
  const CurveList& curves_;
  std::string decimal_sign_;
  std::size_t rows_ = 0;
  Axis axis_ = Axis::kTime;
  PlotView view_;
  RowRanges selection_;
  Tool tool_ = Tool::kPan;
  std::optional<Drag> drag_;
  std::optional<double> cursor_;
  std::optional<double> anchor_;  // of the selection made with the keys

  QImage picture_;
  bool stale_ = true;
  QRectF area_;
};

}  // namespace kolvane::values
