#include "values/ui/values_table.h"

#include <QAccessibleWidget>
#include <QEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

#include "base/ui/qt_text.h"
#include "values/texts.h"
#include "values/ui/values_model.h"

namespace kolvane::values {
namespace {

QString CurrentRowText(const ValuesTable& table) {
  const QModelIndex current = table.currentIndex();
  if (!current.isValid()) return {};
  QStringList cells = {base::ToQt(texts::RowNumber(static_cast<std::size_t>(current.row()) + 1))};
  for (int column = 0; column < table.model()->columnCount(); ++column) {
    const QString cell = current.siblingAtColumn(column).data().toString();
    if (!cell.isEmpty()) cells << cell;
  }
  return cells.join(QStringLiteral(", "));
}

class TableAccessible final : public QAccessibleWidget {
 public:
  explicit TableAccessible(ValuesTable* table) : QAccessibleWidget(table, QAccessible::Table) {}

  QString text(QAccessible::Text kind) const override {
    if (kind == QAccessible::Value) return CurrentRowText(*static_cast<ValuesTable*>(widget()));
    return QAccessibleWidget::text(kind);
  }
};

QAccessibleInterface* Create(const QString&, QObject* object) {
  auto* table = qobject_cast<ValuesTable*>(object);
  return table != nullptr ? new TableAccessible(table) : nullptr;
}

// Reports the current row to assistive programs.
void AnnounceCurrentRow(ValuesTable* table) {
  if (!QAccessible::isActive()) return;
  QAccessibleValueChangeEvent event(table, CurrentRowText(*table));
  QAccessible::updateAccessibility(&event);
}

constexpr int kRowMargin = 2;
constexpr int kCellMargin = 6;

}  // namespace

ValuesTable::ValuesTable(QWidget* parent)
    : QAbstractItemView(parent), header_(new QHeaderView(Qt::Horizontal, this)) {
  QAccessible::installFactory(Create);  // further calls do nothing
  setObjectName(QStringLiteral("ValuesTable"));
  setAccessibleName(base::ToQt(texts::kTable));
  setSelectionBehavior(SelectRows);
  setSelectionMode(ExtendedSelection);
  setEditTriggers(NoEditTriggers);
  setAlternatingRowColors(true);
  setContextMenuPolicy(Qt::ActionsContextMenu);
  header_->setHighlightSections(false);
  header_->setFocusPolicy(Qt::NoFocus);
  connect(header_, &QHeaderView::sectionResized, this, &ValuesTable::updateGeometries);
  connect(header_, &QHeaderView::sectionHandleDoubleClicked, this, &ValuesTable::FitColumn);
  connect(header_, &QHeaderView::sectionCountChanged, this,
          [this](int before, int) { SetColumnWidths(before); });
}

void ValuesTable::setModel(QAbstractItemModel* new_model) {
  header_->setModel(new_model);
  QAbstractItemView::setModel(new_model);
  SetColumnWidths(0);
}

void ValuesTable::SetColumnWidths(int first) {
  const auto width_of = [this](const char* text) {
    return fontMetrics().horizontalAdvance(QLatin1String(text)) + 2 * kCellMargin;
  };
  for (int column = first; column < header_->count(); ++column) {
    header_->resizeSection(column, column == ValuesModel::kTimeColumn      ? width_of("00:00:00.000")
                                   : column == ValuesModel::kCommandColumn ? width_of("MSV? 1,2,3,4")
                                                                           : width_of("-0,000000000"));
  }
  updateGeometries();
}

// Fits the column to the visible rows.
void ValuesTable::FitColumn(int column) {
  int width = fontMetrics().horizontalAdvance(model()->headerData(column, Qt::Horizontal).toString());
  const int last = std::min(Rows(), TopRow() + WholeRows() + 1);
  for (int row = TopRow(); row < last; ++row)
    width = std::max(width, fontMetrics().horizontalAdvance(model()->index(row, column).data().toString()));
  header_->resizeSection(column, width + 2 * kCellMargin);
}

int ValuesTable::RowHeight() const { return fontMetrics().height() + 2 * kRowMargin; }

int ValuesTable::TopRow() const { return verticalScrollBar()->value(); }

int ValuesTable::verticalOffset() const { return TopRow() * RowHeight(); }

int ValuesTable::WholeRows() const { return std::max(1, viewport()->height() / RowHeight()); }

int ValuesTable::RowAt(int y) const {
  return TopRow() + (y < 0 ? (y - RowHeight() + 1) / RowHeight() : y / RowHeight());
}

int ValuesTable::GutterWidth() const {
  const auto digits = std::max<qsizetype>(3, QString::number(Rows()).size());
  return fontMetrics().horizontalAdvance(QString(digits, QLatin1Char('0'))) + 2 * kCellMargin;
}

void ValuesTable::updateGeometries() {
  const int height = header_->sizeHint().height();
  setViewportMargins(0, height, 0, 0);
  const QRect view = viewport()->geometry();
  const int gutter = GutterWidth();
  header_->setGeometry(view.left() + gutter, view.top() - height, view.width() - gutter, height);
  QScrollBar* bar = verticalScrollBar();
  const bool at_end = bar->value() == bar->maximum();
  bar->setRange(0, std::max(0, Rows() - WholeRows()));
  bar->setPageStep(WholeRows());
  if (at_end) bar->setValue(bar->maximum());
  horizontalScrollBar()->setRange(0, std::max(0, header_->length() - (view.width() - gutter)));
  horizontalScrollBar()->setPageStep(view.width() - gutter);
  horizontalScrollBar()->setSingleStep(fontMetrics().averageCharWidth() * 4);
  viewport()->update();
  QAbstractItemView::updateGeometries();
}

void ValuesTable::resizeEvent(QResizeEvent* event) {
  QAbstractItemView::resizeEvent(event);
  updateGeometries();
}

void ValuesTable::changeEvent(QEvent* event) {
  QAbstractItemView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) updateGeometries();
}

void ValuesTable::scrollContentsBy(int, int) {
  header_->setOffset(horizontalScrollBar()->value());
  viewport()->update();
}

void ValuesTable::rowsInserted(const QModelIndex& parent, int start, int end) {
  QAbstractItemView::rowsInserted(parent, start, end);
  updateGeometries();
}

QRect ValuesTable::visualRect(const QModelIndex& index) const {
  if (!index.isValid()) return {};
  return {GutterWidth() + header_->sectionViewportPosition(index.column()),
          (index.row() - TopRow()) * RowHeight(), header_->sectionSize(index.column()), RowHeight()};
}

QModelIndex ValuesTable::indexAt(const QPoint& point) const {
  const int row = RowAt(point.y());
  const int column = header_->logicalIndexAt(point.x() - GutterWidth());
  if (point.y() < 0 || row >= Rows()) return {};
  // A click on a row's number or beyond its last cell means the row.
  return model()->index(row, column < 0 ? 0 : column);
}

void ValuesTable::scrollTo(const QModelIndex& index, ScrollHint hint) {
  if (!index.isValid()) return;
  const int row = index.row();
  if (hint == PositionAtTop) {
    verticalScrollBar()->setValue(row);
  } else if (hint == PositionAtCenter) {
    verticalScrollBar()->setValue(row - WholeRows() / 2);
  } else if (row < TopRow()) {
    verticalScrollBar()->setValue(row);
  } else if (row >= TopRow() + WholeRows()) {
    verticalScrollBar()->setValue(row - WholeRows() + 1);
  }
  const int left = header_->sectionPosition(index.column());
  const int right = left + header_->sectionSize(index.column());
  const int width = viewport()->width() - GutterWidth();
  if (left < horizontalOffset()) {
    horizontalScrollBar()->setValue(left);
  } else if (right > horizontalOffset() + width) {
    horizontalScrollBar()->setValue(std::min(left, right - width));
  }
}

QModelIndex ValuesTable::moveCursor(CursorAction action, Qt::KeyboardModifiers) {
  if (Rows() == 0) return {};
  const QModelIndex current = currentIndex();
  if (!current.isValid() && action != MoveHome && action != MoveEnd) return model()->index(TopRow(), 0);
  int row = current.row();
  int column = std::max(0, current.column());
  switch (action) {
    case MoveUp:
    case MovePrevious:
      --row;
      break;
    case MoveDown:
    case MoveNext:
      ++row;
      break;
    case MoveLeft:
      --column;
      break;
    case MoveRight:
      ++column;
      break;
    case MovePageUp:
      row -= WholeRows();
      break;
    case MovePageDown:
      row += WholeRows();
      break;
    case MoveHome:
      row = 0;
      break;
    case MoveEnd:
      row = Rows() - 1;
      break;
  }
  return model()->index(std::clamp(row, 0, Rows() - 1), std::clamp(column, 0, header_->count() - 1));
}

void ValuesTable::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) {
  if (Rows() == 0) return;
  const auto [top, bottom] = std::minmax({rect.top(), rect.bottom()});
  const int first = std::clamp(RowAt(top), 0, Rows() - 1);
  const int last = std::clamp(RowAt(bottom), 0, Rows() - 1);
  selectionModel()->select({model()->index(first, 0), model()->index(last, header_->count() - 1)}, command);
}

QRegion ValuesTable::visualRegionForSelection(const QItemSelection& selection) const {
  QRegion region;
  for (const QItemSelectionRange& range : selection) {
    const int first = std::max(range.top(), TopRow());
    const int last = std::min(range.bottom(), TopRow() + WholeRows() + 1);
    if (first <= last)
      region +=
          QRect(0, (first - TopRow()) * RowHeight(), viewport()->width(), (last - first + 1) * RowHeight());
  }
  return region;
}

void ValuesTable::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QAbstractItemView::selectionChanged(selected, deselected);
  Q_EMIT SelectedRowsChanged();
}

void ValuesTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QAbstractItemView::currentChanged(current, previous);
  viewport()->update();
  AnnounceCurrentRow(this);
}

RowRanges ValuesTable::SelectedRows() const {
  RowRanges ranges;
  for (const QItemSelectionRange& range : selectionModel()->selection())
    ranges.push_back({static_cast<std::size_t>(range.top()), static_cast<std::size_t>(range.bottom()) + 1});
  return Ordered(std::move(ranges));
}

void ValuesTable::SelectRange(std::size_t first, std::size_t last) {
  if (first >= last) return selectionModel()->clearSelection();
  const QModelIndex top = model()->index(static_cast<int>(first), 0);
  const QModelIndex bottom = model()->index(static_cast<int>(last) - 1, header_->count() - 1);
  selectionModel()->select({top, bottom}, QItemSelectionModel::ClearAndSelect);
  scrollTo(top, PositionAtTop);
}

void ValuesTable::paintEvent(QPaintEvent*) {
  QPainter painter(viewport());
  painter.setFont(font());
  painter.setClipRect(QRect(GutterWidth(), 0, viewport()->width(), viewport()->height()));
  const int last = std::min(Rows() - 1, RowAt(viewport()->height()));
  for (int row = TopRow(); row <= last; ++row) PaintRow(painter, row);
  painter.setClipping(false);
  PaintGutter(painter);
}

void ValuesTable::PaintRow(QPainter& painter, int row) {
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  const QStyle::State state = option.state;
  const bool selected = selectionModel()->rowIntersectsSelection(row, {});
  const int y = (row - TopRow()) * RowHeight();
  if (row % 2 != 0)
    painter.fillRect(QRect(0, y, viewport()->width(), RowHeight()), palette().brush(QPalette::AlternateBase));
  const int first = std::max(0, header_->visualIndexAt(0));
  for (int column = first; column < header_->count(); ++column) {
    const QModelIndex index = model()->index(row, column);
    option.rect = visualRect(index);
    if (option.rect.left() >= viewport()->width()) break;
    option.state = state;
    option.state.setFlag(QStyle::State_Selected, selected);
    option.state.setFlag(QStyle::State_HasFocus, hasFocus() && index == currentIndex());
    itemDelegate()->paint(&painter, option, index);
  }
}

void ValuesTable::PaintGutter(QPainter& painter) {
  const QRect gutter(0, 0, GutterWidth(), viewport()->height());
  painter.fillRect(gutter, palette().brush(QPalette::Button));
  painter.setPen(palette().color(QPalette::ButtonText));
  const int last = std::min(Rows() - 1, RowAt(viewport()->height()));
  for (int row = TopRow(); row <= last; ++row) {
    const QRect line(0, (row - TopRow()) * RowHeight(), gutter.width() - kCellMargin, RowHeight());
    painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter, QString::number(row + 1));
  }
}

}  // namespace kolvane::values
