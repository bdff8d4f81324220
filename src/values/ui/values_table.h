#pragma once

#include <QAbstractItemView>
#include <QHeaderView>

#include "values/store.h"

namespace kolvane::values {

/// The table `ValuesTable`: rows of equal height, with their numbers on the left. Unlike Qt's own tables it
/// stores nothing per row, so that rows can be added to millions of others thirty times a second. New rows
/// scroll it only if it is at the end. Rows are selected, not cells.
class ValuesTable final : public QAbstractItemView {
  Q_OBJECT

 public:
  explicit ValuesTable(QWidget* parent = nullptr);

  void setModel(QAbstractItemModel* model) override;
  QRect visualRect(const QModelIndex& index) const override;
  void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
  QModelIndex indexAt(const QPoint& point) const override;
  QSize sizeHint() const override { return {420, 300}; }

  QHeaderView* header() const { return header_; }
  RowRanges SelectedRows() const;
  /// Selects the rows from `first` to before `last` and no others.
  void SelectRange(std::size_t first, std::size_t last);

 Q_SIGNALS:
  void SelectedRowsChanged();

 protected:
  void changeEvent(QEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  int horizontalOffset() const override { return header_->offset(); }
  bool isIndexHidden(const QModelIndex&) const override { return false; }
  void keyboardSearch(const QString&) override {}
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void rowsInserted(const QModelIndex& parent, int start, int end) override;
  void scrollContentsBy(int dx, int dy) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
  void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) override;
  void updateGeometries() override;
  int verticalOffset() const override;
  QRegion visualRegionForSelection(const QItemSelection& selection) const override;

 private:
  int Rows() const { return model() == nullptr ? 0 : model()->rowCount(); }
  int RowHeight() const;
  int TopRow() const;
  int WholeRows() const;
  int RowAt(int y) const;
  int GutterWidth() const;
  void PaintRow(QPainter& painter, int row);
  void PaintGutter(QPainter& painter);
  void SetColumnWidths(int first);
  void FitColumn(int column);

  QHeaderView* header_;
};

}  // namespace kolvane::values
